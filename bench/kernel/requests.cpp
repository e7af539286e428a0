#include "bench/kernel/requests.h"

#include "bench/kernel/base64.h"
#include "bench/kernel/export.h"
#include "bench/kernel/guard.h"
#include "bench/kernel/json_fields.h"
#include "bench/kernel/recipe.h"
#include "bench/kernel/refusal.h"

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

}  // namespace

json Requests::Export(const json& request) {
  const Fields fields(request, "the request");
  const ExportFormat format = ReadFormat(fields);
  const std::string name = fields.Text("name");
  const NamedShape body = regenerator_.Body(ReadRecipes(fields.Array("recipes")));
  try {
    return {{"bytes", Base64(ExportBytes(format, name, body))}};
  } catch (const Refusal& refusal) {
    return {{"refused", refusal.what()}};
  }
}

json Requests::Carry(const json& request) {
  const Fields fields(request, "the request");
  const std::string task = fields.Text("do");
  if (task == "regenerate") return regenerator_.Describe(ReadRecipes(fields.Array("recipes")));
  if (task == "export") return Export(request);
  fields.Complain("unknown task '" + task + "'");
}

std::string Requests::Answer(std::string_view line) {
  json answer = {{"id", nullptr}};
  const Outcome outcome = Guarded([&] {
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
