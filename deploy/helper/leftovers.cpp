#include "deploy/helper/leftovers.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "addin/platform/files.h"
#include "deploy/helper/file_names.h"

namespace vek::helper {

std::wstring FreeAsidePath(const Installation& installation, const std::wstring& name) {
  for (unsigned number = 1;; ++number) {
    const auto path = installation.File(AsideName(name, number));
    if (!PathExists(path)) return path;
  }
}

void TidyLeftovers(const Installation& installation) {
  std::vector<std::wstring> names;
  FilesMatching(installation.File(L"*.old-*"), names);
  std::vector<Aside> asides;
  for (const std::wstring& name : names)
    if (auto aside = ReadAsideName(name)) asides.push_back(std::move(*aside));
  std::ranges::sort(asides, std::ranges::greater{}, &Aside::number);
  for (const Aside& aside : asides) {
    const auto path = installation.File(AsideName(aside.name, aside.number));
    if (PathExists(installation.File(aside.name)))
      DeleteFileAt(path);
    else
      MoveFileTo(path, installation.File(aside.name));
  }
}

}  // namespace vek::helper
