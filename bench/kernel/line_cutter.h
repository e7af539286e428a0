// Cuts what arrives on the wire into lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace bench::kernel {

class LineCutter {
 public:
  void Add(std::string_view bytes) { pending_.append(bytes); }

  // The next whole line that isn't blank, without its end; nothing until more bytes come.
  std::optional<std::string> Next();

 private:
  std::string pending_;
  std::size_t searched_ = 0;  // so much of it has no line end
};

}  // namespace bench::kernel
