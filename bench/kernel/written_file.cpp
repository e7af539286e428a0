#include "bench/kernel/written_file.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "creokernel-XXXXXX").string();
  if (!mkdtemp(name.data())) throw Refusal("There is no room for a temporary file.");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

}  // namespace bench::kernel
