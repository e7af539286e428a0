#include "bridge/tools.h"

#include <algorithm>
#include <utility>

#include "bridge/schemas.h"

namespace vek::bridge {
namespace {

constexpr std::string_view kOperationPrefix = "api_";

// Of an object of the data, as the structured content has it.
Json WithoutPicture(Json schema) {
  Json required = Json::array();
  for (const Json& name : schema.value("required", Json::array()))
    if (name != kPictureData && name != kPictureType) required.push_back(name);
  if (schema.contains("required")) schema["required"] = std::move(required);
  schema["properties"].erase(kPictureData);
  schema["properties"].erase(kPictureType);
  return schema;
}

Json OutputSchema(const Operation& operation) {
  Json schema = DataSchema(operation);
  if (!operation.data_is_array) return WithoutPicture(std::move(schema));
  schema["items"] = WithoutPicture(std::move(schema["items"]));
  return {{"type", "object"}, {"properties", {{kElements, std::move(schema)}}}, {"required", {kElements}}};
}

// "api_sketch_circle_center_radius" is titled "Sketch circle center radius".
std::string TitleOf(std::string_view name) {
  if (name.starts_with(kOperationPrefix)) name.remove_prefix(kOperationPrefix.size());
  std::string title(name);
  std::ranges::replace(title, '_', ' ');
  if (!title.empty() && title[0] >= 'a' && title[0] <= 'z')
    title[0] = static_cast<char>(title[0] - 'a' + 'A');
  return title;
}

Json Annotations(std::string title, bool read_only, bool destructive) {
  Json annotations = {{"title", std::move(title)}, {"readOnlyHint", read_only}};
  annotations["destructiveHint"] = destructive;
  if (read_only) annotations["idempotentHint"] = true;
  annotations["openWorldHint"] = false;
  return annotations;
}

std::string DescriptionOf(const Operation& operation) {
  std::string text = operation.purpose;
  for (const std::string& note : operation.notes) text += " " + note;
  if (operation.document == "any") {
    text += " Needs an active document.";
  } else if (operation.document != "none") {
    text += " Acts on the active " + operation.document + ".";
  }
  if (!operation.history.empty()) text += " Can be undone (" + operation.history + ").";
  return text;
}

// What one step of a batch answers.
Json StepResultSchema() {
  return {{"type", "object"},
          {"properties",
           {{"operation", {{"type", "string"}}},
            {"outcome", {{"type", "string"}, {"enum", {"done", "failed", "not run"}}}},
            {"message", {{"type", "string"}, {"description", "What the operation says of it."}}},
            {"data", {{"description", "The operation's data, where it gives some."}}}}},
          {"required", {"operation", "outcome", "message"}}};
}

}  // namespace

Json OperationTool(const Operation& operation) {
  const std::string title = TitleOf(operation.name);
  Json tool = {{"name", operation.name},
               {"title", title},
               {"description", DescriptionOf(operation)},
               {"inputSchema", ArgumentsSchema(operation)}};
  if (!operation.data.empty()) tool["outputSchema"] = OutputSchema(operation);
  tool["annotations"] = Annotations(title, operation.read_only, operation.destructive);
  return tool;
}

Json BatchTool(const Catalogue& catalogue) {
  Json names = Json::array();
  for (const Operation& operation : catalogue.operations()) names.push_back(operation.name);
  Json step = {
      {"type", "object"},
      {"properties",
       {{"operation", {{"type", "string"}, {"enum", std::move(names)}}},
        {"arguments", {{"type", "object"}, {"description", "As the tool of that name takes them."}}}}},
      {"required", {"operation"}},
      {"additionalProperties", false}};
  Json input = {{"type", "object"},
                {"properties",
                 {{"steps", {{"type", "array"}, {"minItems", 1}, {"items", std::move(step)}}},
                  {"stop_on_failure",
                   {{"type", "boolean"},
                    {"default", false},
                    {"description",
                     "Whether the steps behind a failed one are left out. Steps are then posted one at a "
                     "time, which takes about a tenth of a second for each."}}}}},
                {"required", {"steps"}},
                {"additionalProperties", false}};
  Json output = {{"type", "object"},
                 {"properties",
                  {{"results", {{"type", "array"}, {"items", StepResultSchema()}}},
                   {"done", {{"type", "integer"}}},
                   {"failed", {{"type", "integer"}}},
                   {"not_run", {{"type", "integer"}}}}},
                 {"required", {"results", "done", "failed", "not_run"}}};
  const std::string title = TitleOf(kBatchTool);
  return {{"name", kBatchTool},
          {"title", title},
          {"description",
           "Runs operations in order and gives the result of each. Much faster than the same operations one "
           "by one. A failed step stops nothing unless stop_on_failure is true. A mistake in the names or "
           "types of any step's arguments is told before the first step runs."},
          {"inputSchema", std::move(input)},
          {"outputSchema", std::move(output)},
          {"annotations", Annotations(title, false, true)}};
}

Json ListTools(const Catalogue& catalogue) {
  Json tools = Json::array({BatchTool(catalogue)});
  for (const Operation& operation : catalogue.operations()) tools.push_back(OperationTool(operation));
  return tools;
}

}  // namespace vek::bridge
