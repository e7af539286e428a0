#include "addin/ops/sketch/feature_name.h"

#include <ProModelitem.h>

#include <algorithm>

#include "addin/host/text_buffer.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

// What the host answers when the name is the present one already.
constexpr auto kNoChange = static_cast<ProError>(-12);

// The form in which names are compared: the host may turn a blank into an underscore.
std::wstring Comparable(std::wstring_view name) {
  std::wstring comparable = ToUpper(Trim(name));
  std::replace(comparable.begin(), comparable.end(), L' ', L'_');
  return comparable;
}

bool SameName(std::wstring_view a, std::wstring_view b) {
  return Comparable(a) == Comparable(b);
}

bool IsNamed(ProError status) {
  return status == PRO_TK_NO_ERROR || status == kNoChange;
}

CreoMcpOperationResult NameTaken(const SketchSession& session, int other_id) {
  for (const auto& [name, other] : SketchSessionTable()) {
    if (other.model == session.model && other.has_feature && other.feature.id == other_id)
      return MakeFailureResult(
          Format(L"Cannot rename sketch feature to '%s': that name is already used by another sketch in this "
                 L"session (feature id=%d).",
                 session.name, other_id));
  }
  return MakeFailureResult(Format(
      L"Cannot rename sketch feature to '%s': that name is already used by an existing feature (id=%d). "
      L"Choose a different sketch name.",
      session.name, other_id));
}

// Sets the name. A refusal doesn't count when the feature turns out to have the name all the same.
ProError Rename(const SketchSession& session, ProName wanted) {
  ProFeature feature = session.feature;
  const ProError status = ProModelitemNameSet(&feature, wanted);
  if (IsNamed(status)) return status;
  const bool equal_now = SameName(TrimmedFeatureName(feature), wanted);
  const bool found_now = FeatureIdOfName(session.model, wanted) == feature.id;
  return equal_now || found_now ? PRO_TK_NO_ERROR : status;
}

}  // namespace

int FeatureIdOfName(ProMdl model, std::wstring_view name) {
  ProName buffer;
  CopyCut(buffer, name);
  ProModelitem item{};
  item.id = -1;
  if (ProModelitemByNameInit(model, kFeatureItem, buffer, &item) != PRO_TK_NO_ERROR) return -1;
  return item.id;
}

std::wstring TrimmedFeatureName(const ProFeature& feature) {
  ProFeature item = feature;
  ProName name{};
  if (ProModelitemNameGet(&item, name) != PRO_TK_NO_ERROR) return {};
  return std::wstring(Trim(BufferText(name)));
}

CreoMcpOperationResult NameSketchFeature(const SketchSession& session) {
  ProName wanted;
  CopyCut(wanted, session.name);
  if (const int other_id = FeatureIdOfName(session.model, wanted);
      other_id != -1 && other_id != session.feature.id)
    return NameTaken(session, other_id);

  const std::wstring present = TrimmedFeatureName(session.feature);
  const ProError status = SameName(present, wanted) ? PRO_TK_NO_ERROR : Rename(session, wanted);
  LogOperation(Format(L"Sketch Commit: rename feature id=%d to '%s' (was '%s') status=%d", session.feature.id,
                      session.name, present, status));
  if (IsNamed(status)) return MakeSuccessResult();
  return MakeFailureResult(
      Format(L"Sketch created but could not rename feature to '%s' (status=%d).", session.name, status));
}

}  // namespace vek::sketch
