// Where an installation keeps the files that it comes with.
#pragma once

#include <string>

namespace bench {

// The directory that the environment's PRO_DIRECTORY names; empty when it names none.
std::wstring InstallationDirectory();

// Its folder of texts, of its own and of add-ins; empty when there is no installation.
std::wstring TextDirectory();

}  // namespace bench
