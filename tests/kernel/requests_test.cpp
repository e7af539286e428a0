#include <gtest/gtest.h>
#include <Standard_Failure.hxx>

#include <csignal>
#include <stdexcept>

#include "bench/kernel/feature.h"
#include "bench/kernel/guard.h"
#include "bench/kernel/regenerate.h"
#include "bench/kernel/requests.h"
#include "tests/kernel/recipes.h"

namespace bench::kernel::testing {
namespace {

json Ask(const std::string& line) {
  Requests requests;
  const std::string answer = requests.Answer(line);
  EXPECT_EQ(answer.find('\n'), std::string::npos);
  return json::parse(answer);
}

std::string Complaint(const json& recipe) {
  return Ask(json{{"id", 3}, {"do", "regenerate"}, {"recipes", json::array({recipe})}}.dump())
      .value("error", "");
}

TEST(Requests, ThatNestBeyondAllReasonAreErrors) {
  const auto nested = [](std::size_t levels) {
    return R"({"do":"regenerate","recipes":[],"id":)" + std::string(levels, '[') + std::string(levels, ']') +
           "}";
  };
  EXPECT_TRUE(Ask(nested(63)).contains("ok"));
  for (const std::size_t levels : {64, 1'000'000})
    EXPECT_EQ(Ask(nested(levels)).value("error", ""), "the line is nested too deeply");
}

TEST(Requests, ThatMakeNoSenseAreErrors) {
  const std::pair<const char*, const char*> cases[] = {
      {"{\"id\": 1, \"do\": \"regenerate\", \"recipes\": [1e999]}", "the line is not JSON"},
      {"\xff\xfe", "the line is not JSON"},
      {"{\"id\": 1, \"do\": \"dance\"}", "the request: unknown task 'dance'"},
      {"{\"id\": 1, \"do\": \"regenerate\", \"recipes\": {}}", "the request: 'recipes' must be an array"},
      {"{\"id\": 1, \"do\": \"export\", \"format\": \"sat\", \"recipes\": []}",
       "the request: unknown format 'sat'"},
      {"{\"id\": 1, \"do\": \"export\", \"format\": \"stl\", \"recipes\": []}",
       "the request: 'models' is missing"},
      {"{\"id\": 1, \"do\": \"extremes\", \"face\": \"1:end\", \"direction\": [0, 0, 0], \"recipes\": []}",
       "the request: 'direction' must have a length"},
  };
  for (const auto& [line, error] : cases) {
    const json answer = Ask(line);
    EXPECT_EQ(answer.value("error", ""), error) << line;
    EXPECT_FALSE(answer.contains("ok")) << line;
  }
}

TEST(Recipes, ThatMakeNoSenseAreErrors) {
  struct Case {
    const char* path;  // what to replace in a good recipe
    json value;        // by what; discarded to leave it out
    const char* error;
  };
  const json none = json(json::value_t::discarded);
  const Case cases[] = {
      {"/plane/x", json::array({1, 0}), "recipe 1, 'plane': 'x' must be [x, y, z]"},
      {"/plane/x", json::array({2, 0, 0}),
       "recipe 1, 'plane': 'x' and 'y' must be unit vectors at a right angle"},
      {"/plane/origin", json::array({0, nullptr, 0}), "recipe 1, 'plane': 'origin' must be a number"},
      {"/entities/1/id", 1, "recipe 1, entity 2: its id is taken"},
      {"/entities/1/type", "blob", "recipe 1, entity 2: unknown entity type 'blob'"},
      {"/extent/mode", "far", "recipe 1, 'extent': unknown mode 'far'"},
      {"/extent/depth", none, "recipe 1, 'extent': 'depth' is missing"},
  };
  for (const Case& one : cases) {
    json recipe = Extrude(1, Front(), Rectangle(1, 0, 0, 2, 3));
    const json::json_pointer path(one.path);
    if (one.value.is_discarded()) {
      recipe[path.parent_pointer()].erase(path.back());
    } else {
      recipe[path] = one.value;
    }
    EXPECT_EQ(Complaint(recipe), one.error) << one.path;
  }
  // 2^32 + 1 is not the 1 that is left of it in an integer.
  EXPECT_EQ(
      Complaint({{"feature", 2}, {"kind", "pattern"}, {"members", {4294967297}}, {"motions", json::array()}}),
      "recipe 1: each of 'members' is out of range");
}

TEST(Guarded, TurnsEveryFailureIntoAnError) {
  EXPECT_EQ(Guarded([] {}).error, "");
  EXPECT_EQ(Guarded([] { throw std::runtime_error("bad"); }).error, "bad");
  EXPECT_EQ(Guarded([] { throw Standard_Failure("bent"); }).error,
            "the geometry failed: Standard_Failure: bent");
  EXPECT_EQ(Guarded([] { throw 5; }).error, "the geometry failed for an unknown reason");
  const Outcome crash = Guarded([] { std::raise(SIGSEGV); });
  EXPECT_TRUE(crash.crashed);
  EXPECT_NE(crash.error, "");
  EXPECT_FALSE(Guarded([] {}).crashed);
}

Recipes Tower(int floors) {
  Recipes recipes;
  for (int i = 0; i < floors; ++i)
    recipes.push_back(Extrude(i + 1, FrontAt(10 * i), Rectangle(1, i, 0, 100, 5)));
  return recipes;
}

// How many features a request costs.
int Cost(Regenerator& regenerator, const Recipes& recipes) {
  const int before = regenerator.features_built();
  regenerator.Describe(ReadRecipes(json(recipes)));
  return regenerator.features_built() - before;
}

TEST(Cache, BuildsOnlyWhatIsNew) {
  Regenerator regenerator;
  EXPECT_EQ(Cost(regenerator, Tower(5)), 5);
  EXPECT_EQ(Cost(regenerator, Tower(5)), 0);
  EXPECT_EQ(Cost(regenerator, Tower(6)), 1);
  EXPECT_EQ(Cost(regenerator, Tower(3)), 0);
}

TEST(Cache, BuildsAnewFromTheFirstFeatureThatChanged) {
  Regenerator regenerator;
  Recipes recipes = Tower(5);
  Cost(regenerator, recipes);
  recipes[3]["extent"]["depth"] = 11;
  EXPECT_EQ(Cost(regenerator, recipes), 2);
  // The former chain is still there.
  EXPECT_EQ(Cost(regenerator, Tower(5)), 0);
}

TEST(Cache, RemembersRefusalsUntilItIsToldToForget) {
  Regenerator regenerator;
  const Recipes recipes = {Extrude(1, Front(), {Circle(1, 0, 0, -1)})};
  EXPECT_EQ(Cost(regenerator, recipes), 1);
  EXPECT_EQ(Cost(regenerator, recipes), 0);
  regenerator.Forget();
  EXPECT_EQ(Cost(regenerator, recipes), 1);
}

}  // namespace
}  // namespace bench::kernel::testing
