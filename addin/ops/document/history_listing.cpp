#include "addin/ops/document/history_listing.h"

#include <ProMdl.h>

#include "addin/ops/common/history.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/wide_text.h"

namespace vek::document {
namespace {

constexpr int kDefaultCount = 10;

std::wstring NewestLabels(const std::deque<HistoryEntry>& stack, int count) {
  std::wstring array = L"[";
  for (auto entry = stack.rbegin(); entry != stack.rend() && count > 0; ++entry, --count) {
    if (array.size() > 1) array += L',';
    array += L'"' + JsonEscape(entry->label) + L'"';
  }
  return array + L"]";
}

}  // namespace

CreoMcpOperationResult GetHistory(const std::wstring& arguments) {
  ProMdl model = nullptr;
  if (ProMdlCurrentGet(&model) != PRO_TK_NO_ERROR || model == nullptr)
    return MakeFailureResult(L"No active document.");
  int count = 0;
  if (auto read = ReadHistoryCount(arguments, kDefaultCount, count); !read.success) return read;

  std::wstring stack = JsonReadStringArgument(arguments, L"stack");
  if (stack.empty()) stack = L"undo";
  stack = ToLower(Trim(stack));
  const bool both = stack == L"both";
  if (!both && stack != L"undo" && stack != L"redo")
    return MakeFailureResult(LR"('stack' must be "undo", "redo", or "both".)");

  std::wstring data = L"{";
  if (stack != L"redo") data += LR"("undo":)" + NewestLabels(UndoStack(), count);
  if (both) data += L",";
  if (stack != L"undo") data += LR"("redo":)" + NewestLabels(RedoStack(), count);
  data += L"}";
  return MakeSuccessResult(
      L"Vek session history (feature creates, suppress toggles, parameter sets, assembly moves).", data);
}

}  // namespace vek::document
