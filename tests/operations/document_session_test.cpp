// What the document operations do within the session: info, list, activate, rebuild, new documents.
#include <gtest/gtest.h>

#include <set>

#include "addin/ops/common/history.h"
#include "tests/support/operation_fixture.h"

namespace vek {
namespace {

class Documents : public support::OperationTest {
 protected:
  std::size_t HistoryAfter(const std::wstring& name, const std::wstring& arguments) {
    ClearHistory();
    PushCreateFeature(L"A");
    Run(name, arguments);
    return UndoStack().size();
  }
};

TEST_F(Documents, DescribeTheActiveOne) {
  bench::Model& part = AddModel(L"BRACKET", PRO_MDL_PART);
  part.directory = L"C:\\parts";
  Succeed(L"api_document_activate", LR"({"name_or_path":"bracket"})");

  ExpectAnswer(
      L"api_document_info", L"{}", L"Active document: BRACKET.",
      LR"({"name":"BRACKET","full_path":"C:\\parts\\BRACKET.prt","document_type":"part","is_modified":true})");
  faults().Fail("ProMdlModificationVerify", -1);
  EXPECT_EQ(Succeed(L"api_document_info")["is_modified"], false);
}

TEST_F(Documents, AreListedByTypeWhenTheyHaveAWindow) {
  ExpectAnswer(L"api_document_list_open", L"{}", L"0 open document(s).", L"[]");

  AddModel(L"SHEET", PRO_MDL_DRAWING);
  AddModel(L"FRAME", PRO_MDL_ASSEMBLY);
  AddModel(L"BRACKET", PRO_MDL_PART).modified = false;
  AddModel(L"BEHIND", PRO_MDL_PART);
  for (const wchar_t* name : {L"SHEET", L"FRAME", L"BRACKET", L"FRAME"})
    Succeed(L"api_document_activate", std::wstring(L"{\"name_or_path\":\"") + name + L"\"}");

  ExpectAnswer(
      L"api_document_list_open", L"{}", L"3 open document(s).",
      LR"([{"name":"BRACKET","full_path":"BRACKET.prt","document_type":"part","is_active":false,"is_modified":false},)"
      LR"({"name":"FRAME","full_path":"FRAME.asm","document_type":"assembly","is_active":true,"is_modified":true},)"
      LR"({"name":"SHEET","full_path":"SHEET.drw","document_type":"drawing","is_active":false,"is_modified":true}])");
}

TEST_F(Documents, AreListedWithoutAWindowOnlyWhenActive) {
  AddModel(L"BRACKET", PRO_MDL_PART);
  AddModel(L"FRAME", PRO_MDL_ASSEMBLY);
  for (const wchar_t* name : {L"BRACKET", L"FRAME"})
    Succeed(L"api_document_activate", std::wstring(L"{\"name_or_path\":\"") + name + L"\"}");
  faults().Fail("ProMdlWindowGet", -1, 1, 2);
  const auto rows = Succeed(L"api_document_list_open");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0]["name"], "FRAME");
}

TEST_F(Documents, AreActivatedByName) {
  ExpectFailure(L"api_document_activate", LR"({"name_or_path":"Gear "})",
                L"No open document matches 'Gear '. Use api_document_list_open to see open documents.");

  bench::Model& behind = AddModel(L"BEHIND", PRO_MDL_PART);
  NewPart();
  ExpectAnswer(L"api_document_activate", LR"({"name_or_path":" behind.prt.3 "})",
               L"Document 'BEHIND' is now active.",
               LR"({"name":"BEHIND","full_path":"BEHIND.prt","document_type":"part"})");
  EXPECT_EQ(&Current(), &behind);
}

TEST_F(Documents, AreRebuilt) {
  for (const wchar_t* made_by : {L"api_document_new_part", L"api_document_new_assembly"}) {
    Succeed(made_by);
    const auto mark = host().journal.Mark();
    ExpectAnswer(L"api_document_rebuild", L"{}", L"Rebuild completed.", LR"({"computed":true})");
    EXPECT_EQ(CallsSince(mark, {"ProSolidRegenerate", "ProWindowRepaint"}),
              (std::vector<std::string>{"ProSolidRegenerate", "ProWindowRepaint"}));
    EXPECT_EQ(host().journal.Last(1).front().arguments, "-1");  // the current window
  }
  faults().Fail("ProSolidRegenerate", -1);
  ExpectFailure(L"api_document_rebuild", L"{}", L"Rebuild failed (status=-1).");
  AddModel(L"SHEET", PRO_MDL_DRAWING);
  Succeed(L"api_document_activate", LR"({"name_or_path":"sheet"})");
  ExpectFailure(L"api_document_rebuild", L"{}",
                L"api_document_rebuild is only supported for parts and assemblies.");
}

TEST_F(Documents, AreBornUnderAClocksName) {
  const auto part = Run(L"api_document_new_part");
  const std::wstring name = Current().name;
  EXPECT_TRUE(name.starts_with(L"VEK_PRT_"));
  EXPECT_EQ(part.message, L"New part document '" + name + L"' created.");
  EXPECT_EQ(part.dataJson, L"{\"name\":\"" + name + L"\",\"full_path\":\"" + name + L".prt\"}");
  const auto assembly = Run(L"api_document_new_assembly");
  EXPECT_EQ(Current().type, PRO_MDL_ASSEMBLY);
  EXPECT_TRUE(Current().name.starts_with(L"VEK_ASM_"));
  EXPECT_EQ(assembly.message, L"New assembly document '" + Current().name + L"' created.");
}

TEST_F(Documents, ThatCanNotBeMadeTellWhy) {
  // The clock alone need not move between two attempts; the attempt's number does.
  faults().Fail("ProSolidMdlnameCreate", -5, 1, 25);
  const auto mark = host().journal.Mark();
  ExpectFailure(L"api_document_new_assembly", L"{}",
                L"Failed to create a unique new assembly document name.");
  std::set<std::string> names_tried;
  for (const auto& call : host().journal.Since(mark))
    if (call.name == "ProSolidMdlnameCreate") names_tried.insert(call.arguments);
  EXPECT_EQ(names_tried.size(), 25u);

  faults().NoEffect("ProSolidMdlnameCreate");
  ExpectFailure(L"api_document_new_part", L"{}", L"Failed to create new part document (status=0).");
  EXPECT_TRUE(host().session.All().empty());

  faults().Fail("ProMdlMdlnameGet", -1);
  ExpectFailure(L"api_document_new_part", L"{}", L"Failed to read model name for activation.");
  EXPECT_EQ(host().session.All().size(), 1u);  // it stays, without a window
}

TEST_F(Documents, ClearTheHistoryWhenAnotherBecomesActive) {
  NewPart();
  const std::wstring name = Current().name;
  const std::wstring by_name = L"{\"name_or_path\":\"" + name + L"\"}";
  EXPECT_EQ(HistoryAfter(L"api_document_rebuild", L"{}"), 1u);
  EXPECT_EQ(HistoryAfter(L"api_document_activate", LR"({"name_or_path":"NOBODY"})"), 1u);
  faults().Fail("ProMdlDisplay", -1);
  EXPECT_EQ(HistoryAfter(L"api_document_activate", by_name), 1u);
  EXPECT_EQ(HistoryAfter(L"api_document_activate", by_name), 0u);
  EXPECT_EQ(HistoryAfter(L"api_document_open", L"{\"file_path\":\"" + name + L"\"}"), 0u);
  EXPECT_EQ(HistoryAfter(L"api_document_open", LR"({"file_path":"nowhere.prt"})"), 1u);
  EXPECT_EQ(HistoryAfter(L"api_document_save_as", L"{\"file_path\":\"" + name + L".prt\"}"), 1u);
  EXPECT_EQ(HistoryAfter(L"api_document_new_part", L"{}"), 0u);
  EXPECT_EQ(HistoryAfter(L"api_document_new_assembly", L"{}"), 0u);
  faults().Fail("ProSolidMdlnameCreate", -1);
  EXPECT_EQ(HistoryAfter(L"api_document_new_part", L"{}"), 1u);
  faults().Fail("ProMdlErase", -1);
  EXPECT_EQ(HistoryAfter(L"api_document_close", by_name), 1u);
  EXPECT_EQ(HistoryAfter(L"api_document_close", by_name), 0u);
}

}  // namespace
}  // namespace vek
