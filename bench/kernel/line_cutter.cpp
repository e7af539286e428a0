#include "bench/kernel/line_cutter.h"

namespace bench::kernel {

std::optional<std::string> LineCutter::Next() {
  for (std::size_t end; (end = pending_.find('\n', searched_)) != std::string::npos;) {
    std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    searched_ = 0;
    if (line.find_first_not_of(" \t\r") != std::string::npos) return line;
  }
  searched_ = pending_.size();
  return std::nullopt;
}

}  // namespace bench::kernel
