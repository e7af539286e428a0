#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "addin/ops/sketch/create.h"
#include "addin/ops/sketch/point_array.h"

namespace vek::sketch {
namespace {

using Pairs = std::vector<std::pair<double, double>>;

struct PointArrayCase {
  const char* what;
  const wchar_t* text;
  bool is_read;
  Pairs points;
};

TEST(PointArray, ReadsPairsAndObjectsAndRefusesWhatIsNeither) {
  const PointArrayCase cases[] = {
      {"pairs", L"[[0,0],[10, -2.5]]", true, {{0, 0}, {10, -2.5}}},
      {"objects in any order of keys", L"[{\"y\":2,\"x\":1}]", true, {{1, 2}}},
      {"both mixed", L"[[1,2],{\"x\":3,\"y\":4}]", true, {{1, 2}, {3, 4}}},
      {"a third number is ignored", L"[[1,2,3]]", true, {{1, 2}}},
      {"quoted numbers in objects", L"[{\"x\":\"1\",\"y\":\"2\"}]", true, {{1, 2}}},
      {"no number is zero", L"[[a,2]]", true, {{0, 2}}},
      {"an object without y fails the whole", L"[[1,2],{\"x\":3}]", false, {{1, 2}}},
      {"one number fails the whole", L"[[1,2],[3]]", false, {{1, 2}}},
      {"an empty pair fails", L"[[]]", false, {}},
      {"no element", L"[]", false, {}},
      {"no array", L"", false, {}},
      {"bare numbers are no elements", L"[1,2,3,4]", false, {}},
      {"an element that never closes is none", L"[[1,2],[3,4", true, {{1, 2}}},
      {"a stray closing bracket", L"]]}[[1,2]]", false, {}},
      {"brackets in strings count", L"[{\"note\":\"]\",\"x\":1,\"y\":2}]", false, {}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    std::vector<PlanePoint> points{{99, 99}};
    EXPECT_EQ(ParsePointArray(each.text, points), each.is_read);
    ASSERT_EQ(points.size(), each.points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      EXPECT_EQ(points[i].x, each.points[i].first);
      EXPECT_EQ(points[i].y, each.points[i].second);
    }
  }
}

struct NameCase {
  const char* what;
  const wchar_t* arguments;
  const wchar_t* expected;
};

TEST(AddNameToArgs, PutsTheNameInFrontUnlessItIsThere) {
  const NameCase cases[] = {
      {"no name", LR"({"plane":"XY"})", LR"({"name":"S","plane":"XY"})"},
      {"the same name", LR"({"plane":"XY","name":"S"} )", LR"({"plane":"XY","name":"S"} )"},
      {"an empty name stays behind the new one", LR"({"name":""})", LR"({"name":"S","name":""})"},
      {"blanks around", LR"(  {"plane":"XY"}  )", LR"({"name":"S","plane":"XY"})"},
      {"an empty object", L"{}", LR"({"name":"S"})"},
      {"nothing", L"  ", LR"({"name":"S"})"},
      {"no object", L"5", L"5"},
      {"no object, with its blanks", L" [1] ", L" [1] "},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    EXPECT_EQ(AddNameToArgs(each.arguments, L"S"), each.expected);
  }
  EXPECT_EQ(AddNameToArgs(L"{}", L"a\"b"), LR"({"name":"a\"b"})");
}

TEST(EntityLabels, CountTheEntitiesOfEachLetter) {
  SketchSession session;
  session.entities = {{L'P', 1}, {L'L', 2}, {L'L', 3}, {L'A', 4}, {L'L', 5}};
  EXPECT_EQ(EntityLabelsFrom(session, 0), L"P:1;L:1;L:2;A:1;L:3");
  EXPECT_EQ(EntityLabelsFrom(session, 3), L"A:1;L:3");
  EXPECT_EQ(EntityLabelsFrom(session, 5), L"");
}

}  // namespace
}  // namespace vek::sketch
