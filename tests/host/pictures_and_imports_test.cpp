// Windows as pictures, and STEP files as models.
#include <ProIntf.h>
#include <ProIntfimport.h>
#include <ProRaster.h>
#include <ProView.h>
#include <ProWindows.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "bench/host/features/component.h"
#include "bench/host/model/extent.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"
#include "tests/host/feature_ground.h"

namespace bench {
namespace {

using support::MdlNameBuffer;
using support::PathBuffer;
using testing::ElementsAre;
using testing::StartsWith;

class OutsideTest : public support::FeatureTest {
 protected:
  void SetUp() override {
    FeatureTest::SetUp();
    if (!HasFatalFailure()) Extrude(*part_, Plate(), {});
  }
  std::string Bytes(const std::wstring& file) {
    std::ifstream stream(std::filesystem::path(PathOf(file)), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
};

class PicturesTest : public OutsideTest {
 protected:
  void SetUp() override {
    OutsideTest::SetUp();
    MdlNameBuffer name(part_->name);
    ASSERT_EQ(ProObjectwindowMdlnameCreate(name, PRO_PART, &window_), PRO_TK_NO_ERROR);
  }
  ProError Write(const std::wstring& path, ProRasterType type, double width, double height, int dots = 100) {
    PathBuffer buffer(path);
    return ProRasterFileWrite(window_, PRORASTERDEPTH_24, width, height, static_cast<ProRasterDPI>(dots),
                              type, buffer);
  }
  int window_ = -1;
};

TEST_F(PicturesTest, AViewComesBackAsItWasSetAndTakesRotationsOnly) {
  ProMatrix first{}, read{};
  ASSERT_EQ(ProViewMatrixGet(part_, nullptr, first), PRO_TK_NO_ERROR);
  // Looking along +y at twice the size, shifted: x to the right, z up.
  ProMatrix from_front{{2, 0, 0, 0}, {0, 0, -2, 0}, {0, 2, 0, 0}, {5, 6, 7, 1}};
  EXPECT_EQ(ProViewMatrixSet(part_, nullptr, from_front), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProViewMatrixGet(part_, nullptr, read), PRO_TK_NO_ERROR);
  EXPECT_EQ(std::memcmp(read, from_front, sizeof read), 0);
  EXPECT_EQ(ProViewMatrixSet(part_, nullptr, first), PRO_TK_NO_ERROR) << "the start is a rotation";
  ProMatrix refused[] = {{},
                         {{1, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}},
                         {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, -1, 0}, {0, 0, 0, 1}},
                         {{1, 0, 0, 0}, {0.1, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}},
                         {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {std::nan(""), 0, 0, 1}}};
  for (ProMatrix& matrix : refused) EXPECT_EQ(ProViewMatrixSet(part_, nullptr, matrix), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(ProViewMatrixGet(part_, nullptr, read), PRO_TK_NO_ERROR);
  EXPECT_EQ(std::memcmp(read, first, sizeof read), 0);
}

TEST_F(PicturesTest, APictureHasExactlyTheAskedPixels) {
  // 1.204 in × 100 is 120.4, 0.806 in × 100 is 80.6: 120 × 81 pixels, told at bytes 18 and 22 of a bitmap.
  ASSERT_EQ(Write(PathOf(L"a.bmp"), PRORASTERTYPE_BMP, 1.204, 0.806), PRO_TK_NO_ERROR);
  const std::string bitmap = Bytes(L"a.bmp");
  ASSERT_GT(bitmap.size(), 54u);
  EXPECT_THAT(bitmap, StartsWith("BM"));
  std::int32_t size[2];
  std::memcpy(size, bitmap.data() + 18, sizeof size);
  EXPECT_THAT(size, ElementsAre(120, 81));
  EXPECT_EQ(Write(PathOf(L"a.bmp"), PRORASTERTYPE_TIFF, 0.01, 0.01), PRO_TK_NO_ERROR);
  EXPECT_THAT(Bytes(L"a.bmp"), testing::AnyOf(StartsWith("II"), StartsWith("MM")));
  EXPECT_EQ(Write(PathOf(L"a.bmp"), PRORASTERTYPE_JPEG, 1, 1), PRO_TK_NO_ERROR);
  EXPECT_THAT(Bytes(L"a.bmp"), StartsWith("\xFF\xD8\xFF"));
}

TEST_F(PicturesTest, WhatCantBeDrawnOrWrittenIsAStatusAndNoFile) {
  const std::wstring here = PathOf(L"a.bmp");
  const struct {
    const char* what;
    ProError status;
    double height = 1;
    int dots = 100;
    std::wstring path;
    int window = -1;  // the current one, the base window
  } cases[] = {
      {"not half a pixel", PRO_TK_BAD_INPUTS, 0.004, 100, here, window_},
      {"no number", PRO_TK_BAD_INPUTS, std::nan(""), 100, here, window_},
      {"more than 10,000 pixels", PRO_TK_BAD_INPUTS, 101, 100, here, window_},
      {"an odd resolution", PRO_TK_BAD_INPUTS, 1, 99, here, window_},
      {"no directory", PRO_TK_INVALID_DIR, 1, 100, PathOf(L"nowhere\\a.bmp"), window_},
      {"a directory in its place", PRO_TK_CANT_WRITE, 1, 100, directory(), window_},
      {"no model", PRO_TK_BAD_CONTEXT, 1, 100, here},
      {"no window", PRO_TK_BAD_INPUTS, 1, 100, here, 99},
  };
  for (const auto& each : cases) {
    window_ = each.window;
    EXPECT_EQ(Write(each.path, PRORASTERTYPE_BMP, 1, each.height, each.dots), each.status) << each.what;
  }
  EXPECT_THAT(FilesHere(), ElementsAre());
}

class ImportsTest : public OutsideTest {
 protected:
  void Export(Model& model, const std::wstring& name) {
    PathBuffer path(PathOf(name));
    ASSERT_EQ(
        ProIntf3DFileWriteWithDefaultProfile(SolidHandle(model), static_cast<ProIntf3DFileType>(1), path),
        PRO_TK_NO_ERROR);
  }
  ProMdlType TypeOf(const std::wstring& file, ProError expected = PRO_TK_NO_ERROR) {
    PathBuffer path(PathOf(file));
    ProMdlType type = PRO_MDL_UNUSED;
    EXPECT_EQ(ProIntfimportSourceTypeGet(path, PRO_INTF_IMPORT_STEP, &type), expected);
    return type;
  }
  ProError Import(const std::wstring& file, ProMdlType type, const std::wstring& name, Model*& model) {
    PathBuffer path(PathOf(file));
    MdlNameBuffer buffer(name);
    ProMdl made = nullptr;
    const ProError status = ProIntfimportModelWithOptionsMdlnameCreate(
        path, nullptr, PRO_INTF_IMPORT_STEP, type, PRO_IMPORTREP_MASTER, buffer, nullptr, nullptr, &made);
    model = host().session.Find(made);
    return status;
  }
  std::vector<std::wstring> Names(ProMdlType type) {
    std::vector<std::wstring> names;
    for (const Model* model : host().session.OfType(type)) names.push_back(model->name);
    return names;
  }
};

TEST_F(ImportsTest, APartComesAsOneFeatureWhoseFacesKeepTheirIdsThroughItsFile) {
  Export(*part_, L"plate");
  EXPECT_EQ(TypeOf(L"plate.stp"), PRO_MDL_PART);
  Model* model = nullptr;
  ASSERT_EQ(Import(L"plate.stp", PRO_MDL_PART, L"taken_in", model), PRO_TK_NO_ERROR);
  EXPECT_EQ(model->name, L"TAKEN_IN");
  EXPECT_EQ(model->features.back()->type, 932);
  EXPECT_EQ(model->features.size(), 5u) << "four of the template and the import";
  EXPECT_NEAR(model->topology.mass->volume, 8000, 8000e-6);
  const auto ids = model->ids_of_keys;
  EXPECT_GE(ids.size(), 6u + 12u) << "six faces, twelve edges";
  ASSERT_EQ(ProMdlSave(model), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(model), PRO_TK_NO_ERROR);
  ASSERT_EQ(RetrieveModel(L"TAKEN_IN", PRO_MDL_PART, model), PRO_TK_NO_ERROR);
  EXPECT_NEAR(model->topology.mass->volume, 8000, 8000e-6);
  EXPECT_EQ(model->ids_of_keys, ids);
}

TEST_F(ImportsTest, AnAssemblyComesWithItsPartsUnderTheirNamesInTheirPlaces) {
  Model& frame = NewAssembly(L"FRAME");
  AssembleComponent(frame, *part_, kNoMove);
  AssembleComponent(frame, *part_, Shifted(kNoMove, {100, 50, 70}));
  Export(frame, L"frame");
  EXPECT_EQ(TypeOf(L"frame.stp"), PRO_MDL_ASSEMBLY);
  Model* model = nullptr;
  EXPECT_EQ(Import(L"frame.stp", PRO_MDL_PART, L"copy", model), PRO_TK_INVALID_TYPE);
  EXPECT_EQ(Import(L"frame.stp", PRO_MDL_ASSEMBLY, L"frame", model), PRO_TK_E_FOUND);
  EXPECT_EQ(Import(L"frame.stp", PRO_MDL_UNUSED, L"FRAME", model), PRO_TK_E_FOUND);
  ASSERT_EQ(Import(L"frame.stp", PRO_MDL_ASSEMBLY, L"copy", model), PRO_TK_NO_ERROR);
  // One part that is placed twice, numbered since the one that it came of is in session.
  EXPECT_THAT(Names(PRO_MDL_PART), ElementsAre(part_->name, part_->name + L"_1"));
  const Extent extent = ExtentOf(*model);
  EXPECT_NEAR(extent.weight->volume, 2 * 8000, 16000e-6);
  EXPECT_LT(Length(extent.outline->low), 1e-5);
  EXPECT_LT(Length(extent.outline->high - Vector3{140, 70, 80}), 1e-5);
}

TEST_F(ImportsTest, ProductsGetNamesThatModelsCanBear) {
  // 31 characters at most, of which the last would be a blank here, and the second one's end makes room.
  Model& frame = NewAssembly(L"FRAME");
  for (Model* model : {part_, &NewPart(L"OTHER")}) AssembleComponent(frame, *model, kNoMove);
  Export(frame, L"frame");
  std::string text = Bytes(L"frame.stp");
  for (const std::string& product : {ToUtf8(part_->name), std::string("OTHER")})
    for (std::size_t at; (at = text.find("'" + product + "'")) != std::string::npos;)
      text.replace(at + 1, product.size(), "flange/a.b of a very long name indeed");
  WriteFile(L"named.stp", text);
  Model* model = nullptr;
  ASSERT_EQ(Import(L"named.stp", PRO_MDL_UNUSED, L"named", model), PRO_TK_NO_ERROR);
  EXPECT_THAT(Names(PRO_MDL_PART), ElementsAre(part_->name, L"OTHER", L"FLANGE_A_B OF A VERY LONG NAME",
                                               L"FLANGE_A_B OF A VERY LONG NAM_1"));
}

TEST_F(ImportsTest, WhatCantBeReadLeavesNothingInSession) {
  Model* model = nullptr;
  Export(*part_, L"plate");
  WriteFile(L"broken.stp", Bytes(L"plate.stp").substr(0, 900));
  WriteFile(L"empty.stp", "");
  EXPECT_EQ(TypeOf(L"missing.stp", PRO_TK_E_NOT_FOUND), PRO_MDL_UNUSED);
  EXPECT_EQ(Import(L"missing.stp", PRO_MDL_PART, L"X", model), PRO_TK_E_NOT_FOUND);
  for (const wchar_t* file : {L"broken.stp", L"empty.stp"}) {
    EXPECT_EQ(TypeOf(file, PRO_TK_INVALID_FILE), PRO_MDL_UNUSED);
    EXPECT_EQ(Import(file, PRO_MDL_UNUSED, L"X", model), PRO_TK_INVALID_FILE);
  }
  EXPECT_EQ(Import(L"plate.stp", PRO_MDL_PART, L"a.b", model), PRO_TK_INVALID_NAME);
  EXPECT_EQ(Import(L"plate.stp", PRO_MDL_DRAWING, L"X", model), PRO_TK_BAD_INPUTS);
  EXPECT_EQ(model, nullptr);
  EXPECT_THAT(Names(PRO_MDL_PART), ElementsAre(part_->name));
  // Nobody can make such a feature of a tree alone.
  support::Tree tree;
  tree.Integer(tree.Root(), 387, 932);
  EXPECT_NE(Create(*part_, tree.Root(), 1).status, PRO_TK_NO_ERROR);
}

}  // namespace
}  // namespace bench
