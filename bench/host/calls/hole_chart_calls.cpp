// The calls of ProElement.h that look threads up in the hole charts.
#include <ProElement.h>

#include <algorithm>

#include "bench/host/calls/element_handles.h"
#include "bench/host/features/hole_charts.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"
#include "bench/host/text.h"

namespace bench {
namespace {

constexpr int kHole = 911;
constexpr int kSeriesElement = 1356;
constexpr int kScrewSizeElement = 1358;

// What is needed of a hole's tree, once the caller's arguments make sense.
struct ThreadElements {
  ProError status = PRO_TK_NO_ERROR;
  int* series = nullptr;
  int* screw_size = nullptr;
};

ThreadElements ThreadElementsOf(ProElement tree, ProMdl model, const wchar_t* name) {
  if (!tree || !name || !*name || !LiveSolid(model)) return {PRO_TK_BAD_INPUTS};
  OpenElement* open = UseElement(tree);
  if (!open) return {PRO_TK_INVALID_PTR};
  const ElementNode* type = open->node->Child(387);
  const auto* value = type ? std::get_if<int>(&type->value) : nullptr;
  ElementNode* parameters = open->node->Child(1671);
  if (!value || *value != kHole || !parameters) return {PRO_TK_BAD_INPUTS};
  ElementNode* series = parameters->Child(kSeriesElement);
  ElementNode* screw_size = parameters->Child(kScrewSizeElement);
  if (!series || !screw_size) return {PRO_TK_BAD_INPUTS};
  ThreadElements found{PRO_TK_NO_ERROR, std::get_if<int>(&series->value),
                       std::get_if<int>(&screw_size->value)};
  if (!found.series || !found.screw_size) found.status = PRO_TK_BAD_INPUTS;
  return found;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProElementHoleThreadSeriesSet(ProElement tree, ProMdl model, wchar_t* series) {
  HOST_CALL(tree, model, static_cast<const wchar_t*>(series)) {
    const ThreadElements elements = ThreadElementsOf(tree, model, series);
    if (elements.status != PRO_TK_NO_ERROR) return elements.status;
    const auto charts = FindHoleCharts();
    const auto index = charts ? FindSeries(*charts, series) : std::nullopt;
    if (!index) return PRO_TK_E_NOT_FOUND;
    *elements.series = *index;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProElementHoleScrewSizeSet(ProElement tree, ProMdl model, wchar_t* screw_size) {
  HOST_CALL(tree, model, static_cast<const wchar_t*>(screw_size)) {
    const ThreadElements elements = ThreadElementsOf(tree, model, screw_size);
    if (elements.status != PRO_TK_NO_ERROR) return elements.status;
    const auto charts = FindHoleCharts();
    const auto series = static_cast<std::size_t>(*elements.series);
    if (!charts || series >= charts->series.size()) return PRO_TK_E_NOT_FOUND;
    const auto sizes = ScrewSizes(*charts, series);
    const auto found = std::ranges::find_if(
        sizes, [&](const std::wstring& size) { return EqualsIgnoringCase(size, screw_size); });
    if (found == sizes.end()) return PRO_TK_E_NOT_FOUND;
    *elements.screw_size = static_cast<int>(found - sizes.begin());
    return PRO_TK_NO_ERROR;
  };
}
