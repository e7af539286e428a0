#include "bridge/options.h"

#include "bridge/version.h"

namespace vek::bridge {
namespace {

Options Complaint(std::string text) {
  Options options;
  options.task = Options::Task::kComplain;
  options.complaint = std::move(text);
  return options;
}

}  // namespace

Options ReadOptions(std::span<const std::string_view> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == "--help" || arguments[i] == "-h") {
      options.task = Options::Task::kShowHelp;
    } else if (arguments[i] == "--version") {
      options.task = Options::Task::kShowVersion;
    } else if (arguments[i] == "--address") {
      const auto address = i + 1 < arguments.size() ? ReadAddress(arguments[++i]) : std::nullopt;
      if (!address) return Complaint("--address needs HOST:PORT, for instance 127.0.0.1:4001.");
      options.address = *address;
    } else {
      return Complaint("Unknown argument: " + std::string(arguments[i]) + ". --help tells what there is.");
    }
  }
  return options;
}

std::string HelpText(const Address& address) {
  return "vek-mcp offers the operations of VekCreoAddin to an assistant.\n\n"
         "It speaks the Model Context Protocol on standard input and output; an assistant's program "
         "starts it.\n\n"
         "  --address HOST:PORT  where the add-in listens (" +
         address.Text() +
         ")\n"
         "  --version            prints the version and the address\n"
         "  --help               prints this\n";
}

std::string VersionText(const Address& address) {
  return std::string("vek-mcp ") + kVersion + "\nThe add-in is asked at " + address.Text() + ".\n";
}

}  // namespace vek::bridge
