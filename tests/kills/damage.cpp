#include "tests/kills/damage.h"

#include <algorithm>
#include <random>
#include <string_view>
#include <utility>

namespace vek::kills {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kLongestStretch = 512;

// The same numbers everywhere, which the library's distributions don't promise.
class Dice {
 public:
  std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

 private:
  std::mt19937 random_{20'260'101};
};

void TurnBit(std::string& text, Dice& dice) {
  text[dice.Below(text.size())] ^= static_cast<char>(1u << dice.Below(8));
}

void ChangeDigit(std::string& text, Dice& dice) {
  const std::size_t at = text.find_first_of(kDigits, dice.Below(text.size()));
  if (at != std::string::npos) text[at] = kDigits[dice.Below(kDigits.size())];
}

std::pair<std::size_t, std::size_t> SomeLine(const std::string& text, Dice& dice) {
  const std::size_t begin = text.find('\n', dice.Below(text.size()));
  if (begin == std::string::npos) return {0, 0};
  const std::size_t end = std::min(text.find('\n', begin + 1), text.size());
  return {begin, end - begin};
}

void DoubleLine(std::string& text, Dice& dice) {
  const auto [begin, length] = SomeLine(text, dice);
  text.insert(begin, text.substr(begin, length));
}

void DropLine(std::string& text, Dice& dice) {
  const auto [begin, length] = SomeLine(text, dice);
  text.erase(begin, length);
}

void ZeroStretch(std::string& text, Dice& dice) {
  const std::size_t begin = dice.Below(text.size());
  const std::size_t length = std::min(text.size() - begin, 1 + dice.Below(kLongestStretch));
  text.replace(begin, length, length, '\0');
}

}  // namespace

std::vector<std::string> DamagedForms(const std::string& whole, std::size_t cuts, std::size_t flips) {
  std::vector<std::string> forms;
  for (std::size_t i = 0; i < cuts; ++i) forms.push_back(whole.substr(0, whole.size() * i / cuts));
  constexpr void (*kWays[])(std::string&, Dice&) = {TurnBit, ChangeDigit, DropLine,    ChangeDigit,
                                                    TurnBit, DoubleLine,  ChangeDigit, ZeroStretch};
  Dice dice;
  for (std::size_t i = 0; i < flips; ++i) {
    std::string form = whole;
    kWays[i % std::size(kWays)](form, dice);
    forms.push_back(std::move(form));
  }
  return forms;
}

}  // namespace vek::kills
