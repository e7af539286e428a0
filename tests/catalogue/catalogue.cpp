#include "tests/catalogue/catalogue.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <stdexcept>

namespace vek::catalogue {
namespace {

constexpr double kRelativeTolerance = 1e-6;
constexpr double kZero = 1e-9;

constexpr std::string_view kWordLetters = "abcdefghijklmnopqrstuvwxyz0123456789_";
constexpr std::string_view kFlagsAndLengths = "-+ #.0123456789l";

// The end of the `<word>` at `at`, or `at` when there is none.
std::size_t EndOfWord(std::string_view text, std::size_t at) {
  const std::size_t end = std::min(text.find_first_not_of(kWordLetters, at + 1), text.size());
  return text[at] == '<' && end > at + 1 && end < text.size() && text[end] == '>' ? end + 1 : at;
}

// The end of the conversion at `at`, or `at` when there is none.
std::size_t EndOfConversion(std::string_view text, std::size_t at) {
  if (text[at] != '%') return at;
  return std::min(text.find_first_not_of(kFlagsAndLengths, at + 1), text.size() - 1) + 1;
}

std::vector<std::string> Cut(std::string_view text,
                             std::size_t (*end_of_gap)(std::string_view, std::size_t)) {
  std::vector<std::string> pieces(1);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = end_of_gap(text, at);
    if (end > at)
      pieces.emplace_back();
    else
      pieces.back() += text[at];
    at = std::max(end, at + 1);
  }
  return pieces;
}

bool IsAnyValue(const Json& expected) {
  if (!expected.is_string()) return false;
  const auto& text = expected.get_ref<const std::string&>();
  return !text.empty() && EndOfWord(text, 0) == text.size();
}

// Whether a value is what the example has.
bool Equals(const Json& value, const Json& expected) {
  if (IsAnyValue(expected)) return true;
  if (expected.is_number() && value.is_number()) {
    const double number = value, wanted = expected;
    return std::fabs(number - wanted) <= std::max(kRelativeTolerance * std::fabs(wanted), kZero);
  }
  if (expected.is_string() && value.is_string())
    return Fits(value.get<std::string>(), PiecesOfMessage(expected.get<std::string>()));
  if (value.type() != expected.type() || value.size() != expected.size()) return false;
  if (expected.is_array()) return std::equal(value.begin(), value.end(), expected.begin(), Equals);
  if (expected.is_object())
    return std::all_of(expected.items().begin(), expected.items().end(), [&](const auto& item) {
      return value.contains(item.key()) && Equals(value.at(item.key()), item.value());
    });
  return value == expected;
}

bool IsArrayOf(const Json& value, bool (Json::*is_kind)() const noexcept) {
  return value.is_array() && std::ranges::all_of(value, [&](const Json& each) { return (each.*is_kind)(); });
}

bool IsOfType(const Json& value, std::string_view type) {
  if (type == "number") return value.is_number();
  if (type == "integer") return value.is_number_integer();
  if (type == "boolean") return value.is_boolean();
  if (type == "string") return value.is_string();
  if (type == "object") return value.is_object();
  if (type == "string array") return IsArrayOf(value, &Json::is_string);
  if (type == "number array") return IsArrayOf(value, &Json::is_number);
  if (type == "object array") return IsArrayOf(value, &Json::is_object);
  throw std::logic_error("data has no type called " + std::string(type));
}

// How a record deviates from the fields that it is to have.
std::string FieldDeviation(const Json& record, const Json& fields) {
  if (!record.is_object()) return "no record: " + record.dump();
  std::size_t present = 0;
  for (const Json& field : fields) {
    const std::string name = field.at("name"), type = field.at("type");
    if (!record.contains(name)) {
      if (field.value("optional", false)) continue;
      return "no field " + name;
    }
    ++present;
    const Json& value = record.at(name);
    if (!IsOfType(value, type)) return name + " is no " + type + ": " + value.dump();
    if (!field.contains("fields")) continue;
    for (const Json& inner : value.is_array() ? value : Json::array({value}))
      if (const auto deviation = FieldDeviation(inner, field.at("fields")); !deviation.empty())
        return name + ": " + deviation;
  }
  return present == record.size() ? "" : "fields that are not told: " + record.dump();
}

std::string DataDeviation(const Json& operation, const Json& data) {
  const Json& fields = operation.at("data");
  if (fields.empty()) return data.is_null() ? "" : "data: " + data.dump();
  if (operation.value("data_is", "object") != "array") return FieldDeviation(data, fields);
  if (!data.is_array()) return "no array: " + data.dump();
  for (const Json& row : data)
    if (const auto deviation = FieldDeviation(row, fields); !deviation.empty()) return deviation;
  return "";
}

bool IsTold(const Json& messages, const std::string& text) {
  return std::ranges::any_of(
      messages, [&](const Json& message) { return Fits(text, PiecesOfMessage(message.get<std::string>())); });
}

}  // namespace

const Json& Families() {
  static const Json families = [] {
    std::ifstream stream(VEK_CATALOGUE);
    return Json::parse(stream).at("families");
  }();
  return families;
}

const std::vector<Entry>& Entries() {
  static const std::vector<Entry> entries = [] {
    std::vector<Entry> read;
    for (const Json& family : Families())
      for (const Json& operation : family.at("operations"))
        read.push_back({family.at("name"), operation.at("name"), operation});
    return read;
  }();
  return entries;
}

std::vector<std::string> PiecesOfMessage(std::string_view message) {
  return Cut(message, EndOfWord);
}

std::vector<std::string> PiecesOfFormat(std::string_view format) {
  return Cut(format, EndOfConversion);
}

bool Fits(std::string_view text, const std::vector<std::string>& pieces) {
  if (pieces.size() == 1) return text == pieces.front();
  if (!text.starts_with(pieces.front())) return false;
  text.remove_prefix(pieces.front().size());
  for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
    const std::size_t found = text.find(pieces[i]);
    if (found == std::string_view::npos) return false;
    text.remove_prefix(found + pieces[i].size());
  }
  return text.ends_with(pieces.back());
}

bool IsToldFailure(const Entry& entry, const Answer& answer) {
  return !answer.success && answer.data.is_null() &&
         IsTold(entry.operation.at("messages").at("failure"), answer.message);
}

std::string Deviation(const Entry& entry, const Answer& answer) {
  const Json& example = entry.operation.at("example");
  const Json& successes = entry.operation.at("messages").at("success");
  if (!Fits(answer.message, PiecesOfMessage(example.at("message").get<std::string>())))
    return "the message is: " + answer.message;
  // What never succeeds shows a failure.
  if (successes.empty()) return IsToldFailure(entry, answer) ? "" : "no failure that is told";
  if (!answer.success) return "it fails";
  if (!IsTold(successes, answer.message)) return "not among the messages: " + answer.message;
  if (auto deviation = DataDeviation(entry.operation, answer.data); !deviation.empty()) return deviation;
  const Json expected = example.value("data", Json());
  return Equals(answer.data, expected) ? "" : "the data is: " + answer.data.dump();
}

Json WithReplaced(const Json& value, std::string_view from, std::string_view to) {
  if (value.is_string()) {
    std::string text = value;
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
      text.replace(at, from.size(), to);
    return text;
  }
  Json replaced = value;
  for (Json& inner : replaced)
    if (inner.is_structured() || inner.is_string()) inner = WithReplaced(inner, from, to);
  return replaced;
}

}  // namespace vek::catalogue
