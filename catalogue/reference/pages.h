// The reference of the operations as pages in Markdown, made from the catalogue.
#pragma once

#include <map>
#include <set>
#include <string>

#include "bridge/json.h"

namespace vek::reference {

// The pages by file name: README.md, which lists all operations, and one for each family. `pictures` holds
// the names of the operations whose example has a picture in images/NAME.png beside the pages.
std::map<std::string, std::string> WritePages(const bridge::Json& catalogue,
                                              const std::set<std::string>& pictures);

}  // namespace vek::reference
