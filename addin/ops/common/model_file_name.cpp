// The half of the paths that asks the host; model_paths.cpp stays free of the toolkit.
#include <ProUtil.h>

#include "addin/host/text_buffer.h"
#include "addin/ops/common/model_paths.h"

namespace vek {

bool ParseModelFileName(std::wstring_view path, std::wstring& directory, std::wstring& name,
                        std::wstring& extension) {
  directory.clear();
  name.clear();
  extension.clear();
  ProPath path_buffer;
  if (!CopyWhole(path_buffer, path)) return false;

  ProPath directory_buffer{};
  ProMdlName name_buffer{};
  ProMdlExtension extension_buffer{};
  int version = 0;
  if (ProFileMdlnameParse(path_buffer, directory_buffer, name_buffer, extension_buffer, &version) !=
      PRO_TK_NO_ERROR)
    return ParseModelFileNameByHand(path, directory, name, extension);

  directory = BufferText(directory_buffer);
  name = BufferText(name_buffer);
  extension = BufferText(extension_buffer);
  return !name.empty();
}

}  // namespace vek
