// What the kernel answers, as far as every request has it in common.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace bench {

struct KernelAnswer {
  bool is_asked_for = false;         // it is JSON and bears the request's id
  std::optional<nlohmann::json> ok;  // nothing when the kernel found no sense in the request
  std::string rejection;             // its words for that
};

// Reads a line that answers the request with that id. Never throws.
KernelAnswer ReadKernelAnswer(std::string_view line, int id);

// A whole number of an answer. Throws json's own exceptions: also for one that is no int, which the library
// would convert as the compiler pleases.
int IntegerAt(const nlohmann::json& from, const char* key);

}  // namespace bench
