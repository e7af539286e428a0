// catalogue/operations.json as its tests read it. All texts are UTF-8.
//
// In messages and in texts of data `<word>` stands for any text; as a whole text of data, for any value.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace vek::catalogue {

// Keys stay in the order in which they are written.
using Json = nlohmann::ordered_json;

struct Entry {
  std::string family, name;
  Json operation;
};

const Json& Families();

// The operations in the order of the file.
const std::vector<Entry>& Entries();

// What lies between the `<words>` of a catalogue's message, or between the conversions (%s, %.3g) of a
// format.
std::vector<std::string> PiecesOfMessage(std::string_view message);
std::vector<std::string> PiecesOfFormat(std::string_view format);

// Whether the text consists of the pieces in their order, with any text between two of them.
bool Fits(std::string_view text, const std::vector<std::string>& pieces);

// An operation's answer.
struct Answer {
  bool success = false;
  std::string message;
  Json data;
};

// Whether a failure's message is among those of the operation.
bool IsToldFailure(const Entry& entry, const Answer& answer);

// How the answer to the entry's example deviates from what the entry says; empty when it doesn't.
std::string Deviation(const Entry& entry, const Answer& answer);

// The value with `to` for each `from` in its texts.
Json WithReplaced(const Json& value, std::string_view from, std::string_view to);

}  // namespace vek::catalogue
