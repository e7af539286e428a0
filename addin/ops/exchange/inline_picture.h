// A picture small enough to travel inside a result.
#pragma once

#include <string>

namespace vek::exchange {

// The picture at `path` as base64 and its media type: PNG, else JPEG, of at most 700,000 bytes. It is shrunk
// to `limit` pixels on its longer side (1600 for a limit that is not above 0), and further until it fits.
// Both outputs stay empty when it can't be read or made small enough.
void BuildInlineImage(const std::wstring& path, int limit, std::wstring& base64, std::wstring& media_type);

}  // namespace vek::exchange
