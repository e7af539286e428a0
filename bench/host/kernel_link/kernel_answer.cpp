#include "bench/host/kernel_link/kernel_answer.h"

#include <cstdint>
#include <utility>

namespace bench {
namespace {

using nlohmann::json;

// Every task answers with an object, and a refusal says why in words.
bool IsResult(const json& ok) {
  if (!ok.is_object()) return false;
  const auto refused = ok.find("refused");
  return refused == ok.end() || refused->is_string();
}

}  // namespace

KernelAnswer ReadKernelAnswer(std::string_view line, int id) {
  KernelAnswer read;
  json answer = json::parse(line, nullptr, false);
  if (!answer.is_object() || !answer.contains("id") || answer["id"] != id) return read;
  read.is_asked_for = true;
  if (const auto ok = answer.find("ok"); ok != answer.end() && IsResult(*ok)) {
    read.ok = std::move(*ok);
    return read;
  }
  const auto error = answer.find("error");
  if (error != answer.end() && error->is_string()) read.rejection = error->get<std::string>();
  if (read.rejection.empty()) read.rejection = line;
  return read;
}

int IntegerAt(const json& from, const char* key) {
  const json& value = from.at(key);
  const bool fits = value.is_number_unsigned()
                        ? std::in_range<int>(value.get<std::uint64_t>())
                        : value.is_number_integer() && std::in_range<int>(value.get<std::int64_t>());
  if (!fits) throw json::type_error::create(302, "'" + std::string(key) + "' must be a whole number", &value);
  return value.get<int>();
}

}  // namespace bench
