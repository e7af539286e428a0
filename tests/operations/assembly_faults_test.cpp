// Every toolkit call of the assembly operations fails once: each run answers with a message and gives back
// what it was given.
#include "tests/operations/assembly_ground.h"

namespace vek::support {
namespace {

class AssemblyFaults : public AssemblyTest {
 protected:
  // Runs the operation once for each of its calls with that call failing; `prepare` comes before each run.
  template <typename Prepare>
  void Sweep(const std::wstring& operation, const std::wstring& arguments, int least_calls, Prepare prepare) {
    prepare();
    const std::uint64_t mark = host().journal.Mark();
    ASSERT_TRUE(Run(operation, arguments).success);
    auto calls = CallsSince(mark);
    std::erase_if(calls, [](const std::string& call) { return call.ends_with("Free"); });
    ASSERT_GE(static_cast<int>(calls.size()), least_calls);
    for (int number = 1; number <= static_cast<int>(calls.size()); ++number) {
      SCOPED_TRACE("call " + std::to_string(number) + ", " + calls[number - 1]);
      prepare();
      faults().FailNumber(number, PRO_TK_GENERAL_ERROR);
      EXPECT_FALSE(Run(operation, arguments).message.empty());
      faults().Clear();
      EXPECT_TRUE(host().ledger.Outstanding().empty());
      EXPECT_TRUE(host().ledger.Violations().empty());
    }
    prepare();
    EXPECT_TRUE(Run(operation, arguments).success);
  }

  // The assembly with one component A in the origin and nothing else of components.
  void PlaceAlone(bench::Model& part) {
    std::erase_if(assembly().features, [](const auto& feature) { return feature->component != nullptr; });
    Place(part, L"A").component->constraints.push_back({13, {}, {}, {}});
  }
};

TEST_F(AssemblyFaults, OfAdding) {
  bench::Model& bolt = Part(L"BOLT");
  const std::wstring elsewhere = bolt.directory + L"\\lib";
  Sweep(L"api_assembly_add_component", LR"({"file_path":"bolt","grounded":true})", 40, [&] {
    PlaceAlone(bolt);
    bolt.directory = elsewhere;
  });
}

TEST_F(AssemblyFaults, OfMovingUpToTheLastRung) {
  bench::Model& bolt = Part(L"BOLT");
  const wchar_t* move = LR"({"occurrence_name":"A","dx_mm":1})";
  Sweep(L"api_assembly_move_component", move, 40, [&] { PlaceAlone(bolt); });
  Sweep(L"api_assembly_move_component", move, 70, [&] {
    PlaceAlone(bolt);
    faults().NoEffect("ProAsmcompPositionSet");
    faults().NoEffect("ProFeatureWithoptionsRedefine");
  });
}

TEST_F(AssemblyFaults, OfConstraintsAndListings) {
  PlaceBlocks();
  const auto free = [this] { Constraints(L"B").clear(); };
  Sweep(L"api_assembly_add_constraint",
        LR"({"type":"distance","offset_mm":5,"occurrence1":"B","occurrence2":"A"})", 50, free);
  Sweep(L"api_assembly_list_constraints", L"{}", 20, [] {});
  Sweep(L"api_assembly_list_components", L"{}", 10, [] {});
  Sweep(L"api_assembly_add_ir_constraint", LR"({"kind":"Plane","refs":["B@@>Z","A@@<X"],"param":5})", 50,
        free);
}

}  // namespace
}  // namespace vek::support
