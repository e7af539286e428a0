#include "addin/ops/drawing/drawing_names.h"

#include "addin/text/format.h"

namespace vek::drawing {
namespace {

constexpr unsigned kDrawingTries = 25;
constexpr std::size_t kNameLength = 31;
constexpr int kSectionTries = 200;
constexpr int kLetters = 26;
constexpr unsigned kSectionClock = 100000;

std::wstring SectionName(int index) {
  if (index < kLetters) return Format(L"%c", static_cast<wchar_t>(L'A' + index));
  return Format(L"S%d", index - kLetters + 1);
}

}  // namespace

std::wstring FreeDrawingName(unsigned tick, const NameTaken& taken) {
  std::wstring name;
  for (unsigned i = 0; i < kDrawingTries; ++i) {
    name = Format(L"VEK_DRW_%u", tick + i).substr(0, kNameLength);
    if (!taken(name)) break;
  }
  return name;
}

std::wstring FreeSectionName(unsigned tick, const NameTaken& taken) {
  for (int i = 0; i < kSectionTries; ++i)
    if (std::wstring name = SectionName(i); !taken(name)) return name;
  return Format(L"S%u", tick % kSectionClock);
}

std::wstring TemplateNameByHand(std::wstring_view path) {
  // npos + 1 is 0: without a separator nothing is cut.
  std::wstring_view name = path.substr(path.find_last_of(L"\\/") + 1);
  const auto dot = name.rfind(L'.');
  if (dot != std::wstring_view::npos && dot > 0) name = name.substr(0, dot);
  return std::wstring(name);
}

}  // namespace vek::drawing
