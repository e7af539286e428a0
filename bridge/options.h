// The program's command line.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "bridge/address.h"

namespace vek::bridge {

struct Options {
  enum class Task { kServe, kShowHelp, kShowVersion, kComplain };
  Task task = Task::kServe;
  Address address;
  std::string complaint;
};

Options ReadOptions(std::span<const std::string_view> arguments);

std::string HelpText(const Address& address);
std::string VersionText(const Address& address);

}  // namespace vek::bridge
