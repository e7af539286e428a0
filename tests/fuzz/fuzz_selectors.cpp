// A selector is read by its two ends alone; a face selector is an edge selector without the bar.
#include "addin/ops/feature/selector_syntax.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring text = vek::fuzz::Widened(vek::fuzz::Bytes(data, size));
  const auto edge = vek::feature::ReadEdgeSelector(text);
  const auto face = vek::feature::ReadFaceSelector(text);
  const auto trimmed = vek::Trim(text);
  Require(face.has_value() == (edge && edge->kind != vek::feature::SelectorKind::kAlong));
  if (!edge) return 0;
  Require(edge->axis >= 0 && edge->axis <= 2);
  const auto ends = vek::feature::ReadEdgeSelector(std::wstring{trimmed.front(), trimmed.back()});
  Require(ends && ends->kind == edge->kind && ends->axis == edge->axis);
  return 0;
}
