// The texts of an add-in: its message files.
#pragma once

#include <string>

namespace bench {

// The text behind a key of a message file, which is looked for in the installation's folder of texts. A key
// that isn't there, or whose file isn't, stands for itself.
//
// A message takes four lines: the key, the text in the add-in's own language, the text in the user's, which
// may be empty or a number sign, and a line that is of no use here. Lines that begin with a number sign where
// a key would stand are passed over.
std::wstring MessageText(const std::wstring& file, const std::string& key);

}  // namespace bench
