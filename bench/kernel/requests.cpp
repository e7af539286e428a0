#include "bench/kernel/requests.h"

#include "bench/kernel/base64.h"
#include "bench/kernel/evaluate.h"
#include "bench/kernel/export.h"
#include "bench/kernel/feature.h"
#include "bench/kernel/guard.h"
#include "bench/kernel/import.h"
#include "bench/kernel/interfere.h"
#include "bench/kernel/json_fields.h"
#include "bench/kernel/project.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/render.h"
#include "bench/kernel/solve_request.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

// Names can hold bytes that are no UTF-8; a line must not fail for them.
std::string Written(const json& answer) {
  constexpr int kOneLine = -1;
  return answer.dump(kOneLine, ' ', false, json::error_handler_t::replace);
}

ExportFormat ReadFormat(const Fields& fields) {
  const std::string format = fields.Text("format");
  if (format == "step") return ExportFormat::kStep;
  if (format == "iges") return ExportFormat::kIges;
  if (format == "stl") return ExportFormat::kStl;
  fields.Complain("unknown format '" + format + "'");
}

// No request is nearly as deep. The JSON library writes what it has read by calling itself for each level.
bool IsTooDeep(std::string_view line) {
  constexpr int kDeepest = 64;
  int depth = 0;
  bool in_string = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"') in_string = !in_string;
    if (in_string) {
      if (c == '\\') ++i;
    } else if (c == '[' || c == '{') {
      if (++depth > kDeepest) return true;
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return false;
}

// What `compute` gives, or why the geometry can't give it.
template <typename Compute>
json OrRefused(Compute&& compute) {
  try {
    return compute();
  } catch (const Refusal& refusal) {
    return {{"refused", refusal.what()}};
  }
}

}  // namespace

json Requests::Export(const json& request) {
  const Fields fields(request, "the request");
  const ExportFormat format = ReadFormat(fields);
  const Scene scene = ReadScene(fields, regenerator_);
  return OrRefused([&]() -> json { return {{"bytes", Base64(ExportBytes(format, scene))}}; });
}

json Requests::Evaluate(const json& request) {
  const Fields fields(request, "the request");
  const bool of_face = fields.Has("face");
  const std::string key = fields.Text(of_face ? "face" : "edge");
  const double u = of_face ? fields.Number("u") : 0, v = of_face ? fields.Number("v") : 0;
  const double t = of_face ? 0 : fields.Number("t");
  const BodyKeys& keys = regenerator_.Keys(ReadRecipes(fields.Array("recipes")));
  return OrRefused(
      [&] { return of_face ? EvaluateFace(keys.Face(key), u, v) : EvaluateEdge(keys.Edge(key), t); });
}

json Requests::Extremes(const json& request) {
  const Fields fields(request, "the request");
  const std::string key = fields.Text("face");
  const gp_XYZ direction = fields.Vector("direction");
  if (!(direction.Modulus() > 0)) fields.Complain("'direction' must have a length");
  const BodyKeys& keys = regenerator_.Keys(ReadRecipes(fields.Array("recipes")));
  return OrRefused([&] { return DescribeExtremes(keys.Face(key), direction); });
}

json Requests::Carry(const json& request) {
  const Fields fields(request, "the request");
  const std::string task = fields.Text("do");
  if (task == "regenerate") return regenerator_.Describe(ReadRecipes(fields.Array("recipes")));
  if (task == "export") return Export(request);
  if (task == "evaluate") return Evaluate(request);
  if (task == "extremes") return Extremes(request);
  if (task == "solve") return OrRefused([&] { return AnswerSolve(fields); });
  if (task == "project")
    return OrRefused([&] { return AnswerProject(fields, ReadScene(fields, regenerator_)); });
  if (task == "interfere") return OrRefused([&] { return DescribeClashes(ReadScene(fields, regenerator_)); });
  if (task == "render")
    return OrRefused([&] { return AnswerRender(fields, ReadScene(fields, regenerator_)); });
  if (task == "import") return OrRefused([&] { return AnswerImport(fields); });
  fields.Complain("unknown task '" + task + "'");
}

std::string Requests::Answer(std::string_view line) {
  json answer = {{"id", nullptr}};
  const Outcome outcome = Guarded([&] {
    if (IsTooDeep(line)) throw BadRequest("the line is nested too deeply");
    constexpr bool kThrow = false;
    const json request = json::parse(line, nullptr, kThrow);
    if (request.is_discarded()) throw BadRequest("the line is not JSON");
    if (request.is_object() && request.contains("id")) answer["id"] = request["id"];
    answer["ok"] = Carry(request);
  });
  if (outcome.crashed) regenerator_.Forget();
  if (!outcome.error.empty()) answer["error"] = outcome.error;
  return Written(answer);
}

}  // namespace bench::kernel
