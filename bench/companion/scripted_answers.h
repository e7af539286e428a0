// What the companion answers, line after line of a file that a test or a user has written.
#pragma once

#include <string>

namespace bench::companion {

struct ScriptedAnswer {
  enum class Manner {
    kPlain,
    kStall,    // no answer within any patience
    kHalf,     // the first half of its bytes, and no more within any patience
    kClose,    // the connection is closed without one
    kChunked,  // the body comes in chunks that cut its characters in two
  };
  Manner manner = Manner::kPlain;
  int status = 200;
  std::string body;
};

// The answer in line `number`, from 0 on, of the file: a status and a body, `stall`, `close`, or `half` or
// `chunked` with a body. Status 200 without a body for an empty line, and where there is no such line or no
// file.
ScriptedAnswer AnswerInLine(const std::string& file, int number);

}  // namespace bench::companion
