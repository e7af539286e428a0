#include "deploy/helper/product.h"

#include "addin/text/utf8.h"
#include "addin/text/wide_text.h"
#include "deploy/helper/resource_bytes.h"
#include "deploy/helper/resource_ids.h"

namespace vek::helper {

Version InstalledVersion() {
  return ReadVersion(VEK_PRODUCT_VERSION).value();
}

std::wstring LicenceText() {
  std::wstring text;
  const std::wstring licence = DecodeUtf8(ResourceBytes(ID_LICENCE_TEXT));
  for (const wchar_t c : Trim(licence)) {
    if (c == L'\n') text += L'\r';
    if (c != L'\r') text += c;
  }
  return text;
}

}  // namespace vek::helper
