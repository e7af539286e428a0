// The mirror of geometry: what is mirrored, the attempt at a solid, failures.
#include <gmock/gmock.h>

#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/operations/feature_test.h"
#include "tests/support/captured_log.h"

namespace vek::support {
namespace {

using testing::ElementsAre;

constexpr const wchar_t* kMirror = L"api_pattern_mirror";

// A block of 20 by 10 by 5, 1000 mm³, with a corner in the origin. It is the feature "Extrude 1".
class MirrorOperation : public FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    ASSERT_EQ(Block(20, 10, 5), L"Extrude 1");
    ClearHistory();
  }

  static std::wstring Message(const std::wstring& name, const std::wstring& plane) {
    return Format(
        L"Geometry mirror '%s' created from 1 feature(s) across %s (Toolkit mirrors feature "
        L"surfaces/geometry, not UI feature-mirror).",
        name, plane);
  }
};

TEST_F(MirrorOperation, ABossIsDoubledAcrossThePlaneThatIsMeant) {
  const struct {
    const wchar_t* arguments;
    const wchar_t* plane;
    int axis;  // normal to the plane
  } cases[] = {{L"", L"TOP", 1},
               {LR"(,"mirror_plane":"")", L"TOP", 1},
               {LR"(,"mirror_plane":"y")", L"FRONT", 2},
               {LR"(,"mirror_plane":"YZ")", L"RIGHT", 0}};
  for (const auto& [arguments, plane, axis] : cases) {
    SCOPED_TRACE(EncodeUtf8(plane) + EncodeUtf8(arguments));
    ClearCapturedLog();
    const auto result = Run(kMirror, Format(LR"({"feature_names":["Extrude 1"]%s})", arguments));
    // The mirror is "Mirror 1" and its solid the next.
    EXPECT_EQ(CountCaptured(L"CreoMcpPattern: " + result.message), 1);
    ExpectCreated(result, L"Mirror_1", Message(L"Mirror_1", plane));
    EXPECT_NE(FeatureNamed(L"Mirror 1"), nullptr);
    // The block touches the plane: the two are one body, twice as large.
    bench::Box box{{0, 0, 0}, {20, 10, 5}};
    box.low[axis] = -box.high[axis];
    EXPECT_NEAR(Volume(), 2 * 1000, 2000 * 1e-6);
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(Outline().low[i], box.low[i], 1e-6);
      EXPECT_NEAR(Outline().high[i], box.high[i], 1e-6);
    }
    Delete(L"Mirror_1");
    Delete(L"Mirror 1");
  }
}

TEST_F(MirrorOperation, TheTreesAreThoseOfAMirrorAndOfASolidFromItsQuilt) {
  Create(kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":"RIGHT"})");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Mirror 1")), "386(387=950 3182=1 3161=@6 3162=@1 3163=0)");
  EXPECT_EQ(TreeOf(FeatureNamed(L"Mirror_1")), "386(387=917 388=512 3023=@1)");
  EXPECT_EQ(CountCaptured(Format(L"Feature Create [mirror]: status=0 errCount=0 featId=%d",
                                 FeatureNamed(L"Mirror 1")->id)),
            1);
  EXPECT_EQ(CountCaptured(Format(L"Feature Create [solidify]: status=0 errCount=0 featId=%d",
                                 FeatureNamed(L"Mirror_1")->id)),
            1);
}

TEST_F(MirrorOperation, EachFeatureIsAskedForItsGeometryKindByKindAndEachItemIsTakenOnce) {
  const auto mark = host().journal.Mark();
  const auto result = Run(kMirror, LR"({"feature_names":["Extrude 1","","extrude 1"],"mirror_plane":"X"})");
  EXPECT_THAT(EncodeUtf8(result.message), testing::HasSubstr("created from 2 feature(s) across RIGHT"));
  // A block's six faces, the plane, and the quilt for the solid.
  EXPECT_EQ(CallsSince(mark, {"ProReferenceAlloc"}).size(), 6u + 1u + 1u);
  // Six kinds of each, and the mirror's quilts.
  EXPECT_EQ(CallsSince(mark, {"ProFeatureGeomitemVisit"}).size(), 2 * 6u + 1u);
}

TEST_F(MirrorOperation, ASolidThatCannotBeMadeIsNoFailure) {
  // The quilt's visit, the solid's tree and its creation, behind those of the mirror.
  const std::pair<const char*, int> cases[] = {
      {"ProFeatureGeomitemVisit", 7}, {"ProElementAlloc", 7}, {"ProFeatureWithoptionsCreate", 2}};
  for (const auto& [call, occurrence] : cases) {
    SCOPED_TRACE(call);
    faults().Fail(call, PRO_TK_BAD_CONTEXT, occurrence);
    const auto result = Run(kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":"RIGHT"})");
    ExpectCreated(result, L"Mirror 1", Message(L"Mirror 1", L"RIGHT"));
    EXPECT_EQ(FeatureNamed(L"Mirror_1"), nullptr);
    EXPECT_NEAR(Volume(), 1000, 1e-3);
    Delete(L"Mirror 1");
  }
  EXPECT_EQ(CountCaptured(L"Feature Create [solidify]: status=-8 errCount=0 featId=0"), 1);
}

TEST_F(MirrorOperation, AnAxisIsMirroredWithoutASolid) {
  Rectangle(L"HOLE", L"XY", 2, 2, 4, 4);
  Create(L"api_feature_extrude", LR"({"sketch_name":"HOLE","distance_mm":5,"operation":"cut"})");
  Create(L"api_pattern_circular", LR"({"feature_names":["Extrude_1"],"axis":"Y","count":2,"angle_deg":1})");
  const auto mark = host().journal.Mark();
  const double volume = Volume();
  EXPECT_EQ(Create(kMirror, LR"({"feature_names":["VEK_AXIS_Y"],"mirror_plane":"RIGHT"})"), L"Mirror 1");
  EXPECT_THAT(CallsSince(mark, {"ProFeatureWithoptionsCreate"}), ElementsAre("ProFeatureWithoptionsCreate"));
  EXPECT_NEAR(Volume(), volume, 1e-6);
}

TEST_F(MirrorOperation, WhatCannotBeMirroredIsRefused) {
  const wchar_t* const none = L"'feature_names' must contain at least one feature.";
  const wchar_t* const nothing =
      L"No mirrorable geometry found on the named feature(s). Creo Toolkit cannot mirror features the way "
      L"the "
      L"UI does; it mirrors surfaces/quilts/curves/axes owned by those features.";
  Rectangle(L"SPARE", L"XY", 40, 0, 50, 10);
  Create(L"api_feature_extrude", LR"({"sketch_name":"SPARE","distance_mm":5})");
  Succeed(L"api_feature_suppress", LR"({"feature_name":"Extrude_1"})");
  ExpectRefusals({{kMirror, LR"({})", none},
                  {kMirror, LR"({"feature_names":[""],"mirror_plane":"odd"})", none},
                  {kMirror, LR"({"feature_names":["odd"],"mirror_plane":"odd"})",
                   L"Feature 'odd' not found. Call api_feature_list and use an exact name."},
                  {kMirror, LR"({"feature_names":["Extrude 1"],"mirror_plane":" odd"})",
                   L"Could not resolve mirror_plane ' odd' to datum plane 'ODD'."},
                  // What is suppressed has no geometry that counts.
                  {kMirror, LR"({"feature_names":["Extrude_1"]})", nothing}});
}

}  // namespace
}  // namespace vek::support
