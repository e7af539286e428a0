// The input is a request body. Where it is JSON by the standard, each reader gives what a strict parser
// gives; where it isn't, what is read stays inside the text. The walks in steps of sixteen characters agree
// with walks in steps of one, and what is written for JSON is read back by the strict parser.
#include <cstring>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <vector>

#include "addin/ops/exchange/export_text.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_walk.h"
#include "addin/server/json_writer.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using nlohmann::ordered_json;
using vek::fuzz::Require;

namespace {

// What the strict parser makes of a text; nothing where the two mean different things on purpose: the readers
// decode no \u, compare names as they are written, and take the first of equal names.
std::optional<ordered_json> StrictlyRead(std::wstring_view text) {
  if (text.find(L"\\u") != std::wstring_view::npos || text.find(L'\0') != std::wstring_view::npos)
    return std::nullopt;
  std::vector<std::set<std::string>> names;
  bool plain = true;
  const auto watch = [&](int, ordered_json::parse_event_t event, ordered_json& value) {
    if (event == ordered_json::parse_event_t::object_start) names.emplace_back();
    if (event == ordered_json::parse_event_t::object_end) names.pop_back();
    if (event == ordered_json::parse_event_t::key) {
      const auto name = value.get<std::string>();
      const bool escaped = vek::JsonEscape(vek::DecodeUtf8(name)).size() != vek::DecodeUtf8(name).size();
      plain = plain && !escaped && name.find('/') == std::string::npos && names.back().insert(name).second;
    }
    return true;
  };
  ordered_json value = ordered_json::parse(vek::EncodeUtf8(text), watch, false);
  if (value.is_discarded() || !plain) return std::nullopt;
  return value;
}

bool IsValueText(std::wstring_view text, const ordered_json& value) {
  return ordered_json::parse(vek::EncodeUtf8(text), nullptr, false) == value;
}

// The number that a text begins with, by the C library; none for a text that it would read otherwise.
std::optional<double> LeadingNumber(const std::string& text, bool& comparable) {
  comparable = text.find('\0') == std::string::npos && text.find('(') == std::string::npos;
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  if (end == text.c_str()) return std::nullopt;
  return number;
}

bool IsSame(double a, double b) {
  return a == b || (a != a && b != b);
}

void CompareNumber(const std::wstring& object, const std::wstring& key, const ordered_json& value) {
  constexpr double kUntouched = 0.25;
  double number = kUntouched;
  const bool read = vek::JsonReadNumber(object, key, number);
  if (value.is_number()) return Require(read && number == value.get<double>());
  if (!value.is_string()) return Require(!read && number == kUntouched);
  bool comparable = false;
  const auto expected = LeadingNumber(value.get<std::string>(), comparable);
  if (comparable) Require(read == expected.has_value() && IsSame(number, expected.value_or(kUntouched)));
}

void CompareBool(const std::wstring& object, const std::wstring& key, const ordered_json& value) {
  for (const bool otherwise : {false, true}) {
    bool expected = otherwise;
    if (value.is_boolean()) expected = value.get<bool>();
    if (value.is_number_integer() && (value == 0 || value == 1) &&
        value.dump() == vek::EncodeUtf8(vek::JsonReadRaw(object, key)))
      expected = value == 1;
    else if (value.is_number())
      continue;
    Require(vek::JsonReadBool(object, key, otherwise) == expected);
  }
}

void CompareArray(const std::wstring& object, const std::wstring& key, const ordered_json& value) {
  std::vector<std::wstring> texts, parts;
  std::vector<double> numbers;
  Require(vek::JsonReadStringArray(object, key, texts) == value.is_array());
  Require(vek::JsonReadNumberArray(object, key, numbers) == value.is_array());
  if (!value.is_array()) return Require(texts.empty() && numbers.empty());
  vek::JsonSplitArray(vek::JsonReadRaw(object, key), parts);
  Require(parts.size() == value.size() && texts.size() == value.size());
  std::size_t next_number = 0;
  bool comparable = true;
  for (std::size_t i = 0; i < value.size(); ++i) {
    Require(IsValueText(parts[i], value[i]));
    if (value[i].is_string()) {
      const auto text = value[i].get<std::string>();
      Require(vek::EncodeUtf8(texts[i]) == text);
      bool decided = false;
      const auto number = LeadingNumber(text, decided);
      comparable = comparable && decided;
      if (comparable && number)
        Require(next_number < numbers.size() && IsSame(numbers[next_number++], *number));
    } else {
      Require(texts[i] == parts[i]);
      if (comparable && value[i].is_number())
        Require(next_number < numbers.size() && numbers[next_number++] == value[i].get<double>());
    }
  }
  if (comparable) Require(next_number == numbers.size());
}

// The exports' stricter reader takes a character behind a backslash as it is.
void CompareStringList(const std::wstring& object, const std::wstring& key, const ordered_json& value) {
  std::vector<std::wstring> list;
  const bool read = vek::exchange::ReadStringList(object, key, list);
  if (vek::JsonReadRaw(object, key).find(L'\\') != std::wstring::npos) return;
  bool strings_only = value.is_array();
  for (const auto& element : value) strings_only = strings_only && element.is_string();
  Require(read == strings_only);
  if (read) Require(list.size() == value.size());
  for (std::size_t i = 0; read && i < list.size(); ++i)
    Require(vek::EncodeUtf8(list[i]) == value[i].get<std::string>());
}

void CompareObject(const std::wstring& object, const ordered_json& expected) {
  for (const auto& [name, value] : expected.items()) {
    const std::wstring key = vek::DecodeUtf8(name);
    std::int32_t index = 0;
    Require(vek::JsonFindKey(object, key, index));
    if (key.empty()) continue;  // no reader takes the empty name
    const std::wstring raw = vek::JsonReadRaw(object, key);
    Require(IsValueText(raw, value) && object.compare(static_cast<std::size_t>(index), raw.size(), raw) == 0);
    const std::wstring text = vek::JsonReadStringArgument(object, key);
    Require(vek::EncodeUtf8(text) == (value.is_string() ? value.get<std::string>() : std::string()));
    CompareNumber(object, key, value);
    CompareBool(object, key, value);
    CompareArray(object, key, value);
    CompareStringList(object, key, value);
    if (value.is_object()) CompareObject(raw, value);
  }
}

void CompareOperations(const std::wstring& body, const ordered_json& expected) {
  const auto entry = expected.find("operations");
  if (entry == expected.end() || !entry->is_object()) return;
  // The search is one through the text: it finds the first place where the word stands.
  const std::wstring word = L"\"operations\"";
  if (body.find(word) != body.rfind(word)) return;
  const std::wstring_view object = vek::JsonFindAnywhere(body, L"operations");
  Require(IsValueText(object, *entry));
  for (const auto& arguments : *entry)
    if (!arguments.is_object()) return;  // arguments of another kind end at the first comma
  vek::OperationList operations;
  std::wstring error;
  Require(vek::ParseOperationsObject(object, operations, error) == !entry->empty() && error.empty());
  Require(operations.size() == entry->size());
  std::size_t next = 0;
  for (const auto& [name, arguments] : entry->items()) {
    const vek::OperationCall& call = operations[next++];
    Require(vek::EncodeUtf8(call.name) == name && IsValueText(call.arguments, arguments));
    CompareObject(call.arguments, arguments);
  }
}

// Any text at all: nothing comes out that didn't go in.
void ReadEverything(const std::wstring& object, const std::wstring& key) {
  std::int32_t index = 0;
  const bool found = vek::JsonFindKey(object, key, index);
  Require(found ? index > 0 && index < static_cast<std::int32_t>(object.size()) : index == -1);
  Require(vek::JsonReadStringArgument(object, key).size() <= object.size());
  Require(object.find(vek::JsonReadRaw(object, key)) != std::wstring::npos);
  double number = 0.25;
  if (!vek::JsonReadNumber(object, key, number)) Require(number == 0.25);
  Require(found || vek::JsonReadBool(object, key, true));

  std::vector<std::wstring> texts;
  std::vector<double> numbers;
  const bool is_array = vek::JsonReadStringArray(object, key, texts);
  Require(vek::JsonReadNumberArray(object, key, numbers) == is_array);
  Require(numbers.size() <= texts.size());
  vek::exchange::ReadStringList(object, key, texts);
  vek::JsonSplitArray(vek::JsonReadRaw(object, key), texts);
  for (const std::wstring& element : texts)
    Require(!element.empty() && object.find(element) != std::wstring::npos);
}

void ReadBatch(const std::wstring& body) {
  vek::OperationList operations;
  std::wstring error;
  const bool parsed =
      vek::ParseOperationsObject(vek::JsonFindAnywhere(body, L"operations"), operations, error);
  Require(!parsed || (error.empty() && !operations.empty()));
  for (const auto& [name, arguments] : operations) {
    Require(body.find(name) != std::wstring::npos && body.find(arguments) != std::wstring::npos);
    for (const wchar_t* const key : {L"a", L"", L"name"}) ReadEverything(arguments, key);
  }
  ReadEverything(body, L"a");
}

std::int32_t MatchByHand(std::wstring_view text, std::size_t at, wchar_t open, wchar_t close) {
  int depth = 0;
  bool in_string = false;
  for (; at < text.size(); ++at) {
    const wchar_t c = text[at];
    if (in_string && c == L'\\') {
      ++at;
      continue;
    }
    if (c == L'"') in_string = !in_string;
    if (in_string) continue;
    if (c == open) ++depth;
    if (c == close && --depth == 0) return static_cast<std::int32_t>(at);
  }
  return -1;
}

void CheckWalks(std::wstring_view text) {
  constexpr std::size_t kStarts = 64;
  std::size_t starts = 0;
  for (std::size_t i = 0; i < text.size() && starts < kStarts; ++i) {
    const auto index = static_cast<std::int32_t>(i);
    const std::int32_t behind = vek::JsonSkipBlanks(text, index);
    Require(vek::Trim(text.substr(i, static_cast<std::size_t>(behind - index))).empty());
    if (!vek::json::OpensBracket(text[i])) continue;
    ++starts;
    const wchar_t close = vek::json::ClosingBracket(text[i]);
    Require(vek::JsonMatchBracket(text, index, text[i], close) == MatchByHand(text, i, text[i], close));
  }
}

void CheckWriting(const std::wstring& text) {
  const std::wstring escaped = L"\"" + vek::JsonEscape(text) + L"\"";
  Require(ordered_json::parse(vek::EncodeUtf8(escaped)).get<std::string>() == vek::EncodeUtf8(text));
  // Control characters outside the short escapes come back undecoded; the end of the string must not move.
  Require(vek::JsonReadRaw(L"{\"k\":" + escaped + L"}", L"k") == escaped);
  Require(ordered_json::parse(vek::EncodeUtf8(vek::EncodeError(text))).at("error") == vek::EncodeUtf8(text));
  const std::wstring results = vek::EncodeBatchResults({{text, vek::MakeSuccessResult(text)}, {L"", {}}});
  const auto read = ordered_json::parse(vek::EncodeUtf8(results)).at("results");
  Require(read.size() == (text.empty() ? 1 : 2));
  Require(text.empty() || read.at(vek::EncodeUtf8(text)).at("message") == vek::EncodeUtf8(text));
  const std::wstring health = vek::EncodeHealth({text, text}, 4001);
  Require(ordered_json::parse(vek::EncodeUtf8(health)).at("registeredOperations").at(1) ==
          vek::EncodeUtf8(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring body = vek::fuzz::TextOf(vek::fuzz::Bytes(data, size));
  CheckWriting(body);
  CheckWalks(body);
  ReadBatch(body);
  const std::wstring trimmed(vek::Trim(body));
  if (const auto expected = StrictlyRead(trimmed); expected && expected->is_object()) {
    CompareObject(trimmed, *expected);
    CompareOperations(trimmed, *expected);
  }
  return 0;
}
