// Answers the requests of a connection, one line each.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "bench/kernel/regenerate.h"

namespace bench::kernel {

class Requests {
 public:
  // One line of JSON for one line of JSON, without line ends. Never throws: what goes wrong is told in the
  // answer.
  std::string Answer(std::string_view line);

  const Regenerator& regenerator() const { return regenerator_; }

 private:
  nlohmann::json Carry(const nlohmann::json& request);
  nlohmann::json Export(const nlohmann::json& request);
  nlohmann::json Evaluate(const nlohmann::json& request);
  nlohmann::json Extremes(const nlohmann::json& request);

  Regenerator regenerator_;
};

}  // namespace bench::kernel
