// Files that are cut short or hold other bits than were written: a message, no crash and no hang, and nothing
// in session but what was there, unless the file can still be read.
#include <windows.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>

#include "addin/platform/files.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/storage/model_json.h"
#include "bench/host/storage/model_store.h"
#include "tests/faults/fault_runs.h"
#include "tests/support/operation_fixture.h"
#include "tests/support/scoped_environment.h"

namespace vek::support {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kLongestStretch = 512;

// The same numbers everywhere, which the library's distributions don't promise.
class Dice {
 public:
  std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

 private:
  std::mt19937 random_{20'260'101};
};

void TurnBit(std::string& text, Dice& dice) {
  text[dice.Below(text.size())] ^= static_cast<char>(1u << dice.Below(8));
}

void ChangeDigit(std::string& text, Dice& dice) {
  const std::size_t at = text.find_first_of(kDigits, dice.Below(text.size()));
  if (at != std::string::npos) text[at] = kDigits[dice.Below(kDigits.size())];
}

std::pair<std::size_t, std::size_t> SomeLine(const std::string& text, Dice& dice) {
  const std::size_t begin = text.find('\n', dice.Below(text.size()));
  if (begin == std::string::npos) return {0, 0};
  const std::size_t end = std::min(text.find('\n', begin + 1), text.size());
  return {begin, end - begin};
}

void DoubleLine(std::string& text, Dice& dice) {
  const auto [begin, length] = SomeLine(text, dice);
  text.insert(begin, text.substr(begin, length));
}

void DropLine(std::string& text, Dice& dice) {
  const auto [begin, length] = SomeLine(text, dice);
  text.erase(begin, length);
}

void ZeroStretch(std::string& text, Dice& dice) {
  const std::size_t begin = dice.Below(text.size());
  const std::size_t length = std::min(text.size() - begin, 1 + dice.Below(kLongestStretch));
  text.replace(begin, length, length, '\0');
}

// Damaged forms of a file, always the same for the same bytes: cut short at `cuts` lengths from 0 on, and
// `flips` of them in which a bit is turned, a digit is another one, a line is there twice or not at all, or a
// stretch of bytes is zero, by turns.
std::vector<std::string> DamagedForms(const std::string& whole, std::size_t cuts, std::size_t flips) {
  std::vector<std::string> forms;
  for (std::size_t i = 0; i < cuts; ++i) forms.push_back(whole.substr(0, whole.size() * i / cuts));
  constexpr void (*kWays[])(std::string&, Dice&) = {TurnBit, ChangeDigit, DropLine,    ChangeDigit,
                                                    TurnBit, DoubleLine,  ChangeDigit, ZeroStretch};
  Dice dice;
  for (std::size_t i = 0; i < flips; ++i) {
    std::string form = whole;
    kWays[i % std::size(kWays)](form, dice);
    forms.push_back(std::move(form));
  }
  return forms;
}

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void Write(const fs::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

class DamagedFiles : public OperationTest {
 protected:
  void Make(std::initializer_list<Step> steps) {
    for (const Step& step : steps) Succeed(step.operation, Filled(step.arguments, directory()));
  }
  // A block with a bore, a row of bores, a rounded edge and a parameter, an assembly and a drawing of it,
  // each in its file.
  void MakeModels() {
    Make({{L"api_document_new_part", L"{}"},
          {L"api_sketch_create", LR"({"name":"S","plane":"XY"})"},
          {L"api_sketch_rectangle_two_points", LR"({"sketch_name":"S","x1":0,"y1":0,"x2":40,"y2":20})"},
          {L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})"},
          {L"api_sketch_create", LR"({"name":"B","plane":"XY"})"},
          {L"api_sketch_circle_center_radius", LR"({"sketch_name":"B","cx":10,"cy":8,"radius":2})"},
          {L"api_feature_extrude", LR"({"sketch_name":"B","distance_mm":10,"operation":"cut"})"},
          {L"api_pattern_rectangular",
           LR"({"feature_names":["Extrude_1"],"x_direction":"X","x_count":3,"x_spacing_mm":6})"}});
    bench::Parameter& width = Current().parameters.emplace_back();
    width.name = L"WIDTH";
    width.value = 12.0;
    Make({{L"api_document_save_as", LR"({"file_path":"<dir>\\block.prt"})"},
          {L"api_document_new_assembly", L"{}"},
          {L"api_document_save_as", LR"({"file_path":"<dir>\\frame.asm"})"},
          {L"api_assembly_add_component", LR"({"file_path":"block","component_name":"A","grounded":true})"},
          {L"api_assembly_add_component", LR"({"file_path":"block","component_name":"B","x_mm":60})"},
          {L"api_assembly_add_constraint",
           LR"({"type":"distance","offset_mm":5,"occurrence1":"B","occurrence2":"A"})"},
          {L"api_document_save_as", LR"({"file_path":"<dir>\\frame.asm"})"},
          {L"api_document_activate", LR"({"name_or_path":"block"})"},
          {L"api_drawing_create", LR"({"template_path":"a3_drawing"})"},
          {L"api_drawing_add_base_view", L"{}"},
          {L"api_drawing_add_projected_view", LR"({"parent_view_name":"new_view_1"})"},
          {L"api_drawing_add_dimensions", LR"({"view_name":"new_view_1"})"},
          {L"api_document_save_as", LR"({"file_path":"<dir>\\sheet.drw"})"}});
  }

  // What the models in session would be in their files.
  std::vector<std::string> ModelsInSession() {
    std::vector<std::string> texts;
    for (const bench::Model* const model : host().session.All()) texts.push_back(bench::ModelToText(*model));
    return texts;
  }
  // An answer as a client takes it, and a session as it was.
  void ExpectSound(const CreoMcpOperationResult& result) {
    EXPECT_FALSE(result.message.empty());
    EXPECT_EQ(result.message.find(L"' threw"), std::wstring::npos) << EncodeUtf8(result.message);
    EXPECT_TRUE(nlohmann::json::accept(EncodeUtf8(result.dataJson))) << EncodeUtf8(result.dataJson);
    EXPECT_TRUE(host().ledger.Violations().empty());
    EXPECT_TRUE(host().ledger.Outstanding().empty());
  }
  // What a client does with a model whose file could still be read.
  void Use(bench::Model& model) {
    for (const wchar_t* const operation :
         {L"api_document_info", L"api_feature_list", L"api_document_rebuild", L"api_analysis_bounding_box",
          L"api_parameters_list", L"api_assembly_list_components", L"api_drawing_list_views"})
      ExpectSound(Run(operation));
    EXPECT_EQ(bench::SaveModel(model), PRO_TK_NO_ERROR);
  }
  // Opens damaged forms of a file beside it, each under a name of its own; tells how many could be read.
  int OpenForms(const wchar_t* file, const wchar_t* extension, std::size_t cuts, std::size_t flips) {
    const auto forms = DamagedForms(BytesOf(directory() / file), cuts, flips);
    const auto models = ModelsInSession();
    int opened = 0, number = 0;
    for (const std::string& form : forms) {
      const std::wstring name = Format(L"d%d.%s.1", number++, extension);
      SCOPED_TRACE(EncodeUtf8(name));
      Write(directory() / name, form);
      const auto result =
          Run(L"api_document_open", Filled(LR"({"file_path":"<dir>\\)" + name + L"\"}", directory()));
      ExpectSound(result);
      if (result.success) {
        ++opened;
        bench::Model& model = Current();
        Use(model);
        EXPECT_EQ(ProMdlErase(bench::Handle(model)), PRO_TK_NO_ERROR);
      }
      EXPECT_EQ(BytesOf(directory() / name), form);
      EXPECT_EQ(ModelsInSession(), models);
      if (HasFailure()) break;
    }
    return opened;
  }
};

TEST_F(DamagedFiles, Models) {
  MakeModels();
  // Some of the damage is of the kind that a reader can't see.
  EXPECT_GT(OpenForms(L"block.prt.1", L"prt", 24, 160), 0);
  EXPECT_GT(OpenForms(L"frame.asm.2", L"asm", 16, 120), 0);
  EXPECT_GT(OpenForms(L"sheet.drw.1", L"drw", 16, 120), 0);
}

TEST_F(DamagedFiles, ImportsOfStep) {
  NewPart();
  Block(40, 20, 10);
  const auto models = ModelsInSession();
  int imported = 0;
  for (const std::string& form : DamagedForms(BytesOf(VEK_TEST_DATA "/plate_with_bore.step"), 8, 28)) {
    const auto result = Run(L"api_import_step_base64", LR"({"filename":"plate.step","data_base64":")" +
                                                           DecodeUtf8(bench::EncodeBase64(form)) + L"\"}");
    ExpectSound(result);
    if (result.success) {
      ++imported;
      ExpectSound(Run(L"api_analysis_mass_properties"));
      EXPECT_EQ(ProMdlErase(bench::Handle(Current())), PRO_TK_NO_ERROR);
    }
    ASSERT_EQ(ModelsInSession(), models) << EncodeUtf8(result.message);
  }
  EXPECT_GT(imported, 0);
}

TEST_F(DamagedFiles, TemplatesOfDrawings) {
  NewPart();
  Block(40, 20, 10);
  bench::Model& block = Current();
  const auto models = ModelsInSession();
  int made = 0, number = 0;
  for (const std::string& form :
       DamagedForms(BytesOf(VEK_INSTALLATION "/templates/a3_drawing.drw"), 16, 80)) {
    const std::wstring name = Format(L"t%d", number++);
    Write(directory() / (name + L".drw"), form);
    const auto result = Run(L"api_drawing_create", LR"({"template_path":")" + name + L"\"}");
    ExpectSound(result);
    if (bench::Model& drawing = Current(); &drawing != &block) {
      ++made;
      ExpectSound(Run(L"api_drawing_add_base_view"));
      ExpectSound(Run(L"api_drawing_list_views"));
      EXPECT_EQ(ProMdlErase(bench::Handle(drawing)), PRO_TK_NO_ERROR);
    }
    ASSERT_EQ(ModelsInSession(), models) << EncodeUtf8(result.message);
  }
  EXPECT_GT(made, 0);
}

TEST_F(DamagedFiles, ChartsOfHoles) {
  const fs::path chart = directory() / "text" / "hole" / "ISO.hol";
  fs::create_directories(chart.parent_path());
  const ScopedEnvironment installation(L"PRO_DIRECTORY", directory().wstring());
  NewPart();
  Block(40, 20, 10);
  Make({{L"api_sketch_create", LR"({"name":"P","plane":"XY"})"},
        {L"api_sketch_point", LR"({"sketch_name":"P","x":10,"y":10})"}});
  int holes = 0;
  for (const std::string& form : DamagedForms(BytesOf(VEK_INSTALLATION "/text/hole/ISO.hol"), 16, 80)) {
    Write(chart, form);
    const auto result = Run(
        L"api_feature_hole",
        LR"({"sketch_name":"P","diameter_mm":8,"depth_mm":6,"hole_type":"tapped","thread_designation":"M8x1.25"})");
    ExpectSound(result);
    EXPECT_EQ(BytesOf(chart), form);
    // Only the first one finds material; the chart is read before.
    holes += result.success;
  }
  EXPECT_EQ(holes, 1);
}

TEST_F(DamagedFiles, Macros) {
  NewPart();
  Block(40, 20, 10);
  const fs::path file = fs::path(LocalApplicationData()) / "VekAI/Creo/Macros/vek damaged.txt";
  Make({{L"api_macro_create",
         LR"({"name":"vek damaged","code":"models;tree;faces;units inch;units mm","overwrite":true})"}});
  const auto models = ModelsInSession();
  for (const std::string& form : DamagedForms(BytesOf(file), 16, 120)) {
    Write(file, form);
    for (const wchar_t* const operation : {L"api_macro_get_code", L"api_macro_run"})
      ExpectSound(Run(operation, LR"({"name":"vek damaged"})"));
    EXPECT_EQ(BytesOf(file), form);
    ExpectSound(Run(L"api_document_info"));
  }
  EXPECT_EQ(ModelsInSession().size(), models.size());
  Make({{L"api_macro_delete", LR"({"name":"vek damaged"})"}});
}

}  // namespace

void RegisterKernelAbsences();

}  // namespace vek::support

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", L"" VEK_INSTALLATION);
  vek::support::RegisterKernelAbsences();
  return RUN_ALL_TESTS();
}
