#include "addin/ops/assembly/poses.h"

#include <ProFeature.h>
#include <ProMatrix.h>

#include "addin/text/format.h"

namespace vek::assembly {

CreoMcpOperationResult ComponentPathFor(ProMdl assembly, const OccurrenceInfo& info, ProAsmcomppath& path) {
  ProIdTable ids{};
  ids[0] = info.id;
  const ProError status = ProAsmcomppathInit(static_cast<ProSolid>(assembly), ids, 1, &path);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to build component path for '%s' (status=%d).", info.name, status));
  return MakeSuccessResult();
}

CreoMcpOperationResult RefreshOccurrence(ProMdl assembly, OccurrenceInfo& info) {
  ProFeature feature{};
  const ProError status = ProFeatureInit(static_cast<ProSolid>(assembly), info.id, &feature);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to refresh component handle id=%d (status=%d).", info.id, status));
  info.comp = feature;
  return MakeSuccessResult();
}

CreoMcpOperationResult ReadOccurrencePose(ProMdl assembly, const OccurrenceInfo& info, Pose& pose) {
  pose = Pose();
  ProAsmcomppath path{};
  if (auto built = ComponentPathFor(assembly, info, path); !built.success) return built;
  if (ProAsmcomppathTrfGet(&path, PRO_B_TRUE, pose.matrix) == PRO_TK_NO_ERROR) return MakeSuccessResult();
  ProAsmcomp component = info.comp;
  if (ProAsmcompPositionGet(&component, pose.matrix) != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to read position for occurrence '%s'.", info.name));
  return MakeSuccessResult();
}

ProError ReadComponentPosition(const ProAsmcomp& comp, Pose& pose) {
  pose = Pose();
  ProAsmcomp component = comp;
  return ProAsmcompPositionGet(&component, pose.matrix);
}

Pose TranslationMatrix(const Translation& to) {
  ProVector x_axis = {1, 0, 0};
  ProVector y_axis = {0, 1, 0};
  ProVector z_axis = {0, 0, 1};
  ProPoint3d origin = {to.x, to.y, to.z};
  Pose pose;
  if (ProMatrixInit(x_axis, y_axis, z_axis, origin, pose.matrix) == PRO_TK_NO_ERROR) return pose;
  return TranslationInColumn(to);
}

}  // namespace vek::assembly
