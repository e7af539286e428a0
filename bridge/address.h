// Where the add-in listens.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vek::bridge {

struct Address {
  std::string host = "127.0.0.1";
  std::uint16_t port = 4001;
  std::string Text() const { return host + ":" + std::to_string(port); }
};

// Reads HOST:PORT; nothing when it is none.
std::optional<Address> ReadAddress(std::string_view text);

}  // namespace vek::bridge
