// What arrives at the geometry kernel: lines of JSON, and what its readers make of them. No feature is built;
// a request is answered as a whole only where it has none to build.
//
// Lines don't depend on the pieces in which they arrive. A request that makes no sense is refused by the
// readers themselves, in words: no other exception, and never by the JSON library. A recipe that is taken has
// every field that its kind needs, and is taken again with the same text; an answer is one line with the
// request's id and either a result or an error.
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "bench/kernel/line_cutter.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/requests.h"
#include "bench/kernel/scene.h"
#include "bench/kernel/solve_request.h"
#include "tests/fuzz/fuzz_text.h"

using nlohmann::json;
using vek::fuzz::Require;

namespace {

namespace kernel = bench::kernel;

struct Need {
  const char* field;
  json::value_t type;  // number_float for numbers of every kind
};

constexpr auto kArray = json::value_t::array, kObject = json::value_t::object, kText = json::value_t::string,
               kNumber = json::value_t::number_float;

// As the protocol lists them.
const std::map<std::string, std::vector<Need>> kNeeds{
    {"sketch", {{"plane", kObject}, {"entities", kArray}}},
    {"extrude", {{"plane", kObject}, {"entities", kArray}, {"operation", kText}, {"extent", kObject}}},
    {"revolve", {{"plane", kObject}, {"entities", kArray}, {"operation", kText}, {"angle_deg", kNumber}}},
    {"sweep", {{"path", kObject}, {"section", kObject}, {"operation", kText}}},
    {"pattern", {{"members", kArray}, {"motions", kArray}}},
    {"mirror",
     {{"plane", kObject}, {"faces", kArray}, {"quilts", kArray}, {"curves", kArray}, {"points", kArray}}},
    {"solidify", {{"quilt", kText}}},
    {"shell", {{"thickness", kNumber}, {"removed", kArray}}},
    {"hole", {{"point", kText}, {"diameter", kNumber}, {"depth", kNumber}}},
    {"move", {{"x", kArray}, {"y", kArray}, {"z", kArray}, {"origin", kArray}}},
    {"round", {{"edges", kArray}, {"radius", kNumber}}},
    {"chamfer", {{"edges", kArray}, {"scheme", kText}, {"distance", kNumber}}},
    {"draft", {{"faces", kArray}, {"hinges", kArray}, {"direction", kText}, {"angle_deg", kNumber}}},
    {"import", {{"shape", kText}}},
};

// Whether the readers take it; what they don't they refuse in words.
template <typename Read>
bool IsTaken(Read read) {
  try {
    read();
    return true;
  } catch (const kernel::BadRequest& bad) {
    Require(bad.what()[0] != '\0');
    return false;
  }
}

void CheckNeeds(const json& recipe) {
  Require(recipe.at("feature").is_number_integer() && recipe.at("feature").get<std::int64_t>() >= 0);
  for (const Need& need : kNeeds.at(recipe.at("kind").get<std::string>())) {
    const json& field = recipe.at(need.field);
    Require(need.type == kNumber ? field.is_number() : field.type() == need.type);
  }
}

void CheckEntities(const json& entities) {
  std::set<std::int64_t> ids;
  for (const json& entity : entities) {
    Require(ids.insert(entity.at("id").get<std::int64_t>()).second && *ids.begin() >= 0);
    Require(entity.at("type").is_string());
  }
}

void CheckRecipes(const json& recipes) {
  std::vector<kernel::Recipe> read;
  if (!IsTaken([&] { read = kernel::ReadRecipes(recipes); })) return;
  Require(read.size() == recipes.size());
  json again = json::array();
  std::set<int> features;
  for (std::size_t i = 0; i < read.size(); ++i) {
    Require(read[i].content && features.insert(read[i].feature).second &&
            read[i].feature == recipes[i]["feature"]);
    CheckNeeds(recipes[i]);
    if (recipes[i].contains("entities") && recipes[i]["kind"] != "import" && recipes[i].contains("plane"))
      if (recipes[i]["kind"] == "sketch" || recipes[i]["kind"] == "extrude")
        CheckEntities(recipes[i]["entities"]);
    again.push_back(json::parse(read[i].text));
  }
  const auto reread = kernel::ReadRecipes(again);
  for (std::size_t i = 0; i < read.size(); ++i) Require(reread[i].text == read[i].text);
}

// All arrays "recipes" of a request; each is emptied once it was read.
void TakeRecipes(json& value, std::vector<json>& taken) {
  if (!value.is_structured()) return;
  for (auto member = value.begin(); member != value.end(); ++member) {
    if (value.is_object() && member.key() == "recipes" && member->is_array()) {
      taken.push_back(std::move(*member));
      *member = json::array();
    } else {
      TakeRecipes(*member, taken);
    }
  }
}

void CheckScene(const json& request, kernel::Regenerator& regenerator) {
  kernel::Scene scene;
  if (!IsTaken([&] { scene = kernel::ReadScene({request, "the request"}, regenerator); })) return;
  Require(scene.root < scene.models.size() && scene.models.size() == request.at("models").size());
  for (std::size_t i = 0; i < scene.models.size(); ++i)
    for (const kernel::SceneComponent& component : scene.models[i].components) {
      Require(component.id >= 0 && component.model < i && !component.place.IsNegative());
      Require(std::abs(component.place.ScaleFactor() - 1) < 1e-9);
    }
}

// Whether the request can be answered without much work: it makes no files and small pictures, and its
// assemblies don't multiply.
bool IsLight(const json& request) {
  constexpr std::size_t kMostComponents = 8, kMostConditions = 4, kMostEntities = 4;
  constexpr int kMostPixels = 64;
  if (!request.is_object() || request.value("do", json()) == "import") return false;
  std::size_t components = 0;
  if (const auto models = request.find("models"); models != request.end() && models->is_array())
    for (const json& model : *models)
      if (model.is_object() && model.contains("components")) components += model["components"].size();
  for (const char* side : {"width", "height"})
    if (const json pixels = request.value(side, json()); pixels.is_number() && pixels > kMostPixels)
      return false;
  return components <= kMostComponents && request.value("conditions", json()).size() <= kMostConditions &&
         request.value("entities", json()).size() <= kMostEntities;
}

void CheckAnswer(kernel::Requests& requests, const std::string& line, const json& request) {
  const std::string text = requests.Answer(line);
  const json answer = json::parse(text);
  Require(text.find('\n') == std::string::npos && answer.size() == 2);
  Require(answer.contains("ok") != answer.contains("error"));
  const auto error = answer.value("error", "");
  Require(answer.contains("ok") || (!error.empty() && !error.starts_with("[json.exception")));
  // A line that is nested too deeply is not read so far.
  const json id = request.is_object() && request.contains("id") ? request["id"] : json();
  Require(answer.at("id") == id || (answer["id"].is_null() && error == "the line is nested too deeply"));
}

void ReadLine(const std::string& line) {
  static kernel::Requests& requests = *new kernel::Requests;
  static kernel::Regenerator& regenerator = *new kernel::Regenerator;
  json request = json::parse(line, nullptr, false);
  if (request.is_discarded()) return CheckAnswer(requests, line, request);
  std::vector<json> recipes;
  TakeRecipes(request, recipes);
  for (const json& each : recipes) CheckRecipes(each);
  if (request.is_array()) CheckRecipes(request);
  if (!IsLight(request)) return;
  CheckScene(request, regenerator);
  CheckAnswer(requests, request.dump(-1, ' ', false, json::error_handler_t::replace), request);
}

std::vector<std::string> InPieces(std::string_view bytes, std::size_t piece) {
  kernel::LineCutter cutter;
  std::vector<std::string> lines;
  for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
    cutter.Add(bytes.substr(0, piece));
    while (auto line = cutter.Next()) lines.push_back(std::move(*line));
  }
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = std::string(vek::fuzz::Bytes(data, size)) + '\n';
  const std::vector<std::string> lines = InPieces(bytes, size % 13 + 1);
  std::istringstream stream(bytes);
  std::size_t next = 0;
  for (std::string line; std::getline(stream, line);)
    if (line.find_first_not_of(" \t\r") != std::string::npos)
      Require(next < lines.size() && lines[next++] == line);
  Require(next == lines.size());
  for (const std::string& line : lines) ReadLine(line);
  return 0;
}
