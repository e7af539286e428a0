#include "bench/kernel/text_outline.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <Geom2d_BezierCurve.hxx>
#include <Geom2d_Line.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <algorithm>
#include <limits>
#include <optional>
#include <string>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// Where Debian's package puts the fonts.
constexpr const char* kFontFolder = "/usr/share/fonts/truetype/dejavu/";

struct FontFile {
  const char* name;
  const char* file;
};

// Any other name gets the first.
constexpr FontFile kFonts[] = {
    {"DejaVu Sans", "DejaVuSans.ttf"},
    {"DejaVu Sans Bold", "DejaVuSans-Bold.ttf"},
    {"DejaVu Serif", "DejaVuSerif.ttf"},
    {"DejaVu Sans Mono", "DejaVuSansMono.ttf"},
};

std::string PathOf(const std::string& name) {
  const auto* font = std::find_if(std::begin(kFonts), std::end(kFonts),
                                  [&](const FontFile& each) { return name == each.name; });
  if (font == std::end(kFonts)) font = std::begin(kFonts);
  return std::string(kFontFolder) + font->file;
}

class Face {
 public:
  explicit Face(const std::string& path) {
    if (FT_Init_FreeType(&library_) != 0) throw Refusal("The fonts can't be read.");
    if (FT_New_Face(library_, path.c_str(), 0, &face_) == 0) return;
    FT_Done_FreeType(library_);
    throw Refusal("The font " + path + " can't be read.");
  }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;
  ~Face() {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
  }
  FT_Face get() const { return face_; }

 private:
  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
};

// A piece of an outline in the font's units: a line, or a quadratic curve with a control point.
struct Piece {
  gp_Pnt2d from, to;
  std::optional<gp_Pnt2d> control;
};

// Collects the pieces of one character after the other.
struct Pen {
  double advance = 0;  // where the present character begins
  gp_Pnt2d at;
  std::vector<Piece> pieces;

  gp_Pnt2d Placed(const FT_Vector& point) const {
    return {static_cast<double>(point.x) + advance, static_cast<double>(point.y)};
  }
  void Draw(const gp_Pnt2d& to, std::optional<gp_Pnt2d> control) {
    if (control || at.Distance(to) > 0) pieces.push_back({at, to, control});
    at = to;
  }
};

int MoveTo(const FT_Vector* to, void* pen) {
  static_cast<Pen*>(pen)->at = static_cast<Pen*>(pen)->Placed(*to);
  return 0;
}

int LineTo(const FT_Vector* to, void* data) {
  auto& pen = *static_cast<Pen*>(data);
  pen.Draw(pen.Placed(*to), std::nullopt);
  return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* data) {
  auto& pen = *static_cast<Pen*>(data);
  pen.Draw(pen.Placed(*to), pen.Placed(*control));
  return 0;
}

// The fonts that are used have quadratic outlines only.
int CubicTo(const FT_Vector*, const FT_Vector*, const FT_Vector*, void*) {
  return 1;
}

// The code points of UTF-8 text that the wire has let through.
std::vector<FT_ULong> CodePoints(const std::string& text) {
  std::vector<FT_ULong> points;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    FT_ULong point = more == 3 ? lead & 0x07u : more == 2 ? lead & 0x0Fu : more == 1 ? lead & 0x1Fu : lead;
    for (; more > 0 && i < text.size(); --more)
      point = (point << 6) | (static_cast<unsigned char>(text[i++]) & 0x3Fu);
    points.push_back(point);
  }
  return points;
}

std::vector<Piece> PiecesOf(const TextEntity& text) {
  const Face face(PathOf(text.font));
  FT_Outline_Funcs draw{};
  draw.move_to = MoveTo;
  draw.line_to = LineTo;
  draw.conic_to = ConicTo;
  draw.cubic_to = CubicTo;
  Pen pen;
  for (const FT_ULong point : CodePoints(text.text)) {
    if (point < U' ') continue;  // the font shows control characters as boxes
    if (FT_Load_Char(face.get(), point, FT_LOAD_NO_SCALE) != 0) throw Refusal("A character can't be drawn.");
    FT_GlyphSlot glyph = face.get()->glyph;
    if (FT_Outline_Decompose(&glyph->outline, &draw, &pen) != 0) throw Refusal("A character can't be drawn.");
    pen.advance += static_cast<double>(glyph->advance.x);
  }
  return pen.pieces;
}

// From where to where the pieces reach in one of the two coordinates.
struct Range {
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  void Add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  double Onto(double value, double from, double to) const {
    return from + (value - low) / (high - low) * (to - from);
  }
};

Range RangeOf(const std::vector<Piece>& pieces, int coordinate) {
  Range range;
  for (const Piece& piece : pieces) {
    const double a = piece.from.Coord(coordinate), b = piece.to.Coord(coordinate);
    range.Add(a);
    range.Add(b);
    if (!piece.control) continue;
    const double c = piece.control->Coord(coordinate);
    const double bend = a - 2 * c + b;
    const double t = bend != 0 ? (a - c) / bend : -1;  // where the curve turns back
    if (t > 0 && t < 1) range.Add((1 - t) * (1 - t) * a + 2 * t * (1 - t) * c + t * t * b);
  }
  return range;
}

PlanarCurve CurveOfPiece(int entity, const gp_Pnt2d& from, const gp_Pnt2d& to,
                         const std::optional<gp_Pnt2d>& control) {
  if (!control)
    return {entity, new Geom2d_Line(from, gp_Dir2d(gp_Vec2d(from, to))), 0, from.Distance(to), false};
  TColgp_Array1OfPnt2d poles(1, 3);
  poles(1) = from;
  poles(2) = *control;
  poles(3) = to;
  return {entity, new Geom2d_BezierCurve(poles), 0, 1, false};
}

}  // namespace

std::vector<PlanarCurve> TextOutline(int entity, const TextEntity& text) {
  const std::vector<Piece> pieces = PiecesOf(text);
  const Range x = RangeOf(pieces, 1), y = RangeOf(pieces, 2);
  if (!(x.high > x.low) || !(y.high > y.low))
    throw Refusal("Entity " + std::to_string(entity) + " is a text that leaves no ink.");
  const double left = std::min(text.from.X(), text.to.X()), right = std::max(text.from.X(), text.to.X());
  const double low = std::min(text.from.Y(), text.to.Y()), high = std::max(text.from.Y(), text.to.Y());
  if (!(right - left > kJoinTolerance) || !(high - low > kJoinTolerance))
    throw Refusal("Entity " + std::to_string(entity) + " is a text in a box without extent.");
  const auto placed = [&](const gp_Pnt2d& point) {
    return gp_Pnt2d(x.Onto(point.X(), left, right), y.Onto(point.Y(), low, high));
  };
  std::vector<PlanarCurve> curves;
  for (const Piece& piece : pieces) {
    std::optional<gp_Pnt2d> control;
    if (piece.control) control = placed(*piece.control);
    curves.push_back(CurveOfPiece(entity, placed(piece.from), placed(piece.to), control));
  }
  return curves;
}

}  // namespace bench::kernel
