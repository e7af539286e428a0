// What the geometry refuses: one clear sentence, which becomes the feature's reason in the answer.
#pragma once

#include <stdexcept>

namespace bench::kernel {

class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace bench::kernel
