// Projected, section and detail views, and the dimensions and the list of views.
#include <tuple>

#include "tests/operations/drawing_ground.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kBase = L"api_drawing_add_base_view";
constexpr const wchar_t* kProjected = L"api_drawing_add_projected_view";
constexpr const wchar_t* kSection = L"api_drawing_add_section_view";
constexpr const wchar_t* kDetail = L"api_drawing_add_detail_view";
constexpr const wchar_t* kDimensions = L"api_drawing_add_dimensions";
constexpr const wchar_t* kList = L"api_drawing_list_views";
constexpr const wchar_t* kOfFront = LR"({"parent_view_name":"NEW_view_1"})";

using DrawingViews = DrawingTest;

TEST_F(DrawingViews, NeedAParentOnTheActiveSheet) {
  Slab();
  ExpectFailure(kList, L"{}",
                L"Drawing operations require an active drawing document. Activate a drawing first.");
  SlabWithBaseView();
  for (const wchar_t* operation : {kProjected, kSection, kDetail})
    ExpectFailure(operation, LR"({"parent_view_name":"front"})",
                  L"View 'front' not found on the active sheet.");
  faults().NoEffect("ProDrawingViewsCollect");
  ExpectFailure(kProjected, kOfFront, L"Failed to collect drawing views (status=0).");

  sheets().sheets.push_back(sheets().sheets[0]);
  LastView().sheet = 2;
  ExpectFailure(kProjected, kOfFront, L"View 'NEW_view_1' not found on the active sheet.");
  EXPECT_EQ(Message(kList), "0 view(s) on active sheet 1.");
  sheets().current_sheet = 2;
  EXPECT_EQ(Message(kList), "1 view(s) on active sheet 2.");
}

TEST_F(DrawingViews, ProjectedOnesStand100FromTheirParent) {
  SlabWithBaseView();
  const auto above = Run(kProjected, kOfFront);
  EXPECT_EQ(above.message, L"Projected view 'new_view_2' added (top of 'NEW_view_1').");
  EXPECT_EQ(above.dataJson, LR"({"view_name":"new_view_2"})");
  EXPECT_EQ(CountLogged(above.message), 1);
  ExpectLastView({100, 250}, {40, 10});
  EXPECT_EQ(Message(kProjected, LR"({"parent_view_name":"new_view_1","direction":" Left"})"),
            "Projected view 'new_view_3' added ( Left of 'new_view_1').");
  ExpectLastView({0, 150}, {10, 30});
  faults().Fail("ProDrawingProjectedviewCreate", -1);
  ExpectFailure(kProjected, kOfFront, L"Failed to create projected view from 'NEW_view_1' (status=-1).");

  LastView().center = {300, 150};
  faults().Fail("ProDrawingViewOutlineGet", -1);
  Succeed(kProjected, LR"({"parent_view_name":"new_view_1","direction":"right"})");
  ExpectLastView({200, 150}, {10, 30});
}

TEST_F(DrawingViews, ACutThroughTheMiddleGoesAlongTheDatumPlaneItself) {
  SlabWithBaseView();
  const std::size_t features = part().features.size();
  const auto result =
      Run(kSection, LR"({"parent_view_name":"new_view_1","x1_mm":80,"y1_mm":150,"x2_mm":120.5,"y2_mm":150})");
  EXPECT_EQ(result.message, L"Section view 'new_view_2' added (cut 80,150 -> 120.5,150, xsec 'A').");
  EXPECT_EQ(CountLogged(result.message), 1);
  EXPECT_EQ(CountLogged(L"section cut (80.000,150.000)->(120.500,150.000) plane=TOP sheetOffset=0.000 "
                        L"modelOffset=0.000"),
            1);
  EXPECT_EQ(part().features.size(), features);
  EXPECT_EQ(LastView().section, L"A");
  EXPECT_EQ(LastView().section_parent, sheets().views[0]->id);
  // Turned to look onto the cut: 40 mm wide and 10 mm thick, 150 right of the parent.
  ExpectLastView({250, 150}, {40, 10});

  // As close as nothing.
  Succeed(kSection, LR"({"parent_view_name":"new_view_1","y1_mm":150.00005,"y2_mm":150.00005})");
  EXPECT_EQ(part().features.size(), features);
}

TEST_F(DrawingViews, ACutBesideTheMiddleGetsAPlaneAtTheModelsOwnDistance) {
  SlabWithBaseView(2);
  const std::uint64_t mark = host().journal.Mark();
  Succeed(kSection, LR"({"parent_view_name":"new_view_1","x1_mm":60,"y1_mm":170,"x2_mm":140,"y2_mm":170})");
  // 20 on the sheet at scale 2.
  const bench::Feature& plane = *part().features.back();
  EXPECT_TRUE(plane.name.starts_with(L"VEK_SEC_PLN_"));
  EXPECT_NEAR(plane.plane.origin[1], 10, 1e-9);
  EXPECT_EQ(part().cross_sections.back().surface, part().features.back()->items[0].id);
  auto calls = CallsSince(mark, {"ProFeatureWithoptionsCreate", "ProArrayFree", "ProElementFree",
                                 "ProReferenceFree", "ProSelectionFree", "ProSolidRegenerate"});
  calls.erase(calls.begin(), std::ranges::find(calls, "ProFeatureWithoptionsCreate"));
  EXPECT_THAT(calls,
              ElementsAre("ProFeatureWithoptionsCreate", "ProSolidRegenerate", "ProArrayFree",
                          "ProElementFree", "ProReferenceFree", "ProSelectionFree", "ProSelectionFree"));

  // In inches 50.8 on the sheet at scale 2 are 1.
  part().length_unit = bench::LengthUnit::kInch;
  sheets().views[0]->center = {0, 0};
  Run(kSection, LR"({"parent_view_name":"new_view_1","x1_mm":50.8,"y1_mm":-5,"x2_mm":50.8,"y2_mm":5})");
  EXPECT_EQ(CountLogged(L"section cut (50.800,-5.000)->(50.800,5.000) plane=RIGHT sheetOffset=50.800 "
                        L"modelOffset=1.000"),
            1);
}

TEST_F(DrawingViews, ACutThatCannotHaveItsOwnPlaneGoesAlongTheDatumPlane) {
  SlabWithBaseView();
  const std::tuple<const char*, int, const wchar_t*> cases[] = {
      {"ProFeatureWithoptionsCreate", 1, L"Failed to create offset cutting plane (status=-1, errors=0)."},
      // The first visit is that of TOP.
      {"ProFeatureGeomitemVisit", 2,
       L"Offset cutting plane was created but its surface could not be resolved."}};
  for (const auto& [call, occurrence, message] : cases) {
    ClearCapturedLog();
    faults().Fail(call, -1, occurrence);
    Succeed(kSection, LR"({"parent_view_name":"new_view_1","y1_mm":155,"y2_mm":155})");
    EXPECT_EQ(CountLogged(Format(L"offset plane failed (%s); using principal plane.", message)), 1);
    EXPECT_EQ(part().cross_sections.back().surface, FindTop());
  }
}

TEST_F(DrawingViews, WithoutTheWantedPlaneTheCutGoesAlongAnother) {
  SlabWithBaseView();
  const auto rename = [&](const wchar_t* from, const wchar_t* to) {
    for (const auto& feature : part().features)
      if (feature->name == from) feature->name = to;
  };
  rename(L"TOP", L"UPPER");
  Succeed(kSection, LR"({"parent_view_name":"new_view_1","y1_mm":155,"y2_mm":155})");
  EXPECT_EQ(CountLogged(Format(L"created xsec 'A' on surface id=%d (base plane 'FRONT')",
                               part().cross_sections[0].surface)),
            1);
  // Still as far off as the line lies across TOP: FRONT has z 0.
  EXPECT_NEAR(part().features.back()->plane.origin[2], 5, 1e-9);
  rename(L"FRONT", L"FORE");
  rename(L"RIGHT", L"STARBOARD");
  ExpectFailure(kSection, kOfFront,
                L"Could not find a FRONT/RIGHT/TOP datum plane to cut the section through.");
}

TEST_F(DrawingViews, CrossSectionsFallBackToTheOlderCallAndTheNextName) {
  SlabWithBaseView();
  const std::wstring middle = LR"({"parent_view_name":"new_view_1","y1_mm":150,"y2_mm":150})";
  faults().Fail("ProXsecPlanarWithoptionsCreate", -1, 1, 2);
  EXPECT_EQ(Message(kSection, middle), "Section view 'new_view_2' added (cut 0,150 -> 10,150, xsec 'A').");
  faults().Fail("ProXsecPlanarCreate", -2);
  ExpectFailure(kSection, middle,
                Format(L"Failed to create cross-section 'B' on surface id=%d (status=-1/-2).", FindTop()));

  part().cross_sections.clear();
  for (wchar_t letter = L'a'; letter <= L'z'; ++letter) {
    int id = 0;
    ASSERT_EQ(bench::AddCrossSection(part(), std::wstring(1, letter), FindTop(), id), PRO_TK_NO_ERROR);
  }
  EXPECT_EQ(Message(kSection, middle), "Section view 'new_view_3' added (cut 0,150 -> 10,150, xsec 'S1').");
}

TEST_F(DrawingViews, ASectionThatCannotBeProjectedIsAViewFromTheFront) {
  SlabWithBaseView();
  const std::wstring diagonal = LR"({"parent_view_name":"new_view_1","y2_mm":9})";
  faults().Fail("ProDrawingProjectedviewCreate", -1, 1, 2);
  Succeed(kSection, diagonal);
  EXPECT_EQ(LastView().type, bench::ViewType::kGeneral);
  EXPECT_FALSE(LastView().scale.has_value()) << "the sheet's";
  ExpectLastView({250, 150}, {40, 30});
  faults().Fail("ProDrawingGeneralviewCreate", -1);
  ExpectFailure(kSection, diagonal, L"Failed to create section host view (status=-1).");
  faults().Fail("ProDrawingView2DSectionSet", -1);
  ExpectFailure(kSection, diagonal, L"Created host view but failed to apply cross-section 'C' (status=-1).");
  EXPECT_EQ(sheets().views.size(), 3u) << "the uncut view stays";
}

TEST_F(DrawingViews, DetailsStandBesideTheirParentEnlarged) {
  SlabWithBaseView();
  const std::uint64_t mark = host().journal.Mark();
  const auto result = Run(kDetail, LR"({"parent_view_name":"new_view_1","cy_mm":155,"radius_mm":8})");
  // Half sizes max(40, 2 * 8) + 25 = 65, right of the outline's 120: 120 + 40 + 65.
  EXPECT_EQ(result.message,
            L"Detail view 'new_view_2' added (scale 2:1, center 100.0,155.0 r=8.0, placed at "
            L"225.0,150.0).");
  EXPECT_EQ(CountLogged(result.message), 1);
  EXPECT_EQ(CountLogged(L"detail/section placement at (225.0,150.0) clear of 1 views."), 1);
  EXPECT_EQ(LastView().scale, 2);
  ASSERT_EQ(LastView().detail->spline.size(), 16u);
  // In the model's own millimetres: 8 right of (0, 5), and a sixteenth of a turn before the first point.
  EXPECT_NEAR(LastView().detail->spline[0][0], 8, 1e-9);
  EXPECT_NEAR(LastView().detail->spline[4][1], 5 + 8, 1e-9);
  EXPECT_NEAR(LastView().detail->spline[15][1], 5 - 8 * 0.38268343, 1e-6);
  auto calls = CallsSince(
      mark, {"ProDrawingViewDetailCreate", "ProSelectionFree", "ProArrayFree", "ProDrawingViewScaleSet"});
  calls.erase(calls.begin(), std::ranges::find(calls, "ProDrawingViewDetailCreate"));
  EXPECT_THAT(calls, ElementsAre("ProDrawingViewDetailCreate", "ProSelectionFree", "ProArrayFree",
                                 "ProArrayFree", "ProArrayFree", "ProDrawingViewScaleSet"));
}

TEST_F(DrawingViews, DetailsOfNothingAreOfTheMiddle) {
  SlabWithBaseView();
  // Half sizes 3 * 20 + 25 = 85 right of 120.
  EXPECT_EQ(Message(kDetail, LR"({"parent_view_name":"new_view_1","cx_mm":5000,"radius_mm":0,"scale":3})"),
            "Detail view 'new_view_2' added (scale 3:1, center 100.0,150.0 r=20.0, placed at 245.0,150.0).");
  EXPECT_EQ(CountLogged(L"detail center (5000.0,150.0) outside view outline [80.0..120.0, 135.0..165.0]; "
                        L"using view center."),
            1);

  // A view that covers the sheet and more.
  Succeed(kBase, LR"({"scale":1000})");
  EXPECT_THAT(Message(kDetail, LR"({"parent_view_name":"new_view_1","scale":-1})"),
              testing::EndsWith("(scale 2:1, center 100.0,150.0 r=20.0, placed at 225.0,150.0)."));
  EXPECT_EQ(CountLogged(L"no clear placement found; using right-of-parent fallback."), 1);

  // Without outlines the parent counts as 50 to 150 and the sheet as free; the centre is the client's.
  faults().Fail("ProDrawingViewOutlineGet", -1, 1, 99);
  Succeed(kDetail, LR"({"parent_view_name":"new_view_1","cx_mm":100,"cy_mm":150})");
  EXPECT_EQ(CountLogged(L"detail/section placement at (255.0,150.0) clear of 0 views."), 1);
}

TEST_F(DrawingViews, ShowTheModelsDimensionsWhenAsked) {
  SlabWithBaseView();
  const std::wstring front = LR"({"view_name":"New_view_1"})";
  const wchar_t* const message = L"Dimensions added to view 'New_view_1': 0 dimension(s) retrieved.";
  ExpectAnswer(kDimensions, LR"({"view_name":"New_view_1","auto_dimension":false})", message,
               LR"({"dimension_count":0})");
  EXPECT_TRUE(LastView().shown_dimensions.empty());
  faults().Fail("ProAnnotationByViewShow", -1);
  ExpectFailure(kDimensions, front, L"Failed to show model dimensions on view 'New_view_1' (status=-1).");
  for (int run = 0; run < 2; ++run) EXPECT_EQ(Run(kDimensions, front).message, message);
  EXPECT_FALSE(LastView().shown_dimensions.empty());
  EXPECT_EQ(CountLogged(message), 3);
}

TEST_F(DrawingViews, AreListedByNameTypeAndScale) {
  SlabDrawing();
  ExpectAnswer(kList, L"{}", L"0 view(s) on active sheet 1.", L"[]");
  Succeed(kBase, LR"({"scale":0.5})");
  LastView().name = L"in \"front\"";
  Succeed(kBase);
  LastView().name.clear();
  const std::pair<int, const wchar_t*> types[] = {{0, L"General"},      {1, L"Projected"}, {2, L"Auxiliary"},
                                                  {3, L"Detail"},       {4, L"Revolve"},   {5, L"Type5"},
                                                  {6, L"CopyAndAlign"}, {8, L"FlatPly"}};
  for (const auto& [type, word] : types) {
    sheets().views[0]->type = static_cast<bench::ViewType>(type);
    EXPECT_EQ(Run(kList).dataJson, Format(LR"([{"name":"in \"front\"","type":"%s","scale":0.5}])", word));
  }
  sheets().views[1]->name = L"B";
  faults().Fail("ProDrawingViewTypeGet", -1, 1, 2);
  faults().Fail("ProDrawingViewScaleGet", -1);
  faults().Fail("ProDrawingCurrentSheetGet", -1, 1, 2);
  ExpectAnswer(
      kList, L"{}", L"2 view(s) on active sheet 1.",
      LR"([{"name":"in \"front\"","type":"Unknown","scale":1},{"name":"B","type":"Unknown","scale":1}])");
}

}  // namespace
}  // namespace vek::support
