#include "tests/soak/traffic.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <stdexcept>
#include <utility>

#include "tests/endtoend/bench_test.h"

namespace vek::soak {
namespace {

using endtoend::Answer;
using endtoend::ParseAnswer;
using endtoend::Request;
using endtoend::RequestText;

constexpr int kSinglesAtMost = 10;  // between two batches

// As the answers write numbers.
std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

// "x_mm":…,"y_mm":…,"z_mm":…
std::string Size(int x, int y, int z) {
  return R"({"x_mm":)" + Number(x) + R"(,"y_mm":)" + Number(y) + R"(,"z_mm":)" + Number(z) + "}";
}

std::string ExpectedVolume(double cubic_millimetres) {
  return R"("volume_cm3":)" + Number(cubic_millimetres / 1000) + ",";
}

// The text behind `mark` up to the next double quote.
std::string QuotedBehind(const std::string& text, const std::string& mark) {
  const auto at = text.find(mark);
  if (at == std::string::npos) throw std::runtime_error("no " + mark + " in " + text);
  const auto begin = at + mark.size();
  return text.substr(begin, text.find('"', begin) - begin);
}

// A request that is answered at once, whatever model is current.
struct KnownAnswer {
  const char *method, *path, *body;
  int status;
  const char* answer;  // the whole body
};

constexpr KnownAnswer kKnownAnswers[] = {
    {"OPTIONS", "/anything", "", 204, ""},
    {"GET", "/execute?x=1", "", 404, R"({"error":"Endpoint not found: GET /execute"})"},
    {"POST", "/execute", "{}", 400, R"({"error":"Request must include an 'operations' object."})"},
    {"POST", "/execute", R"({"operations":{5}})", 400, R"({"error":"Malformed operations object."})"},
    {"POST", "/", R"({"x":1})", 400,
     "<html><body><h1>Error</h1><p>Download path is missing</p></body></html>"},
    {"POST", "/", R"({"downloadPath":"C:\nowhere\part.prt"})", 404,
     R"(<html><body><h1>Error</h1><p>File not found: C:\nowhere\part.prt</p></body></html>)"},
};

}  // namespace

void ExpectHolds(const std::string& text, std::initializer_list<std::string> parts) {
  for (const std::string& part : parts) endtoend::ExpectHolds(text, part);
}

Traffic::Traffic(std::uint32_t seed, std::string work) : random_(seed), work_(std::move(work)) {
  health_ = Request("GET", "/health").body;
  ExpectHolds(health_, {R"("status":"ok")", "api_analysis_bounding_box", "api_sketch_text_native"});
}

void Traffic::Prepare() {
  const std::string sketch = NewSketch();
  ExpectHolds(Batch(R"("api_document_new_part":{},"api_sketch_create":{"plane":"XY","name":)" + sketch +
                    R"(},"api_sketch_rectangle_two_points":{"x1":0,"y1":0,"x2":40,"y2":20,"sketch_name":)" +
                    sketch + R"(},"api_feature_extrude":{"distance_mm":10,"sketch_name":)" + sketch +
                    R"(},"api_document_save_as":{"file_path":"soak_plate.prt"})"),
              {"Document saved as 'soak_plate.prt'."});
  ExpectHolds(Batch(R"("api_document_close":{"name_or_path":"SOAK_PLATE"})"),
              {"Document 'SOAK_PLATE' closed."});
  // As it comes from elsewhere: without a version.
  std::filesystem::copy(std::filesystem::path(work_) / "soak_plate.prt.1",
                        std::filesystem::path(work_) / "soak_opened.prt");
}

void Traffic::Run(int requests) {
  using Scene = void (Traffic::*)();
  constexpr std::array<Scene, 4> kScenes = {&Traffic::Block, &Traffic::Stud, &Traffic::Frame,
                                            &Traffic::PartOpening};
  const int until = requests_ + requests;
  while (requests_ < until && !testing::Test::HasFailure())
    (this->*kScenes[static_cast<std::size_t>(Between(0, 3))])();
}

std::chrono::milliseconds Traffic::AskHealth(std::chrono::milliseconds limit) {
  const auto begin = std::chrono::steady_clock::now();
  const Answer answer = Request("GET", "/health", "", limit);
  ++requests_;
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, health_);
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
}

void Traffic::AskBatch() {
  ExpectHolds(Batch(R"("api_analysis_measure_distance":{"x1":1,"y1":2,"z1":3,"x2":4,"y2":6,"z2":15})"),
              {"Distance: 13.0000 mm."});  // 3, 4, 12
}

// A block that is measured, exported, taken back and closed.
void Traffic::Block() {
  const int a = Between(10, 59), b = Between(10, 29), h = Between(5, 14);
  const std::string sketch = NewSketch();
  const std::string made =
      Batch(R"("api_document_new_part":{},"api_sketch_create":{"plane":"XY","name":)" + sketch +
            R"(},"api_sketch_rectangle_two_points":{"x1":0,"y1":0,"x2":)" + Number(a) + R"(,"y2":)" +
            Number(b) + R"(,"sketch_name":)" + sketch + R"(},"api_feature_extrude":{"distance_mm":)" +
            Number(h) + R"(,"sketch_name":)" + sketch + R"(},"api_analysis_mass_properties":{})");
  ExpectHolds(made, {ExpectedVolume(a * b * h),
                     R"("surface_area_cm2":)" + Number(2.0 * (a * b + b * h + a * h) / 100) + ",",
                     "Extrusion 'Extrude 1' created from "});
  ExpectHolds(Batch(R"("api_analysis_bounding_box":{},"api_feature_list":{},"api_parameters_list":{})"),
              {R"("size":)" + Size(a, b, h), "Found 6 features.",
               R"("name":"d0","expression":")" + Number(h) + " mm\""});

  const std::filesystem::path file = std::filesystem::path(work_) / "soak.stp";
  std::filesystem::remove(file);
  ExpectHolds(Batch(R"("api_export_file":{"output_path":"soak.stp","format":"STEP"})"),
              {"Exported active model as STEP to 'soak.stp'."});
  std::string first_line;
  std::getline(std::ifstream(file), first_line);
  EXPECT_EQ(first_line.substr(0, 12), "ISO-10303-21");

  ExpectHolds(Batch(R"("api_document_undo":{},"api_analysis_bounding_box":{},"api_document_get_history":{})"),
              {"1 undo step(s) applied.", "Unable to compute document bounding box (status=-1).",
               "Draw L:1;L:2;L:3;L:4 in "});
  Close(made);
}

// A stud, and an edge of it rounded off.
void Traffic::Stud() {
  const int r = Between(4, 20), h = Between(8, 40);
  const std::string sketch = NewSketch();
  const std::string made = Batch(
      R"("api_document_new_part":{},"api_sketch_create":{"plane":"XZ","name":)" + sketch +
      R"(},"api_sketch_circle_center_radius":{"cx":3,"cy":0,"radius":)" + Number(r) + R"(,"sketch_name":)" +
      sketch + R"(},"api_sketch_list":{},"api_feature_extrude":{"distance_mm":)" + Number(h) +
      R"(,"sketch_name":)" + sketch + R"(},"api_analysis_mass_properties":{},"api_no_such_operation":{})");
  ExpectHolds(made, {ExpectedVolume(std::numbers::pi * r * r * h), R"("circles":1)",
                     "Operation 'api_no_such_operation' is not implemented by this provider."});
  ExpectHolds(
      Batch(R"("api_edge_fillet":{"radius_mm":0},"api_sketch_create":{"plane":"nowhere"},)"
            R"("api_feature_delete":{"feature_name":"Extrude 7"},"api_document_rebuild":{})"),
      {"'radius_mm' is required and must be greater than 0.", R"("success":false)", "Rebuild completed."});
  Close(made);
}

// An assembly of two plates, into which another program puts a third part.
void Traffic::Frame() {
  const int x = Between(50, 90);
  ExpectHolds(Batch(R"("api_document_new_assembly":{},"api_document_save_as":{"file_path":"soak_frame.asm"},)"
                    R"("api_assembly_add_component":{"file_path":"soak_plate.prt.1","component_name":"A",)"
                    R"("grounded":true},"api_analysis_mass_properties":{})"),
              {"Document saved as 'soak_frame.asm'.", ExpectedVolume(8000)});  // 40 × 20 × 10
  ExpectHolds(Batch(R"("api_assembly_add_component":{"file_path":"SOAK_PLATE","component_name":"B","x_mm":)" +
                    Number(x) +
                    R"(},"api_assembly_list_components":{},"api_analysis_bounding_box":{},)"
                    R"("api_analysis_check_interference":{})"),
              {"1 unique component(s) found (2 total occurrences).", R"("size":)" + Size(x + 40, 20, 10),
               R"("interference_count":0)"});
  AskToOpenPart();
  ExpectHolds(Batch(R"("api_assembly_list_components":{})"),
              {"2 unique component(s) found (3 total occurrences)."});
  ExpectHolds(Batch(R"("api_document_close":{"name_or_path":"SOAK_FRAME"})"),
              {"Document 'SOAK_FRAME' closed."});
  std::filesystem::remove(std::filesystem::path(work_) / "soak_frame.asm.1");
}

// A part that another program asks to open while none is current: it gets a window.
void Traffic::PartOpening() {
  AskToOpenPart();
  ExpectHolds(Batch(R"("api_document_list_open":{},"api_document_activate":{"name_or_path":"SOAK_OPENED"},)"
                    R"("api_analysis_mass_properties":{})"),
              {R"("name":"SOAK_OPENED")", "1 open document(s).", "Document 'SOAK_OPENED' is now active.",
               ExpectedVolume(8000)});
  ExpectHolds(Batch(R"("api_document_close":{"name_or_path":"SOAK_OPENED"},"api_document_info":{})"),
              {"Document 'SOAK_OPENED' closed.",
               "Skipped: api_document_close must be the last operation in a batch."});
}

// The request is answered at once; the part is opened behind the next batch at the latest.
void Traffic::AskToOpenPart() {
  Singles();
  const Answer answer = Request("POST", "/", R"({"downloadPath":")" + WindowsPath("soak_opened.prt") + "\"}");
  ++requests_;
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, "<html><body><h1>Data Received</h1></body></html>");
  AskBatch();
}

std::string Traffic::WindowsPath(const std::string& file) const {
  std::string path = "Z:" + work_ + "/" + file;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

void Traffic::Single() {
  const int kind = Between(0, static_cast<int>(std::size(kKnownAnswers)) + 3);
  if (kind >= static_cast<int>(std::size(kKnownAnswers))) {
    AskHealth(std::chrono::seconds(10));
    return;
  }
  const KnownAnswer& known = kKnownAnswers[kind];
  const Answer answer = Request(known.method, known.path, known.body);
  ++requests_;
  EXPECT_EQ(answer.status, known.status) << known.method << " " << known.path << " " << known.body;
  EXPECT_EQ(answer.body, known.answer) << known.method << " " << known.path << " " << known.body;
}

void Traffic::Singles() {
  for (int left = Between(0, kSinglesAtMost); left > 0; --left) Single();
}

std::string Traffic::Batch(const std::string& operations) {
  Singles();
  const Answer answer = Request("POST", "/execute", "{\"operations\":{" + operations + "}}");
  ++requests_;
  ++batches_;
  EXPECT_EQ(answer.status, 200) << operations << "\n" << answer.body;
  return answer.body;
}

void Traffic::Close(const std::string& answer) {
  const std::string name = QuotedBehind(answer, R"(created.","data":{"name":")");
  ExpectHolds(Batch(R"("api_document_close":{"name_or_path":")" + name + "\"}"),
              {"Document '" + name + "' closed."});
}

int Traffic::Between(int least, int most) {
  return std::uniform_int_distribution<int>(least, most)(random_);
}

// In double quotes; unique over the whole session, as the names of sketches have to be.
std::string Traffic::NewSketch() {
  return "\"SOAK" + std::to_string(++sketches_) + "\"";
}

}  // namespace vek::soak
