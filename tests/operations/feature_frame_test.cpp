// The frame of the feature operations: the active part, names, lookups, listing; deleting, suppressing and
// resuming.
#include <tuple>

#include "addin/host/text_buffer.h"
#include "tests/operations/feature_test.h"

namespace vek::support {
namespace {

using feature::AssignFeatureName;
using feature::FeatureInfo;
using feature::FeatureLookup;
using testing::ElementsAre;

// Features put at the end of the part behind the operations' back, without geometry.
class FeatureFrame : public FeatureTest {
 protected:
  bench::Feature& AddFeature(int type, const std::wstring& name) {
    auto feature = std::make_unique<bench::Feature>();
    feature->id = Current().next_id++;
    feature->type = static_cast<ProFeattype>(type);
    feature->name = name;
    Current().features.push_back(std::move(feature));
    return *Current().features.back();
  }

  FeatureInfo Found(const std::wstring& name, bool sketched_curves_only = false) {
    FeatureInfo info;
    message_ = FeatureLookup(bench::Handle(Current()), name, info, sketched_curves_only).message;
    return info;
  }

  std::wstring RefusalOf(const std::wstring& name, bool sketched_curves_only = false) {
    EXPECT_EQ(Found(name, sketched_curves_only).id, -1);
    return message_;
  }

  std::wstring Assign(const bench::Feature& feature, const wchar_t* base = L"Extrude") {
    const ProMdl part = bench::Handle(Current());
    return AssignFeatureName(part, {PRO_FEATURE, feature.id, part}, base);
  }

 private:
  std::wstring message_;
};

TEST_F(FeatureFrame, AnAssemblyIsNoGround) {
  NewAssembly();
  for (const wchar_t* operation : {L"api_feature_list", L"api_feature_delete", L"api_feature_suppress",
                                   L"api_feature_extrude", L"api_feature_revolve"})
    ExpectFailure(operation, L"{}", L"Feature operations require an active part document.");
}

TEST_F(FeatureFrame, OperationWords) {
  const std::tuple<const wchar_t*, bool, const wchar_t*> cases[] = {
      {L"", false, L""},
      {L"Join", false, L""},
      {L"NewBody", false, L""},
      {L"Cut", true, L""},
      {L"remove", true, L""},
      {L"Intersect", false,
       L"Creo feature operations do not support operation='intersect'. Use 'join' or 'cut'."},
      {L" cut ", false, L"Unsupported operation ' cut '. Use 'join' or 'cut'."},
      {L"Weld", false, L"Unsupported operation 'weld'. Use 'join' or 'cut'."}};
  for (const auto& [word, is_cut, wanted] : cases) {
    bool cut = true;
    std::wstring refusal;
    const bool accepted =
        feature::ParseFeatureOperation(Format(LR"({"operation":"%s"})", word), cut, refusal);
    EXPECT_EQ(accepted, refusal.empty()) << EncodeUtf8(word);
    EXPECT_EQ(cut, is_cut) << EncodeUtf8(word);
    EXPECT_EQ(EncodeUtf8(refusal), EncodeUtf8(wanted));
  }
}

TEST_F(FeatureFrame, ListsFeaturesInTheirOrder) {
  auto& round = AddFeature(913, L"");
  AddFeature(923, L"");
  AddFeature(926, L"");
  AddFeature(931, L"");
  AddFeature(917, L" No_Name ");
  AddFeature(912, L"the \"odd\" one").status = PRO_FEAT_SUPPRESSED;
  // Unnamed datums don't appear; the protrusion that is called "no name" has none.
  ExpectAnswer(L"api_feature_list", L"{}", L"Found 7 features.",
               Format(LR"([{"name":"RIGHT","type":"datum","is_suppressed":false},)"
                      LR"({"name":"TOP","type":"datum","is_suppressed":false},)"
                      LR"({"name":"FRONT","type":"datum","is_suppressed":false},)"
                      LR"({"name":"PRT_CSYS_DEF","type":"csys","is_suppressed":false},)"
                      LR"({"name":"round_%d","type":"round","is_suppressed":false},)"
                      LR"({"name":"protrusion_%d","type":"protrusion","is_suppressed":false},)"
                      LR"({"name":"the \"odd\" one","type":"feat_912","is_suppressed":true}])",
                      round.id, round.id + 4));
}

TEST_F(FeatureFrame, LookupTakesTheLastOfThoseThatBearTheName) {
  AddFeature(917, L"EXTRUDE_1");
  const int later = AddFeature(917, L"Extrude 1").id;
  AddFeature(917, L"Extrude 11");
  const FeatureInfo info = Found(L" extrude_1 ");
  EXPECT_EQ(info.id, later);
  EXPECT_EQ(info.name, L"Extrude 1");
  EXPECT_EQ(info.type, L"protrusion");
  // That of a sketch sees sketched curves only.
  const int sketch = AddFeature(949, L"S").id;
  AddFeature(917, L"S");
  EXPECT_EQ(Found(L"s", true).id, sketch);
  EXPECT_EQ(RefusalOf(L"RIGHT", true),
            L"Sketched curve feature 'RIGHT' not found. Create/commit it with api_sketch_* first.");
}

TEST_F(FeatureFrame, LookupKnowsUnnamedFeaturesByTypeAndId) {
  auto& round = AddFeature(913, L"");
  round.status = PRO_FEAT_SUPPRESSED;
  EXPECT_EQ(Found(Format(L" ROUND %d ", round.id)).id, round.id);
  EXPECT_TRUE(Found(Format(L"round_%d", round.id)).is_suppressed);
  const std::wstring datum = Format(L"datum_%d", AddFeature(923, L"").id);
  EXPECT_EQ(RefusalOf(datum),
            Format(L"Feature '%s' not found. Call api_feature_list and use an exact name.", datum));
}

TEST_F(FeatureFrame, LookupHintsAtHoles) {
  AddFeature(917, L"HOLE 1");
  AddFeature(917, L"THRU_HOLE");
  const int hole = AddFeature(911, L"").id;
  AddFeature(911, L"Bore");
  AddFeature(913, L" hole_rounds");
  EXPECT_EQ(EncodeUtf8(RefusalOf(L"X")),
            EncodeUtf8(Format(L"Feature 'X' not found. Hole-like names in model: HOLE 1, hole_%d, Bore, "
                              L"hole_rounds. Use the exact name from api_feature_hole / api_feature_list.",
                              hole)));
}

TEST_F(FeatureFrame, TheHintEndsWithTheNameThatCarriesItTo200Characters) {
  // With nine names of 18 characters and 2 between each, ten names make 180 and the length of the first: at
  // 199 one more is taken, at 200 none.
  const std::pair<std::size_t, int> cases[] = {{19, 11}, {20, 10}};
  for (const auto& [first_length, names] : cases) {
    NewPart();
    std::wstring hint;
    for (int i = 0; i < 12; ++i) {
      const std::wstring name = std::wstring(L"hole_").append(i == 0 ? first_length - 5 : 13, L'a' + i);
      AddFeature(917, name);
      if (i < names) hint += (i > 0 ? L", " : L"") + name;
    }
    const std::wstring refusal = RefusalOf(L"X");
    EXPECT_NE(refusal.find(L"model: " + hint + L". Use"), std::wstring::npos) << EncodeUtf8(refusal);
  }
}

TEST_F(FeatureFrame, NewFeaturesAreNumbered) {
  EXPECT_EQ(Assign(AddFeature(917, L"")), L"Extrude 1");
  // The form with an underscore is tried before the next number.
  auto& second = AddFeature(917, L"");
  const auto mark = host().journal.Mark();
  EXPECT_EQ(Assign(second), L"Extrude_1");
  EXPECT_EQ(second.name, L"Extrude_1");
  EXPECT_THAT(CallsSince(mark),
              ElementsAre("ProModelitemNameGet", "ProModelitemByNameInit", "ProModelitemByNameInit",
                          "ProModelitemNameSet", "ProSolidRegenerate"));
  AddFeature(913, L"EXTRUDE 2");
  EXPECT_EQ(Assign(AddFeature(917, L"")), L"Extrude_2");
  EXPECT_EQ(Assign(AddFeature(917, L"")), L"Extrude 3");
  // What the host has named keeps its name.
  auto& named = AddFeature(913, L" ROUND_7");
  EXPECT_EQ(Assign(named, L"Round"), L"ROUND_7");
  EXPECT_EQ(named.name, L" ROUND_7");
}

TEST_F(FeatureFrame, NamesAreCutAndFallBackToTheIdWithAllNumbersInUse) {
  auto& created = AddFeature(917, L"");
  // Each of the 9999 numbers has two forms, and all of them are found.
  faults().NoEffect("ProModelitemByNameInit", 1, 2 * 9999);
  EXPECT_EQ(Assign(created), Format(L"Extrude_%d", created.id));
  EXPECT_EQ(created.name, Format(L"Extrude_%d", created.id));
  faults().Clear();
  const wchar_t* const base = L"A base word of forty characters, or more";
  EXPECT_EQ(Assign(AddFeature(917, L""), base), std::wstring(base, 31));
}

TEST_F(FeatureFrame, ANameThatIsRefusedGivesWayToOneWithTheId) {
  auto& created = AddFeature(917, L"");
  const std::wstring fallback = Format(L"Extrude_%d", created.id);
  faults().Fail("ProModelitemNameSet", PRO_TK_INVALID_NAME);
  const auto mark = host().journal.Mark();
  EXPECT_EQ(Assign(created), fallback);
  EXPECT_EQ(created.name, fallback);
  EXPECT_THAT(CallsSince(mark, {"ProSolidRegenerate"}), ElementsAre());
}

// A block of 10 × 10 × 10 with a column of 2 × 2 × 5 on its side: 1000 + 20 mm³.
class FeatureLifecycle : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    Block(10, 10, 10);
    Rectangle(L"COLUMN", L"XY", 10, 0, 12, 2);
    Succeed(L"api_feature_extrude", LR"({"sketch_name":"COLUMN","distance_mm":5})");
    ASSERT_NE(FeatureNamed(L"Extrude_1"), nullptr);
    ASSERT_NEAR(Volume(), 1020, 1e-6);
    ClearHistory();
  }
};

TEST_F(FeatureLifecycle, ADeletedFeatureIsGoneWithItsGeometryAndLeavesNoHistory) {
  const auto mark = host().journal.Mark();
  ExpectAnswer(L"api_feature_delete", LR"({"feature_name":"extrude_1"})", L"Deleted feature 'extrude_1'.");
  EXPECT_THAT(CallsSince(mark, {"ProArrayAlloc", "ProArrayObjectAdd", "ProFeatureWithoptionsDelete",
                                "ProWindowRepaint", "ProArrayFree"}),
              ElementsAre("ProArrayAlloc", "ProArrayObjectAdd", "ProArrayAlloc", "ProArrayObjectAdd",
                          "ProFeatureWithoptionsDelete", "ProWindowRepaint", "ProArrayFree", "ProArrayFree"));
  EXPECT_EQ(FeatureNamed(L"Extrude_1"), nullptr);
  EXPECT_NEAR(Volume(), 1000, 1e-6);
  EXPECT_TRUE(UndoStack().empty());
}

TEST_F(FeatureLifecycle, SuppressingAndResumingTakesTheGeometryAwayAndBack) {
  // Once more is a success that does nothing and leaves no history.
  const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, double, const wchar_t*> steps[] = {
      {L"suppress", L"EXTRUDE_1", L"Suppressed feature 'EXTRUDE_1'.", 1000, L"Suppress EXTRUDE_1"},
      {L"suppress", L"extrude_1", L"Feature 'extrude_1' is already suppressed.", 1000, L""},
      {L"unsuppress", L"extrude_1", L"Unsuppressed feature 'extrude_1'.", 1020, L"Unsuppress extrude_1"},
      {L"unsuppress", L"Extrude_1", L"Feature 'Extrude_1' is already active.", 1020, L""}};
  for (const auto& [verb, name, message, volume, label] : steps) {
    ClearHistory();
    ExpectAnswer(Format(L"api_feature_%s", verb), Format(LR"({"feature_name":"%s"})", name), message);
    EXPECT_NEAR(Volume(), volume, 1e-6);
    EXPECT_EQ(UndoStack().empty() ? L"" : UndoStack().back().label, label);
  }
}

}  // namespace
}  // namespace vek::support
