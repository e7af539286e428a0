// vek-mcp: a Model Context Protocol server that offers the add-in's operations to an assistant.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "bridge/addin_link.h"
#include "bridge/byte_streams.h"
#include "bridge/catalogue.h"
#include "bridge/options.h"
#include "bridge/server.h"

namespace vek::bridge {
namespace {

constexpr int kMisused = 2;

void WriteLine(const std::string& line) {
  std::cout << line << '\n' << std::flush;
  // With nobody left to read, what was asked isn't wanted any more either.
  if (!std::cout) std::_Exit(EXIT_FAILURE);
}

int Serve(const Address& address) {
  AddinLink creo(address);
  Server server(BuiltInCatalogue(), creo, WriteLine);
  std::cerr << VersionText(address);
  for (std::string line; std::getline(std::cin, line);) server.Take(line);
  server.Finish();
  return EXIT_SUCCESS;
}

int Run(const Options& options) {
  switch (options.task) {
    case Options::Task::kShowHelp:
      std::cout << HelpText(options.address);
      return EXIT_SUCCESS;
    case Options::Task::kShowVersion:
      std::cout << VersionText(options.address);
      return EXIT_SUCCESS;
    case Options::Task::kComplain:
      std::cerr << options.complaint << '\n';
      return kMisused;
    case Options::Task::kServe:
      break;
  }
  return Serve(options.address);
}

}  // namespace
}  // namespace vek::bridge

int main(int count, char** values) {
  try {
    vek::bridge::UseByteStreams();
    return vek::bridge::Run(
        vek::bridge::ReadOptions(std::vector<std::string_view>(values + 1, values + count)));
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
