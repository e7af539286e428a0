#include "bench/host/plot/svg_writer.h"

#include <charconv>
#include <cmath>

#include "bench/host/text.h"

namespace bench {
namespace {

// Of the font's size, what a capital letter is high and a wide letter wide.
constexpr double kCapitalHeight = 0.73;
constexpr double kLetterWidth = 0.66;

// Dashes are 12 and gaps 3 times as long as the line is wide; a chain's dashes 24 times.
constexpr std::string_view kStyles = R"(
path, circle { fill: none; stroke: black; stroke-linecap: round; stroke-linejoin: round }
path.frame { stroke-width: 0.7; stroke-linecap: square; stroke-linejoin: miter }
.visible { stroke-width: 0.5 }
.narrow { stroke-width: 0.25 }
.hidden { stroke-width: 0.25; stroke-dasharray: 3 0.75; stroke-linecap: butt }
.centre { stroke-width: 0.25; stroke-dasharray: 6 0.75 0.25 0.75; stroke-linecap: butt }
path.arrow { fill: black; stroke: none }
text { font-family: "DejaVu Sans", Arial, sans-serif; fill: black }
)";

std::string_view ClassOf(Pen pen) {
  switch (pen) {
    case Pen::kFrame:
      return "frame";
    case Pen::kVisible:
      return "visible";
    case Pen::kNarrow:
      return "narrow";
    case Pen::kHidden:
      return "hidden";
    case Pen::kCentre:
      return "centre";
  }
  return "";
}

std::string Number(double number) {
  constexpr int kDecimals = 3;
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, kDecimals).ptr;
  std::string shown(text, end);
  shown.erase(shown.find_last_not_of('0') + 1);
  if (shown.back() == '.') shown.pop_back();
  return shown == "-0" ? "0" : shown;
}

// Control characters are no part of XML, whichever way they are written.
std::string Escaped(std::wstring_view text) {
  std::string escaped;
  for (const char letter : ToUtf8(text)) {
    if (letter == '&')
      escaped += "&amp;";
    else if (letter == '<')
      escaped += "&lt;";
    else if (letter == '>')
      escaped += "&gt;";
    else if (letter == '"')
      escaped += "&quot;";
    else if (static_cast<unsigned char>(letter) < ' ')
      escaped += ' ';
    else
      escaped += letter;
  }
  // Nor are the two last places of the plane.
  for (const std::string_view forbidden : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
    for (auto at = escaped.find(forbidden); at != std::string::npos; at = escaped.find(forbidden))
      escaped.replace(at, forbidden.size(), "?");
  return escaped;
}

std::string Element(std::string_view word, Pen pen) {
  return "<path class=\"" + std::string(word.empty() ? ClassOf(pen) : word) + "\" d=\"";
}

}  // namespace

SvgWriter::SvgWriter(double width, double height) : width_(width), height_(height) {}

std::string SvgWriter::X(double x) const {
  return Number(x);
}

std::string SvgWriter::Y(double y) const {
  return Number(height_ - y);
}

std::string SvgWriter::Path(const std::vector<Polyline>& lines) const {
  std::string path;
  for (const Polyline& line : lines) {
    char command = 'M';
    for (const Vector2& point : line) {
      path += command + X(point[0]) + ' ' + Y(point[1]);
      command = 'L';
    }
  }
  return path;
}

// Cubic pieces whose tangent at each point is that from the one before to the one behind.
std::string SvgWriter::ClosedPath(const std::vector<Vector2>& points) const {
  const std::size_t count = points.size();
  const auto tangent = [&](std::size_t i, int axis) {
    return (points[(i + 1) % count][axis] - points[(i + count - 1) % count][axis]) / 2;
  };
  std::string path = "M" + X(points[0][0]) + ' ' + Y(points[0][1]);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t next = (i + 1) % count;
    const Vector2 &from = points[i], &to = points[next];
    path += "C" + X(from[0] + tangent(i, 0) / 3) + ' ' + Y(from[1] + tangent(i, 1) / 3) + ' ' +
            X(to[0] - tangent(next, 0) / 3) + ' ' + Y(to[1] - tangent(next, 1) / 3) + ' ' + X(to[0]) + ' ' +
            Y(to[1]);
  }
  return path + "Z";
}

void SvgWriter::Line(const Vector2& from, const Vector2& to, Pen pen) {
  Lines({{from, to}}, pen);
}

void SvgWriter::Lines(const std::vector<Polyline>& lines, Pen pen) {
  if (!lines.empty()) body_ += Element({}, pen) + Path(lines) + "\"/>\n";
}

void SvgWriter::Frame(const Rectangle& box, Pen pen) {
  const Polyline corners{box.low, {box.high[0], box.low[1]}, box.high, {box.low[0], box.high[1]}};
  body_ += Element({}, pen) + Path({corners}) + "Z\"/>\n";
}

void SvgWriter::Circle(const Vector2& center, double radius, Pen pen) {
  body_ += "<circle class=\"" + std::string(ClassOf(pen)) + "\" cx=\"" + X(center[0]) + "\" cy=\"" +
           Y(center[1]) + "\" r=\"" + Number(radius) + "\"/>\n";
}

void SvgWriter::ClosedCurve(const std::vector<Vector2>& points, Pen pen) {
  body_ += Element({}, pen) + ClosedPath(points) + "\"/>\n";
}

void SvgWriter::Arrow(const Vector2& tip, const Vector2& direction) {
  constexpr double kLength = 3, kHalfWidth = 0.5;
  const auto at = [&](double back, double aside) {
    return Vector2{tip[0] - back * direction[0] - aside * direction[1],
                   tip[1] - back * direction[1] + aside * direction[0]};
  };
  body_ += Element("arrow", Pen::kNarrow) + Path({{tip, at(kLength, kHalfWidth), at(kLength, -kHalfWidth)}}) +
           "Z\"/>\n";
}

void SvgWriter::Text(const Vector2& at, std::wstring_view text, const TextStyle& style) {
  const char* const anchor = style.anchor == TextAnchor::kStart    ? "start"
                             : style.anchor == TextAnchor::kMiddle ? "middle"
                                                                   : "end";
  body_ += "<text x=\"" + X(at[0]) + "\" y=\"" + Y(at[1]) + "\" font-size=\"" +
           Number(style.height / kCapitalHeight) + "\" text-anchor=\"" + anchor + "\"";
  if (style.upwards) body_ += " transform=\"rotate(-90 " + X(at[0]) + " " + Y(at[1]) + ")\"";
  body_ += ">" + Escaped(text) + "</text>\n";
}

void SvgWriter::BeginGroup(std::string_view word, std::wstring_view title) {
  body_ += "<g class=\"" + std::string(word) + "\"><title>" + Escaped(title) + "</title>\n";
}

void SvgWriter::BeginWithin(const std::vector<Vector2>& curve) {
  const std::string name = "within" + std::to_string(++clips_);
  body_ += "<clipPath id=\"" + name + "\"><path d=\"" + ClosedPath(curve) +
           "\"/></clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
}

void SvgWriter::EndGroup() {
  body_ += "</g>\n";
}

std::string SvgWriter::Finished() const {
  const std::string width = Number(width_), height = Number(height_);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         width + "mm\" height=\"" + height + "mm\" viewBox=\"0 0 " + width + " " + height + "\">\n<style>" +
         std::string(kStyles) + "</style>\n<rect width=\"" + width + "\" height=\"" + height +
         "\" fill=\"white\"/>\n" + body_ + "</svg>\n";
}

double WidthOf(std::wstring_view text, double height) {
  return static_cast<double>(text.size()) * height / kCapitalHeight * kLetterWidth;
}

std::wstring NumberText(double number) {
  return FromUtf8(Number(number));
}

}  // namespace bench
