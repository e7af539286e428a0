#include "bridge/batch_plan.h"

#include <set>
#include <string_view>

namespace vek::bridge {
namespace {

constexpr std::string_view kClosingOperation = "api_document_close";
constexpr std::size_t kHeaderRoom = 1024;
constexpr std::size_t kBodyLimit = kRequestLimit - kHeaderRoom;

constexpr std::string_view kOpening = R"({"operations":{)";
constexpr std::string_view kClosing = "}}";

std::string Entry(const Step& step) {
  return WriteJson(step.operation) + ":" + WriteJson(step.arguments);
}

}  // namespace

std::string ExecuteBody(std::span<const Step> steps) {
  std::string body(kOpening);
  for (const Step& step : steps) {
    if (body.size() > kOpening.size()) body += ',';
    body += Entry(step);
  }
  return body.append(kClosing);
}

bool IsTooLarge(const Step& step) {
  return kOpening.size() + Entry(step).size() + kClosing.size() > kBodyLimit;
}

std::size_t NextBatch(std::span<const Step> steps) {
  std::set<std::string_view> names;
  std::size_t size = kOpening.size() + kClosing.size();
  for (const Step& step : steps) {
    size += Entry(step).size() + 1;
    const bool fits = names.empty() || (size <= kBodyLimit && !names.contains(kClosingOperation));
    if (!fits || !names.insert(step.operation).second) break;
  }
  return names.size();
}

}  // namespace vek::bridge
