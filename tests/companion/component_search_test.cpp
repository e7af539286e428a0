// Where components of a name are found: at the top, in sub-assemblies, once each.
#include "addin/companion/component_search.h"

#include "tests/operations/assembly_ground.h"
#include "tests/support/captured_log.h"

namespace vek {
namespace {

using bench::Handle;
using bench::Model;

class ComponentSearch : public support::AssemblyTest {
 protected:
  // A component of any assembly, behind everybody's back.
  static int PlaceIn(Model& parent, Model& model) {
    return bench::AssembleComponent(parent, model, bench::kNoMove).feature;
  }

  int Find(const wchar_t* name, int type = kAnyModelType) {
    return FindAllComponentsInAssembly(Handle(assembly()), name, components_, type);
  }
  std::vector<std::pair<Model*, int>> Found() const {
    std::vector<std::pair<Model*, int>> found;
    for (const ProAsmcomp& component : components_)
      found.emplace_back(static_cast<Model*>(component.owner), component.id);
    return found;
  }

  std::vector<ProAsmcomp> components_;
  std::vector<ProMdl> parents_;
};

using Places = std::vector<std::pair<Model*, int>>;

TEST_F(ComponentSearch, FindsEveryPlaceOnceHoweverDeep) {
  Model& bolt = Part(L"BOLT");
  Model& sub = AddModel(L"SUB", PRO_MDL_ASSEMBLY);
  Model& other = AddModel(L"OTHER", PRO_MDL_ASSEMBLY);
  // Ids begin anew in each assembly.
  const int deep = PlaceIn(sub, bolt);
  const int elsewhere = PlaceIn(other, bolt);
  const int first = PlaceIn(assembly(), bolt);
  ASSERT_EQ(deep, elsewhere);
  PlaceIn(assembly(), sub);
  PlaceIn(assembly(), sub);
  PlaceIn(assembly(), other);
  const int second = PlaceIn(assembly(), bolt);

  EXPECT_EQ(Find(L"Bolt.PRT"), 0);
  EXPECT_EQ(Found(),
            (Places{{&assembly(), first}, {&assembly(), second}, {&sub, deep}, {&other, elsewhere}}));
  EXPECT_EQ(support::CountCaptured(L"=== Component search completed successfully ==="), 1);
  EXPECT_EQ(
      support::CountCaptured(L"FindAllComponentsInAssembly: SUCCESS - Found and returned 4 component(s) "
                             L"(top-level: 2, subassembly: 2)"),
      1);

  EXPECT_EQ(FindAllComponentsInAssemblyWithParents(Handle(assembly()), L"bolt", components_, parents_, 2), 0);
  EXPECT_EQ(parents_,
            (std::vector<ProMdl>{Handle(assembly()), Handle(assembly()), Handle(sub), Handle(other)}));
}

TEST_F(ComponentSearch, TellsTypesAndNamesApart) {
  Model& part = Part(L"BRACKET");
  Model& sub = AddModel(L"BRACKET", PRO_MDL_ASSEMBLY);
  const int of_part = PlaceIn(assembly(), part), of_sub = PlaceIn(assembly(), sub);
  PlaceIn(assembly(), Part(L"BRACKET_1"));
  EXPECT_EQ(Find(L"bracket", 2), 0);
  EXPECT_EQ(Found(), (Places{{&assembly(), of_part}}));
  EXPECT_EQ(Find(L"bracket", 1), 0);
  EXPECT_EQ(Found(), (Places{{&assembly(), of_sub}}));
  EXPECT_EQ(Find(L"bracket"), 0);
  EXPECT_EQ(components_.size(), 2u);
  EXPECT_EQ(Find(L"brack"), -4);
}

TEST_F(ComponentSearch, RefusesWhatItCanNotSearchAndNeedsBothVisitsToFail) {
  PlaceIn(assembly(), Part(L"BOLT"));
  EXPECT_EQ(FindAllComponentsInAssembly(nullptr, L"bolt", components_), -2);
  EXPECT_EQ(Find(L""), -2);
  faults().Fail("ProSolidFeatVisit", -1);
  EXPECT_EQ(Find(L"bolt"), 0) << "the other visit finds it";
  EXPECT_EQ(Found(), (Places{{&assembly(), components_.at(0).id}}));
  faults().Fail("ProSolidFeatVisit", -10);
  faults().Fail("ProSolidDispCompVisit", -1);
  EXPECT_EQ(Find(L"bolt"), -10);
  faults().Fail("ProAsmcompMdlGet", -1);
  faults().Fail("ProAsmcomppathMdlGet", -1);
  EXPECT_EQ(Find(L"bolt"), -4);
}

}  // namespace
}  // namespace vek
