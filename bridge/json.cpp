#include "bridge/json.h"

namespace vek::bridge {
namespace {

// Whatever walks a value goes as deep as the value is nested.
constexpr int kDeepest = 100;

constexpr int kOneLine = -1;

}  // namespace

std::optional<Json> ReadJson(std::string_view text) {
  bool too_deep = false;
  const auto stays_shallow = [&too_deep](int depth, Json::parse_event_t, Json&) {
    too_deep = too_deep || depth > kDeepest;
    return !too_deep;
  };
  Json value = Json::parse(text.begin(), text.end(), stays_shallow, false);
  if (too_deep || value.is_discarded()) return std::nullopt;
  return value;
}

std::string WriteJson(const Json& value) {
  return value.dump(kOneLine, ' ', false, Json::error_handler_t::replace);
}

const Json* FindMember(const Json& object, std::string_view name) {
  if (!object.is_object()) return nullptr;
  const auto found = object.find(std::string(name));
  return found == object.end() ? nullptr : &*found;
}

}  // namespace vek::bridge
