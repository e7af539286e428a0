#include <ProIntf.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "bench/host/kernel_link/base64.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr auto kStep = static_cast<ProIntf3DFileType>(1);
constexpr auto kIges = static_cast<ProIntf3DFileType>(4);
constexpr auto kAcis = static_cast<ProIntf3DFileType>(7);
constexpr auto kStl = static_cast<ProIntfSliceFileType>(12);

class ExportTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    ASSERT_EQ(Extrude(*part_, Plate(), {}).status, PRO_TK_NO_ERROR);
  }
  ProError Write(Model& model, ProIntf3DFileType type, const std::wstring& path) {
    support::PathBuffer buffer(path);
    return ProIntf3DFileWriteWithDefaultProfile(SolidHandle(model), type, buffer);
  }
  ProError WriteStl(Model& model, const std::wstring& path, double scale = 1) {
    support::PathBuffer buffer(path);
    double quality[2] = {-1, -1};
    ProMatrix transform = {{scale, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    return ProIntfSliceFileExport(SolidHandle(model), buffer, kStl, quality, transform, 0);
  }
  std::string Bytes(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(PathOf(file)), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};

TEST_F(ExportTest, StepAndIgesGetTheirExtensionsFromTheWriterAndReplaceWhatStoodThere) {
  WriteFile(L"plate.stp", "what stood there");
  EXPECT_EQ(Write(*part_, kStep, PathOf(L"plate")), PRO_TK_NO_ERROR);
  EXPECT_EQ(Write(*part_, kIges, PathOf(L"plate.v2")), PRO_TK_NO_ERROR);
  EXPECT_THAT(FilesHere(), ElementsAre(L"plate.stp", L"plate.v2.igs"));
  const std::string step = Bytes(L"plate.stp");
  EXPECT_THAT(step, StartsWith("ISO-10303-21;"));
  EXPECT_THAT(step, HasSubstr("PART"));
  EXPECT_THAT(step, HasSubstr("END-ISO-10303-21;"));
  // The first section of an IGES file is marked in column 73.
  EXPECT_EQ(Bytes(L"plate.v2.igs").at(72), 'S');
  EXPECT_EQ(Write(NewAssembly(L"FRAME"), kStep, PathOf(L"frame")), PRO_TK_NO_ERROR);
  EXPECT_THAT(Bytes(L"frame.stp"), HasSubstr("FRAME"));
}

TEST_F(ExportTest, StlIsBinaryAndKeepsThePathsExtension) {
  EXPECT_EQ(WriteStl(*part_, PathOf(L"plate.STL")), PRO_TK_NO_ERROR);
  EXPECT_EQ(WriteStl(*part_, PathOf(L"other")), PRO_TK_NO_ERROR);
  EXPECT_THAT(FilesHere(), ElementsAre(L"other.stl", L"plate.STL"));
  // 80 bytes of header, the count, 50 bytes a facet; a box is 6 rectangles of 2 facets.
  const std::string bytes = Bytes(L"plate.STL");
  ASSERT_EQ(bytes.size(), 80u + 4u + 12u * 50u);
  std::uint32_t facets = 0;
  std::memcpy(&facets, bytes.data() + 80, sizeof facets);
  EXPECT_EQ(facets, 12u);
}

TEST_F(ExportTest, RefusedFormatsAndPathsThatCantBeWrittenLeaveNothingBehind) {
  EXPECT_EQ(Write(*part_, kAcis, PathOf(L"plate")), PRO_TK_NOT_IMPLEMENTED);
  EXPECT_EQ(Write(*part_, static_cast<ProIntf3DFileType>(99), PathOf(L"plate")), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(WriteStl(*part_, PathOf(L"plate.stl"), 2), PRO_TK_NOT_IMPLEMENTED)
      << "another place than the model's";
  EXPECT_EQ(Write(*part_, kStep, PathOf(L"nowhere\\plate")), PRO_TK_INVALID_DIR);
  EXPECT_EQ(Write(*part_, kStep, PathOf(L"a?b")), PRO_TK_CANT_WRITE);
  EXPECT_TRUE(Complained("can't be written"));
  EXPECT_EQ(Write(*part_, kStep, L""), PRO_TK_BAD_INPUTS);
  std::filesystem::create_directory(PathOf(L"taken.stp"));
  EXPECT_EQ(Write(*part_, kStep, PathOf(L"taken")), PRO_TK_CANT_WRITE);
  EXPECT_THAT(FilesHere(), ElementsAre(L"taken.stp"));
}

TEST(Base64Test, GoesBothWaysAtEveryLengthOfPaddingAndRefusesWhatIsNone) {
  for (const auto& [text, bytes] : {std::pair<std::string, std::string>{"", ""},
                                    {"TQ==", "M"},
                                    {"TWE=", "Ma"},
                                    {"+/8A", {"\xFB\xFF\0", 3}}}) {
    EXPECT_EQ(DecodeBase64(text), bytes);
    EXPECT_EQ(EncodeBase64(bytes), text);
  }
  for (const char* text : {"TWF", "TW Fu", "TW-u", "T===", "=TWF"}) EXPECT_FALSE(DecodeBase64(text)) << text;
}

}  // namespace
}  // namespace bench
