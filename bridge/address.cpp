#include "bridge/address.h"

#include <charconv>

namespace vek::bridge {

std::optional<Address> ReadAddress(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return std::nullopt;
  Address address;
  address.host = text.substr(0, colon);
  const std::string_view port = text.substr(colon + 1);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), address.port);
  if (error != std::errc() || end != port.data() + port.size() || address.port == 0) return std::nullopt;
  return address;
}

}  // namespace vek::bridge
