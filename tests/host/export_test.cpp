#include <ProIntf.h>
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/host/feature_ground.h"

namespace bench {
namespace {

constexpr int kStep = 1, kAcis = 7;
constexpr auto kStl = static_cast<ProIntfSliceFileType>(12);

class ExportTest : public support::FeatureTest {
 protected:
  ProError Write(int type, const std::wstring& path) {
    support::PathBuffer buffer(path);
    return ProIntf3DFileWriteWithDefaultProfile(Solid(), static_cast<ProIntf3DFileType>(type), buffer);
  }
};

TEST_F(ExportTest, RefusedFormatsAndPathsThatCantBeWrittenLeaveNothingBehind) {
  ASSERT_EQ(Extrude(*part_, Plate(), {}).status, PRO_TK_NO_ERROR);
  EXPECT_EQ(Write(kAcis, PathOf(L"plate")), PRO_TK_NOT_IMPLEMENTED);
  EXPECT_EQ(Write(99, PathOf(L"plate")), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(Write(kStep, PathOf(L"nowhere\\plate")), PRO_TK_INVALID_DIR);
  EXPECT_EQ(Write(kStep, PathOf(L"a?b")), PRO_TK_CANT_WRITE);
  EXPECT_TRUE(Complained("can't be written"));
  EXPECT_EQ(Write(kStep, L""), PRO_TK_BAD_INPUTS);
  std::filesystem::create_directory(PathOf(L"taken.stp"));
  EXPECT_EQ(Write(kStep, PathOf(L"taken")), PRO_TK_CANT_WRITE);
  support::PathBuffer stl(PathOf(L"plate.stl"));
  double quality[2] = {-1, -1};
  ProMatrix larger = {{2, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
  EXPECT_EQ(ProIntfSliceFileExport(Solid(), stl, kStl, quality, larger, 0), PRO_TK_NOT_IMPLEMENTED);
  EXPECT_THAT(FilesHere(), testing::ElementsAre(L"taken.stp"));
}

}  // namespace
}  // namespace bench
