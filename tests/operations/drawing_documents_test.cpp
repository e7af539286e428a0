// Drawings made from templates, and which model they show.
#include "tests/operations/drawing_ground.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kCreate = L"api_drawing_create";
constexpr const wchar_t* kBase = L"api_drawing_add_base_view";
constexpr const wchar_t* kFromA3 = LR"({"template_path":"a3_drawing"})";
constexpr const wchar_t* kA3Refused = L"Template 'a3_drawing' failed (status=-1).";
// A template that asks for a view which no part can give.
constexpr const char* kFilledInPart =
    R"({"format":"creobench drawing template","version":1,"views":[{"plane":"NOWHERE","at":[1,1]}],)"
    R"("sheets":[{"size":"A3","width":420,"height":297,"border":10,"scale":1}]})";
const char* const kNewWay = "ProDrawingFromTemplateCreate";
const char* const kOlderWay = "ProDrawingFromTmpltCreate";

using DrawingDocuments = DrawingTest;

TEST_F(DrawingDocuments, WhatIsNoSourceIsRefused) {
  std::ofstream(directory() / L"sheet.drw");
  const wchar_t* const no_solid = L"model_path must point to a Creo part (.prt) or assembly (.asm).";
  const std::pair<std::wstring, const wchar_t*> cases[] = {
      {L"gone.prt", L"Model file not found: 'gone.prt'."},
      {JsonPath(L"sheet.drw"), no_solid},
      {JsonPath(L""), L"Unable to parse model_path."}};
  for (const auto& [path, message] : cases)
    ExpectFailure(kCreate, Format(LR"({"model_path":"%s"})", path), message);
  SlabDrawing();
  ExpectFailure(kCreate, L"{}",
                L"Active document is already a drawing. Specify model_path or activate a part/assembly.");
  ExpectFailure(kCreate, Format(LR"({"model_path":"%s.drw"})", Current().name), no_solid);
}

TEST_F(DrawingDocuments, TheFirstDefaultTemplateThereIsServes) {
  Slab();
  ExpectFailure(kCreate, L"{}", L"Template 'b_drawing' failed (status=-4).");
  for (const wchar_t* name :
       {L"a3_drawing", L"a4_drawing", L"empty", L"c_drawing", L"a_drawing", L"b_drawing"})
    EXPECT_EQ(CountLogged(Format(L"Template '%s' failed (status=-4).", name)), 1) << name;

  Template(L"b_drawing");
  Template(L"empty");
  const std::uint64_t mark = host().journal.Mark();
  EXPECT_EQ(Message(kCreate), "Drawing document created (template: 'empty').");
  EXPECT_THAT(CallsSince(mark, {kNewWay, kOlderWay}),
              ElementsAre(kNewWay, kOlderWay, kNewWay, kOlderWay, kNewWay));
  EXPECT_EQ(CountLogged(L"Drawing document created (template: 'empty')."), 1);
  EXPECT_NE(Current().drawing, nullptr) << "the drawing is active";
}

TEST_F(DrawingDocuments, ATemplatesPathIsItsNameAndItsDirectory) {
  Slab();
  Template(L"a3_drawing");
  Template(L"lib\\a0");
  const std::wstring arguments = Format(LR"({"template_path":"%s"})", JsonPath(L"lib\\a0.drw"));
  EXPECT_EQ(Message(kCreate, arguments), "Drawing document created (template: 'a0').");
  EXPECT_EQ(std::filesystem::current_path(), directory());
}

TEST_F(DrawingDocuments, TheOlderCallServesWhereTheNewOneGivesNoDrawing) {
  Slab();
  Template(L"a3_drawing");
  const std::wstring arguments = Format(LR"({"template_path":"a3_drawing","model_path":"%s"})", part_name());
  faults().Fail(kNewWay, -1);
  EXPECT_TRUE(Run(kCreate, arguments).success);
  faults().NoEffect(kNewWay);
  EXPECT_TRUE(Run(kCreate, arguments).success);
  faults().Fail(kNewWay, -2);
  faults().Fail(kOlderWay, -1);
  ExpectFailure(kCreate, arguments, kA3Refused);
}

TEST_F(DrawingDocuments, ErrorRecordsAreFreedAtOnceWhateverCameOfTheTemplate) {
  Slab();
  Template(L"a3_drawing", kFilledInPart);
  const std::vector<std::string> calls{kNewWay, kOlderWay, "ProDwgcreateErrsFree"};
  const std::uint64_t made = host().journal.Mark();
  EXPECT_TRUE(Run(kCreate).success) << "a template that is filled in part still makes a drawing";
  EXPECT_THAT(CallsSince(made, calls), ElementsAre(kNewWay, "ProDwgcreateErrsFree"));

  // The source is gone by the time the template is filled.
  bench::Model& part = Slab();
  faults().Before(kNewWay, [&] { ProMdlErase(bench::Handle(part)); });
  const std::uint64_t refused = host().journal.Mark();
  ExpectFailure(kCreate, kFromA3, L"Template 'a3_drawing' failed (status=-4).");
  EXPECT_THAT(CallsSince(refused, calls),
              ElementsAre(kNewWay, "ProDwgcreateErrsFree", kOlderWay, "ProDwgcreateErrsFree"));
}

TEST_F(DrawingDocuments, AModelOnDiskIsOpenedWhereItLies) {
  Slab();
  Template(L"a3_drawing");
  std::filesystem::create_directory(directory() / L"lib");
  Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"lib\\slab.prt")));
  ASSERT_EQ(ProMdlErase(bench::Handle(part())), PRO_TK_NO_ERROR);
  const std::wstring slab = Format(LR"({"model_path":"%s"})", JsonPath(L"lib\\slab.prt.1"));
  faults().Fail("ProMdlnameRetrieve", -1);
  ExpectFailure(kCreate, slab, Format(L"Failed to open model '%s' (status=-1).", Full(L"lib\\slab.prt.1")));
  EXPECT_EQ(std::filesystem::current_path(), directory());
  Succeed(kCreate, slab);
  EXPECT_EQ(std::filesystem::current_path(), directory());
  EXPECT_EQ(drawing::PendingSource().source, host().session.OfType(PRO_MDL_PART).at(0));
}

TEST_F(DrawingDocuments, ComeBackFromDiskWithTheirViews) {
  SlabWithBaseView(2);
  Succeed(L"api_drawing_add_projected_view", LR"({"parent_view_name":"new_view_1"})");
  const std::wstring views = Run(L"api_drawing_list_views").dataJson;
  EXPECT_EQ(views,
            LR"([{"name":"new_view_1","type":"General","scale":2},)"
            LR"({"name":"new_view_2","type":"Projected","scale":2}])");
  Succeed(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"sheet.drw")));
  ASSERT_EQ(ProMdlErase(bench::Handle(Current())), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(bench::Handle(part())), PRO_TK_NO_ERROR);
  Succeed(L"api_document_open", Format(LR"({"file_path":"%s"})", JsonPath(L"sheet.drw.1")));
  EXPECT_EQ(Run(L"api_drawing_list_views").dataJson, views);
  ExpectLastView({100, 250}, {80, 20});  // 40 by 10 at scale 2, 100 above its parent
}

TEST_F(DrawingDocuments, NameBothTheirPlaceAndTheirSource) {
  SlabDrawing();
  const bench::Model& first = Current();
  const auto data = Succeed(kCreate, Format(LR"({"model_path":"%s"})", part_name()));
  EXPECT_NE(Current().name, first.name);
  EXPECT_TRUE(data["drawing_path"].get<std::string>().ends_with(EncodeUtf8(Current().name) + ".drw"));
  EXPECT_TRUE(data["model_path"].get<std::string>().ends_with(EncodeUtf8(part_name()) + ".prt"));
}

TEST_F(DrawingDocuments, BaseViewsNeedAModel) {
  SlabDrawing();
  ExpectFailure(kBase, LR"({"model_path":"gone.prt"})", L"Model file not found: 'gone.prt'.");
  drawing::PendingSource() = {};
  sheets().solids.clear();
  faults().Fail("ProSessionMdlList", PRO_TK_E_NOT_FOUND, 1, 2);
  ExpectFailure(kBase, L"{}", L"No model document found. Open a part or assembly before adding a base view.");
}

TEST_F(DrawingDocuments, BaseViewsStandWhereAndAsTheyWereAskedFor) {
  SlabDrawing();
  const auto first = Run(kBase);
  EXPECT_EQ(first.message, L"Base view 'new_view_1' added: front, scale 1:1.");
  EXPECT_EQ(CountLogged(first.message), 1);
  EXPECT_TRUE(first.dataJson.starts_with(LR"({"view_name":"new_view_1","model_path":")"));
  ExpectLastView({100, 150}, {40, 30});
  // From above z points right and x up.
  EXPECT_EQ(Message(kBase, LR"({"orientation":" ToP ","scale":"2.5","x_mm":30,"y_mm":200})"),
            "Base view 'new_view_2' added: top, scale 2.5:1.");
  ExpectLastView({30, 200}, {25, 100});
  for (const wchar_t* scale : {L"0", L"-3", L"\"nan\"", L"\"inf\""})
    EXPECT_THAT(Message(kBase, Format(LR"({"orientation":"home","scale":%s})", scale)),
                testing::EndsWith("added: iso, scale 1:1."));
  faults().Fail("ProDrawingViewNameGet", -1);
  EXPECT_EQ(Message(kBase), "Base view '' added: front, scale 1:1.");
}

TEST_F(DrawingDocuments, TheFirstViewShowsWhatTheDrawingWasMadeOf) {
  SlabDrawing();
  const std::wstring first_name = Current().name, first_part = part_name();
  SlabDrawing();
  const std::wstring second_name = Current().name;
  NewAssembly();
  const std::wstring assembly = Current().name;
  const auto drawn = [&](const std::wstring& drawing_name, const std::wstring& view = L"{}") {
    Succeed(L"api_document_activate", Format(LR"({"name_or_path":"%s"})", drawing_name));
    Succeed(kBase, view);
    return sheets().SolidOf(LastView())->name;
  };

  // Only the drawing made last is still told from its source; the other takes the assembly of the session.
  EXPECT_EQ(drawn(first_name), assembly);
  EXPECT_EQ(drawing::PendingSource().drawing_name, second_name);
  EXPECT_EQ(drawn(second_name), part_name());
  EXPECT_EQ(drawing::PendingSource().source, nullptr);
  EXPECT_EQ(drawn(second_name), part_name()) << "from now on it is in the drawing";
  EXPECT_EQ(drawn(second_name, Format(LR"({"model_path":"%s"})", first_part)), first_part);
}

}  // namespace
}  // namespace vek::support
