// Drawings on the bench: how they are made, where views lie, what sections and details show, what files keep.
// The block is 40 × 20 × 10, from the origin along +x, +y and +z.
#include <ProAnnotation.h>
#include <ProArray.h>
#include <ProDrawingView.h>
#include <ProSelection.h>
#include <ProXsec.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "bench/host/drawing/projection.h"
#include "bench/host/session.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using support::NameBuffer;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr Matrix kTop{{{0, 1, 0, 0}, {0, 0, 1, 0}, {1, 0, 0, 0}, {0, 0, 0, 1}}};
constexpr Matrix kMirrored{{{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

// An A3 sheet, and an A4 one whose views are twice as large.
constexpr auto kTemplate = R"({"format": "creobench drawing template", "version": 1, "sheets": [
  {"size": "A3", "width": 420, "height": 297, "border": 10, "scale": 1},
  {"size": "A4", "width": 297, "height": 210, "border": 10, "scale": 2}], "views": [%]})";

std::string TemplateWith(const std::string& views) {
  std::string text = kTemplate;
  return text.replace(text.find('%'), 1, views);
}

std::wstring InstallationOfTests() {
  const std::wstring path = L"" VEK_TEST_INSTALLATION;
  return path.starts_with(L"/") ? L"Z:" + path : path;
}

class DrawingsTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (HasFatalFailure()) return;
    WriteFile(L"two_sheets.drw", TemplateWith(""));
    block_ = Extrude(*part_, Plate(), {}).feature;
    ASSERT_EQ(Make(L"SHEET", L"two_sheets", L"PART"), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProDrawingSolidAdd(drawing_, Solid()), PRO_TK_NO_ERROR);
  }

  // Leaves the errors' record in errors_.
  ProError Make(std::wstring_view name, std::wstring_view from, std::wstring_view model, int options = 1) {
    ProModelInfo info{};
    model.copy(info.name, model.size());
    info.type[0] = L'P', info.type[1] = L'R', info.type[2] = L'T';
    return ProDrawingFromTemplateCreate(MdlNameBuffer(name), MdlNameBuffer(from), &info, options, &drawing_,
                                        &errors_);
  }

  Model& Sheet() { return *host().session.FindByName(L"SHEET", PRO_MDL_DRAWING); }

  ProError AddGeneral(double x, double y, double scale, Matrix orientation, ProView* view, int sheet = 1) {
    ProPoint3d point{x, y, 0};
    ProMatrix matrix;
    WriteMatrix(orientation, matrix);
    return ProDrawingGeneralviewCreate(drawing_, Solid(), sheet, PRO_B_FALSE, point, scale, matrix, view);
  }
  ProView Front(double x, double y, double scale) {
    ProView view = nullptr;
    EXPECT_EQ(AddGeneral(x, y, scale, kNoMove, &view), PRO_TK_NO_ERROR);
    return view;
  }
  ProError AddProjected(ProView parent, double x, double y, ProView* view) {
    ProPoint3d point{x, y, 0};
    return ProDrawingProjectedviewCreate(drawing_, parent, PRO_B_FALSE, point, view);
  }
  ProView Projected(ProView parent, double x, double y) {
    ProView view = nullptr;
    EXPECT_EQ(AddProjected(parent, x, y, &view), PRO_TK_NO_ERROR);
    return view;
  }

  // A circle of 16 points around the middle, picked there on `picked_on`, shown at (300, 100).
  ProError AddDetail(ProView parent, ProView picked_on, double x, double y, double radius, ProView* view) {
    ProArray arrays[3]{};
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(ProArrayAlloc(16, i == 0 ? sizeof(double) : sizeof(ProPoint3d), 1, &arrays[i]),
                PRO_TK_NO_ERROR);
    auto* parameters = static_cast<double*>(arrays[0]);
    auto* points = static_cast<ProPoint3d*>(arrays[1]);
    for (int i = 0; i < 16; ++i) {
      const double angle = i * std::numbers::pi / 8;
      parameters[i] = i / 16.0;
      points[i][0] = x + radius * std::cos(angle);
      points[i][1] = y + radius * std::sin(angle);
    }
    ProCurvedata border{};
    EXPECT_EQ(ProSplinedataInit(parameters, points, static_cast<ProVector*>(arrays[2]), 16, &border.spline),
              PRO_TK_NO_ERROR);
    ProModelitem face{PRO_SURFACE, part_->ids_of_keys.at(part_->topology.faces.front().key), part_};
    ProSelection reference = nullptr;
    ProPoint3d middle{x, y, 0}, place{300, 100, 0};
    EXPECT_EQ(ProSelectionAlloc(nullptr, &face, &reference), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionViewSet(picked_on, &reference), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionPoint3dSet(middle, &reference), PRO_TK_NO_ERROR);
    const ProError status = ProDrawingViewDetailCreate(drawing_, parent, reference, &border, place, view);
    EXPECT_EQ(ProSelectionFree(&reference), PRO_TK_NO_ERROR);
    for (ProArray& array : arrays) EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    return status;
  }

  ProError AddSection(std::wstring_view name, int surface) {
    ProXsec section;
    return ProXsecPlanarWithoptionsCreate(Solid(), NameBuffer(name), surface, 0, 0, -1, PRO_B_FALSE,
                                          PRO_B_FALSE, nullptr, &section);
  }
  ProError SetSection(ProView view, std::wstring_view name, ProView arrows, int area = 1) {
    return ProDrawingView2DSectionSet(drawing_, view, NameBuffer(name),
                                      static_cast<ProDrawingViewSectionAreaType>(area), nullptr, nullptr,
                                      arrows);
  }

  void ExpectOutline(ProView view, double left, double bottom, double right, double top) {
    ProPoint3d corners[2]{};
    ASSERT_EQ(ProDrawingViewOutlineGet(drawing_, view, corners), PRO_TK_NO_ERROR);
    EXPECT_NEAR(corners[0][0], left, 1e-6);
    EXPECT_NEAR(corners[0][1], bottom, 1e-6);
    EXPECT_NEAR(corners[1][0], right, 1e-6);
    EXPECT_NEAR(corners[1][1], top, 1e-6);
  }
  double ScaleOf(ProView view) {
    double scale = 0;
    EXPECT_EQ(ProDrawingViewScaleGet(drawing_, view, &scale), PRO_TK_NO_ERROR);
    return scale;
  }

  ProFeature block_{};
  ProDrawing drawing_ = nullptr;
  ProDwgcreateErrs errors_ = nullptr;
};

TEST_F(DrawingsTest, ComeFromTemplatesWithTheSizesOfTheirSheets) {
  SetEnvironmentVariableW(L"PRO_DIRECTORY", InstallationOfTests().c_str());
  const struct {
    const wchar_t* name;
    double width, height;
  } templates[] = {{L"a3_drawing", 420, 297},
                   {L"A4_Drawing", 297, 210},
                   {L"empty.drw", 420, 297},
                   {L"c_drawing", 22 * 25.4, 17 * 25.4},
                   {L"a_drawing", 11 * 25.4, 8.5 * 25.4},
                   {L"b_drawing", 17 * 25.4, 11 * 25.4}};
  int count = 0;
  for (const auto& [name, width, height] : templates) {
    ASSERT_EQ(Make(L"DRW_" + std::to_wstring(++count), name, L"PART"), PRO_TK_NO_ERROR);
    const bench::Sheet& sheet = host().session.Find(drawing_)->drawing->sheets.at(0);
    EXPECT_NEAR(sheet.width, width, 1e-9);
    EXPECT_NEAR(sheet.height, height, 1e-9);
    ProSolid* solids = nullptr;
    EXPECT_EQ(ProDrawingSolidsCollect(drawing_, &solids), PRO_TK_E_NOT_FOUND);
  }
  SetEnvironmentVariableW(L"PRO_DIRECTORY", nullptr);
}

TEST_F(DrawingsTest, TellWhyNoneWasMade) {
  WriteFile(L"broken.drw", "{}");
  WriteFile(L"front.drw", TemplateWith(R"({"plane": "FRONT", "at": [100, 100]})"));
  WriteFile(L"back.drw", TemplateWith(R"({"plane": "BACK", "at": [100, 100]})"));
  const struct {
    const wchar_t *name, *from, *model;
    int options, status;
    bool has_drawing, has_errors;
  } cases[] = {{L"SHEET", L"two_sheets", L"PART", 1, -5, false, false},
               {L"A.B", L"two_sheets", L"PART", 1, -22, false, false},
               {L"NEW", L"two_sheets", L"PART", 2, -2, false, false},
               {L"NEW", L"a0_drawing", L"PART", 1, -4, false, false},
               {L"NEW", L"broken", L"PART", 1, -16, false, false},
               {L"NEW", L"two_sheets", L"NOBODY", 1, -4, false, true},
               {L"NEW_1", L"front", L"PART", 1, 0, true, false},
               {L"NEW_2", L"back", L"PART", 1, -57, true, true}};
  for (const auto& [name, from, model, options, status, has_drawing, has_errors] : cases) {
    EXPECT_EQ(Make(name, from, model, options), status) << from;
    EXPECT_EQ(drawing_ != nullptr, has_drawing);
    EXPECT_EQ(errors_ != nullptr, has_errors);
    EXPECT_EQ(ProDwgcreateErrsFree(&errors_), has_errors ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS);
  }
  EXPECT_EQ(host().session.FindByName(L"NEW_1", PRO_MDL_DRAWING)->drawing->views.size(), 1u);
}

TEST_F(DrawingsTest, ViewsStayWhereTheyAreWhenTheirModelGrows) {
  ProView top = nullptr;
  ASSERT_EQ(AddGeneral(200, 100, 1, kTop, &top), PRO_TK_NO_ERROR);
  support::Tree thicker;
  FillExtrudeTree(thicker, {.depth = 20});
  ASSERT_EQ(Redefine(block_, thicker.Root()).status, PRO_TK_NO_ERROR);
  // What was the middle, z = 5, keeps its place; z from 0 to 20 goes from 195 to 215.
  ExpectOutline(top, 195, 80, 215, 120);
}

TEST_F(DrawingsTest, ProjectedViewsAreOfTheThirdAngleAndAligned) {
  for (const double scale : {1.0, 2.0}) {
    const ProView front = Front(100, 150, scale);
    const struct {
      double x, y, width, height, center_x, center_y;
      Vector3 at_reader;
    } cases[] = {{200, 170, 10, 20, 200, 150, {1, 0, 0}},   // right, drawn level with its parent
                 {10, 150, 10, 20, 10, 150, {-1, 0, 0}},    // left
                 {120, 250, 40, 10, 100, 250, {0, 1, 0}},   // above
                 {100, 50, 40, 10, 100, 50, {0, -1, 0}},    // below
                 {200, 250, 10, 20, 200, 150, {1, 0, 0}}};  // as far up as to the side
    for (const auto& each : cases) {
      const ProView view = Projected(front, each.x, each.y);
      const double w = scale * each.width / 2, h = scale * each.height / 2;
      ExpectOutline(view, each.center_x - w, each.center_y - h, each.center_x + w, each.center_y + h);
      EXPECT_EQ(Sheet().drawing->ViewOf(view)->Axis(2), each.at_reader);
      EXPECT_EQ(ScaleOf(view), scale);
      EXPECT_EQ(ProDrawingViewScaleSet(drawing_, view, 3), PRO_TK_BAD_CONTEXT);
    }
  }
}

TEST_F(DrawingsTest, DetailsShowWhatLiesWithinTheirBorder) {
  const ProView front = Front(100, 150, 2);
  ProView detail = nullptr;
  ASSERT_EQ(AddDetail(front, front, 90, 160, 6, &detail), PRO_TK_NO_ERROR);
  // Twice its parent: 6 on the sheet at scale 2 are 3 of the model, at scale 4 they are 12.
  EXPECT_EQ(ScaleOf(detail), 4);
  ExpectOutline(detail, 288, 88, 312, 112);
  ASSERT_EQ(ProDrawingViewScaleSet(drawing_, detail, 5), PRO_TK_NO_ERROR);
  ExpectOutline(detail, 285, 85, 315, 115);

  const ProView other = Front(300, 250, 1);
  ProView none = nullptr;
  EXPECT_EQ(AddDetail(front, front, 150, 150, 5, &none), PRO_TK_BAD_INPUTS);  // beside the outline
  EXPECT_EQ(AddDetail(front, front, 100, 150, 0, &none), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddDetail(front, other, 100, 150, 5, &none), PRO_TK_BAD_INPUTS);  // picked on another view
  EXPECT_EQ(AddProjected(detail, 350, 100, &none), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(none, nullptr);
}

TEST_F(DrawingsTest, SectionsCutWhatStandsBetweenThemAndTheReader) {
  const ProView front = Front(100, 150, 1);
  ASSERT_EQ(OffsetPlane(*part_, PlaneOf(*part_, L"RIGHT"), 15, L"CUT").status, PRO_TK_NO_ERROR);
  ASSERT_EQ(AddSection(L"A", PlaneOf(*part_, L"CUT").id), PRO_TK_NO_ERROR);
  ASSERT_EQ(OffsetPlane(*part_, PlaneOf(*part_, L"TOP"), 5, L"LEVEL").status, PRO_TK_NO_ERROR);
  ASSERT_EQ(AddSection(L"B", PlaneOf(*part_, L"LEVEL").id), PRO_TK_NO_ERROR);

  const ProView right = Projected(front, 200, 150);
  ASSERT_EQ(SetSection(right, L"a", front), PRO_TK_NO_ERROR);
  ExpectOutline(right, 195, 140, 205, 160);
  const bench::Drawing& sheets = *Sheet().drawing;
  const auto cut = CutOf(sheets, *sheets.ViewOf(right));
  ASSERT_TRUE(cut);
  EXPECT_EQ(cut->origin, (Vector3{15, 0, 0}));
  EXPECT_EQ(cut->normal, (Vector3{1, 0, 0}));
  EXPECT_EQ(ProjectionOf(sheets, *sheets.ViewOf(right)).section.size(), 1u);

  // The view from the right sees TOP from the side: it is turned to look down, 40 by 10, about its centre.
  const ProView turned = Projected(front, 250, 150);
  ASSERT_EQ(SetSection(turned, L"B", front), PRO_TK_NO_ERROR);
  ExpectOutline(turned, 230, 145, 270, 155);
  EXPECT_EQ(sheets.ViewOf(turned)->Axis(2), (Vector3{0, 1, 0}));
  EXPECT_EQ(sheets.ViewOf(turned)->section_parent, sheets.ViewOf(front)->id);

  ProView oblique = nullptr;
  const double c = std::sqrt(0.5);
  ASSERT_EQ(AddGeneral(300, 200, 1, {{{c, -c, 0, 0}, {c, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}, &oblique),
            PRO_TK_NO_ERROR);
  EXPECT_EQ(SetSection(oblique, L"B", nullptr), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(SetSection(right, L"C", front), PRO_TK_E_NOT_FOUND);
  EXPECT_EQ(SetSection(right, L"A", right), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(SetSection(right, L"A", front, 2), PRO_TK_NOT_IMPLEMENTED);
}

TEST_F(DrawingsTest, CrossSectionsBelongToTheirSolid) {
  const int plane = PlaneOf(*part_, L"TOP").id;
  EXPECT_EQ(AddSection(L"A", plane), PRO_TK_NO_ERROR);
  EXPECT_EQ(AddSection(L"a", plane), PRO_TK_E_FOUND);
  EXPECT_EQ(AddSection(L"", plane), PRO_TK_INVALID_NAME);
  EXPECT_EQ(AddSection(L"B", 9999), PRO_TK_E_NOT_FOUND);
  ProXsec older;
  EXPECT_EQ(ProXsecPlanarCreate(Solid(), NameBuffer(L"B"), plane, 0, -1, &older), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(&Sheet()), PRO_TK_NO_ERROR);
  SaveAndRetrieve();
  NameBuffer name;
  EXPECT_EQ(ProXsecNameGet(&older, name), PRO_TK_INVALID_PTR);
  ASSERT_EQ(part_->cross_sections.size(), 2u);
  EXPECT_EQ(part_->cross_sections[0].name, L"A");
  EXPECT_EQ(part_->cross_sections[1].name, L"B");
}

TEST_F(DrawingsTest, KeepTheirViewsInTheirFile) {
  const ProView front = Front(100, 150, 2);
  const ProView right = Projected(front, 200, 150);
  ProView detail = nullptr;
  ASSERT_EQ(AddDetail(front, front, 100, 150, 6, &detail), PRO_TK_NO_ERROR);
  ASSERT_EQ(OffsetPlane(*part_, PlaneOf(*part_, L"RIGHT"), 15, L"CUT").status, PRO_TK_NO_ERROR);
  ASSERT_EQ(AddSection(L"A", PlaneOf(*part_, L"CUT").id), PRO_TK_NO_ERROR);
  ASSERT_EQ(SetSection(right, L"A", front), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProAnnotationByViewShow(drawing_, front, static_cast<ProAnnotationType>(8)), PRO_TK_NO_ERROR);
  EXPECT_EQ(Sheet().drawing->views[0]->shown_dimensions.size(), part_->dimensions.size());
  Sheet().modified = false;
  const std::string before = Snapshot(Sheet());

  EXPECT_EQ(ProMdlErase(part_), PRO_TK_BAD_CONTEXT);
  ASSERT_EQ(ProMdlSave(&Sheet()), PRO_TK_NO_ERROR);
  EXPECT_FALSE(part_->modified);
  ASSERT_EQ(ProMdlErase(&Sheet()), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProDrawingViewOutlineGet(drawing_, front, nullptr), PRO_TK_BAD_INPUTS);
  ProPoint3d corners[2];
  EXPECT_EQ(ProDrawingViewOutlineGet(drawing_, front, corners), PRO_TK_INVALID_PTR);
  ASSERT_EQ(ProMdlErase(part_), PRO_TK_NO_ERROR);

  ProMdl again = nullptr;
  ASSERT_EQ(ProMdlnameRetrieve(MdlNameBuffer(L"SHEET"), PRO_MDLFILE_DRAWING, &again), PRO_TK_NO_ERROR);
  drawing_ = static_cast<ProDrawing>(again);
  ProView* views = nullptr;
  ASSERT_EQ(ProDrawingViewsCollect(drawing_, &views), PRO_TK_NO_ERROR);
  ExpectOutline(views[0], 60, 130, 140, 170);
  ExpectOutline(views[1], 190, 130, 210, 170);
  ExpectOutline(views[2], 288, 88, 312, 112);
  EXPECT_EQ(ProArrayFree(reinterpret_cast<ProArray*>(&views)), PRO_TK_NO_ERROR);
  EXPECT_EQ(Snapshot(Sheet()), before);
}

TEST_F(DrawingsTest, RefuseWhatMakesNoSense) {
  ProView view = nullptr;
  for (const double scale : {0.0, kNan, std::numeric_limits<double>::infinity()})
    EXPECT_EQ(AddGeneral(0, 0, scale, kNoMove, &view), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddGeneral(kNan, 0, 1, kNoMove, &view), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddGeneral(0, 0, 1, kNoMove, &view, 3), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(AddGeneral(0, 0, 1, kMirrored, &view), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProDrawingSolidAdd(drawing_, Solid()), -39);
  EXPECT_EQ(ProDrawingSolidAdd(drawing_, reinterpret_cast<ProSolid>(drawing_)), PRO_TK_INVALID_TYPE);
  int sheet = 0;
  EXPECT_EQ(ProDrawingCurrentSheetGet(reinterpret_cast<ProDrawing>(part_), &sheet), PRO_TK_INVALID_TYPE);

  const ProView front = Front(100, 150, 1);
  EXPECT_EQ(AddProjected(front, 100, 150, &view), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProDrawingViewScaleSet(drawing_, front, -1), PRO_TK_BAD_INPUTS);
  const ProDrawing first = drawing_;
  ASSERT_EQ(Make(L"OTHER", L"two_sheets", L"PART"), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProDrawingViewSheetGet(drawing_, front, &sheet), PRO_TK_INVALID_PTR);
  EXPECT_EQ(AddGeneral(0, 0, 1, kNoMove, &view), PRO_TK_BAD_INPUTS);  // the part isn't in this one
  EXPECT_EQ(ProDrawingViewSheetGet(first, front, &sheet), PRO_TK_NO_ERROR);
}

}  // namespace
}  // namespace bench
