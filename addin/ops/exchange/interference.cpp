#include "addin/ops/exchange/interference.h"

#include <algorithm>

#include "addin/host/owned.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/exchange/model_measures.h"
#include "addin/text/format.h"

namespace vek::exchange {
namespace {

// The characters behind "components" are what clients have always been sent.
constexpr const wchar_t* kTooFewComponents =
    L"Assembly has fewer than 2 components \u00e2\u20ac\u201d no interference possible.";

std::wstring OccurrenceNameOfSelection(ProMdl assembly, ProSelection selection) {
  if (selection == nullptr) return {};
  ProAsmcomppath path{};
  if (ProSelectionAsmcomppathGet(selection, &path) != PRO_TK_NO_ERROR || path.table_num < 1) return {};
  std::vector<assembly::OccurrenceInfo> occurrences;
  if (!assembly::CollectOccurrences(assembly, occurrences).success) return {};
  const auto named = std::ranges::find(occurrences, path.comp_id_table[0], &assembly::OccurrenceInfo::id);
  return named == occurrences.end() ? std::wstring() : named->name;
}

std::wstring NameOrUnknown(ProMdl assembly, ProSelection selection) {
  std::wstring name = OccurrenceNameOfSelection(assembly, selection);
  return name.empty() ? L"unknown" : name;
}

InterferenceRecord RecordOf(ProMdl assembly, const ProInterferenceInfo& info) {
  InterferenceRecord record;
  record.occ1 = NameOrUnknown(assembly, info.selection_1);
  record.occ2 = NameOrUnknown(assembly, info.selection_2);
  double volume = 0;
  if (info.interf_data != nullptr &&
      ProFitInterferencevolumeCompute(info.interf_data, &volume) == PRO_TK_NO_ERROR)
    record.volume_cm3 = VolumeInCm3(assembly, volume);
  return record;
}

}  // namespace

CreoMcpOperationResult CheckInterference(ProMdl assembly, std::vector<InterferenceRecord>& list) {
  list.clear();
  std::vector<assembly::OccurrenceInfo> occurrences;
  if (auto collected = assembly::CollectOccurrences(assembly, occurrences); !collected.success)
    return collected;
  const auto active = std::ranges::count(occurrences, false, &assembly::OccurrenceInfo::suppressed);
  if (active < 2) return MakeSuccessResult(kTooFewComponents);

  OwnedInterferences interferences;
  const ProError status =
      ProFitGlobalinterferenceCompute(static_cast<ProSolid>(assembly), static_cast<ProFitComputeSetup>(0),
                                      PRO_B_FALSE, PRO_B_FALSE, PRO_B_FALSE, interferences.out());
  if (status == PRO_TK_E_NOT_FOUND || !interferences) return MakeSuccessResult(L"No interference detected.");
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Interference check failed (status=%d).", status));

  int count = 0;
  if (ProArraySizeGet(interferences.get(), &count) != PRO_TK_NO_ERROR) count = 0;
  for (int i = 0; i < count; ++i) list.push_back(RecordOf(assembly, interferences.get()[i]));
  return MakeSuccessResult();
}

}  // namespace vek::exchange
