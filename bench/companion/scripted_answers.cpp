#include "bench/companion/scripted_answers.h"

#include <fstream>
#include <sstream>

namespace bench::companion {

ScriptedAnswer AnswerInLine(const std::string& file, int number) {
  std::ifstream lines(file, std::ios::binary);
  std::string line;
  for (int i = 0; i <= number; ++i)
    if (!std::getline(lines, line)) return {};
  if (line.ends_with('\r')) line.pop_back();
  std::istringstream words(line);
  std::string word;
  words >> word >> std::ws;
  ScriptedAnswer answer;
  std::getline(words, answer.body);
  if (word == "stall") {
    answer.manner = ScriptedAnswer::Manner::kStall;
  } else if (word == "half") {
    answer.manner = ScriptedAnswer::Manner::kHalf;
  } else if (word == "close") {
    answer.manner = ScriptedAnswer::Manner::kClose;
  } else if (word == "chunked") {
    answer.manner = ScriptedAnswer::Manner::kChunked;
  } else if (!word.empty()) {
    answer.status = std::atoi(word.c_str());
  }
  return answer;
}

}  // namespace bench::companion
