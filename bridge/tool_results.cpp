#include "bridge/tool_results.h"

#include <optional>
#include <utility>

#include "bridge/tools.h"

namespace vek::bridge {
namespace {

using Outcome = StepResult::Outcome;

Json TextContent(std::string text) {
  return {{"type", "text"}, {"text", std::move(text)}};
}

// Takes a picture out of an operation's data: the texts of a result would carry it twice more, and a reader
// of them sees nothing in it.
std::optional<Json> TakePicture(Json& data) {
  const Json* const bytes = FindMember(data, kPictureData);
  const Json* const type = FindMember(data, kPictureType);
  if (bytes == nullptr || type == nullptr) return std::nullopt;
  Json picture = {{"type", "image"}, {"data", *bytes}, {"mimeType", *type}};
  data.erase(kPictureData);
  data.erase(kPictureType);
  return picture;
}

const char* WordFor(Outcome outcome) {
  switch (outcome) {
    case Outcome::kDone:
      return "done";
    case Outcome::kFailed:
      return "failed";
    case Outcome::kNotRun:
      break;
  }
  return "not run";
}

Json StructuredData(Json data) {
  if (data.is_array()) return {{kElements, std::move(data)}};
  return data.is_object() ? std::move(data) : Json::object();
}

}  // namespace

Json OperationToolResult(const Operation& operation, StepResult result) {
  const bool failed = result.outcome != Outcome::kDone;
  const bool tells_data = !operation.data.empty() && !(failed && result.data.is_null());
  Json content = Json::array({TextContent(result.message)});
  Json tool_result = {{"content", nullptr}};
  if (tells_data) {
    const auto picture = TakePicture(result.data);
    Json structured = StructuredData(std::move(result.data));
    content.push_back(TextContent(WriteJson(structured)));
    if (picture) content.push_back(*picture);
    tool_result["structuredContent"] = std::move(structured);
  }
  tool_result["content"] = std::move(content);
  tool_result["isError"] = failed;
  return tool_result;
}

Json BatchToolResult(std::span<const Step> steps, std::vector<StepResult> results) {
  std::string lines;
  Json listed = Json::array(), pictures = Json::array();
  int counts[3] = {};
  for (std::size_t i = 0; i < results.size(); ++i) {
    StepResult& result = results[i];
    ++counts[static_cast<int>(result.outcome)];
    lines += std::to_string(i + 1) + ". " + steps[i].operation + ", " + WordFor(result.outcome) + ": " +
             result.message + "\n";
    Json entry = {
        {"operation", steps[i].operation}, {"outcome", WordFor(result.outcome)}, {"message", result.message}};
    if (auto picture = TakePicture(result.data)) pictures.push_back(std::move(*picture));
    if (!result.data.is_null()) entry["data"] = std::move(result.data);
    listed.push_back(std::move(entry));
  }
  const auto count = [&counts](Outcome outcome) { return counts[static_cast<int>(outcome)]; };
  Json structured = {{"results", std::move(listed)},
                     {"done", count(Outcome::kDone)},
                     {"failed", count(Outcome::kFailed)},
                     {"not_run", count(Outcome::kNotRun)}};
  Json content = Json::array({TextContent(std::move(lines)), TextContent(WriteJson(structured))});
  for (Json& picture : pictures) content.push_back(std::move(picture));
  return {{"content", std::move(content)},
          {"structuredContent", std::move(structured)},
          {"isError", count(Outcome::kFailed) != 0}};
}

Json RefusedToolResult(const std::vector<std::string>& mistakes) {
  std::string lines = "Nothing was run.";
  for (const std::string& mistake : mistakes) lines += "\n" + mistake;
  return {{"content", Json::array({TextContent(std::move(lines))})}, {"isError", true}};
}

}  // namespace vek::bridge
