// creokernel PORT: the geometry service of the bench. Connects to 127.0.0.1:PORT, answers until the
// connection closes.

#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>

#include "bench/kernel/connection.h"
#include "bench/kernel/guard.h"
#include "bench/kernel/requests.h"

int main(int count, char** arguments) {
  int port = 0;
  const char* text = count == 2 ? arguments[1] : "";
  const char* end = text + std::strlen(text);
  const auto parsed = std::from_chars(text, end, port);
  if (parsed.ec != std::errc() || parsed.ptr != end || port < 1 || port > 65535) {
    std::fprintf(stderr, "usage: creokernel PORT\n");
    return 2;
  }
  bench::kernel::PrepareToolkit();
  try {
    bench::kernel::Requests requests;
    bench::kernel::Connection connection(port);
    connection.Serve([&requests](std::string_view line) { return requests.Answer(line); });
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "creokernel: %s\n", failure.what());
    return 1;
  }
  return 0;
}
