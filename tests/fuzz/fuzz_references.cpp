// The short texts by which a request names what it means: entities of a sketch, geometry of an assembly,
// edges and faces, planes, directions, formats, features, and the expressions of parameters.
//
// What is read names itself: put together again, it is read the same. A word means the same in any case and
// between blanks.
#include <algorithm>
#include <cmath>

#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/ir_references.h"
#include "addin/ops/drawing/orientation.h"
#include "addin/ops/exchange/export_text.h"
#include "addin/ops/exchange/screenshot_text.h"
#include "addin/ops/feature/feature_names.h"
#include "addin/ops/feature/pattern_words.h"
#include "addin/ops/feature/selector_syntax.h"
#include "addin/ops/parameters/expression.h"
#include "addin/ops/sketch/entity_reference.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using vek::fuzz::Require;

namespace {

void CheckEntity(const std::wstring& text) {
  namespace sketch = vek::sketch;
  sketch::EntityReference reference, again;
  std::wstring error;
  if (!sketch::ParseEntityReference(text, reference, error)) return Require(!error.empty());
  constexpr const wchar_t* kPoints[] = {L"", L"", L":start", L":end", L":center"};
  Require(reference.index >= 1 && reference.point >= sketch::kWholeEntity &&
          reference.point <= sketch::kCenterPoint);
  const std::wstring written =
      vek::Format(L"%c:%d%s", reference.letter, reference.index, kPoints[reference.point]);
  Require(sketch::ParseEntityReference(L" " + written + L"\n", again, error));
  Require(again.letter == reference.letter && again.index == reference.index &&
          again.point == reference.point);
  Require(sketch::IsPointReference(reference) == (reference.point != 1 || reference.letter == L'P'));
}

void CheckGeometry(const std::wstring& text) {
  const auto reference = vek::assembly::ParseIrRef(text);
  const std::wstring_view trimmed = vek::Trim(text);
  Require(reference.has_value() == (!trimmed.empty() && trimmed.front() != L'@'));
  if (!reference) return;
  const auto count = std::count(trimmed.begin(), trimmed.end(), L'@');
  std::wstring written = reference->occurrence;
  if (count > 0) written += L"@" + reference->kind;
  if (count > 1) written += L"@" + reference->selector;
  Require(written.size() == trimmed.size() && vek::EqualsIgnoreCase(written, trimmed));
}

void CheckSelector(const std::wstring& text) {
  using vek::feature::SelectorKind;
  const auto edge = vek::feature::ReadEdgeSelector(text);
  const auto face = vek::feature::ReadFaceSelector(text);
  Require(face.has_value() == (edge && edge->kind != SelectorKind::kAlong));
  if (!edge) return;
  Require(edge->axis >= 0 && edge->axis <= 2);
  // Its two ends alone are read.
  const auto trimmed = vek::Trim(text);
  const auto ends = vek::feature::ReadEdgeSelector(std::wstring{trimmed.front(), trimmed.back()});
  Require(ends && ends->kind == edge->kind && ends->axis == edge->axis);
}

void CheckOrientation(const std::wstring& word, const std::wstring& same) {
  double matrix[4][4], other[4][4];
  std::wstring canonical, again;
  const bool known = vek::drawing::OrientationMatrix(word, matrix, canonical);
  Require(vek::drawing::OrientationMatrix(same, other, again) == known && again == canonical);
  if (!known) return;
  Require(vek::drawing::OrientationMatrix(canonical, other, again) && again == canonical);
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      double product = 0;
      for (int k = 0; k < 3; ++k) product += matrix[i][k] * matrix[j][k];
      Require(std::fabs(product - (i == j)) < 1e-12 && matrix[i][j] == other[i][j]);
    }
}

void CheckWords(const std::wstring& word) {
  const std::wstring same = L"\t" + vek::ToLower(word) + L" ";
  CheckOrientation(word, same);
  const std::wstring view = vek::exchange::ScreenshotView(word);
  Require(vek::exchange::ScreenshotView(same) == view);
  Require(view.empty() || vek::exchange::ScreenshotView(view) == view);
  const auto* const format = vek::exchange::FindExportFormat(word);
  Require(!format || vek::exchange::FindExportFormat(format->name) == format);
  Require(vek::exchange::FindExportFormat(same) == format);

  const auto constraint = vek::assembly::FindConstraintType(word);
  Require(vek::assembly::FindConstraintType(same).has_value() == constraint.has_value());
  if (constraint) Require(!vek::assembly::ConstraintTypeWord(constraint->creo_type).starts_with(L"type_"));

  namespace feature = vek::feature;
  const std::wstring direction = feature::DirectionPlaneName(word), mirror = feature::MirrorPlaneName(word);
  Require(feature::DirectionPlaneName(direction) == direction && feature::MirrorPlaneName(mirror) == mirror);
  if (const auto pair = feature::AxisPlanePair(word)) Require(pair->first != pair->second);
  const std::wstring name = feature::NormalizedFeatureName(word);
  Require(feature::FeatureNamesEqual(word, word) && name.find(L' ') == std::wstring::npos);
  Require(feature::FeatureNamesEqual(word, name) && vek::Trim(word).size() == name.size());
}

void CheckExpression(const std::wstring& text) {
  namespace parameters = vek::parameters;
  const auto number = parameters::ParseNumber(text);
  const auto truth = parameters::ParseTruth(text);
  if (number && truth) Require(*truth == (number->number != 0));
  if (!number) return;
  Require(truth.has_value() && vek::Trim(number->unit) == number->unit);
  Require(!vek::EqualsIgnoreCase(number->unit, L"ul"));
  const std::wstring written = parameters::NumberText(number->number, number->unit);
  const auto again = parameters::ParseNumber(written);
  Require(again && again->unit == number->unit &&
          parameters::NumberText(again->number, again->unit) == written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring text = vek::fuzz::TextOf(vek::fuzz::Bytes(data, size));
  CheckEntity(text);
  CheckGeometry(text);
  CheckSelector(text);
  CheckWords(text);
  CheckExpression(text);
  return 0;
}
