#include "addin/ops/assembly/suppression.h"

#include <ProFeature.h>

#include "addin/host/owned.h"
#include "addin/ops/assembly/display.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/ops/common/history.h"
#include "addin/text/format.h"

namespace vek::assembly {
namespace {

// A change of an occurrence's state: the host's call with its one option, and what is said of it.
template <typename Option>
struct StateChange {
  ProError (*call)(ProSolid solid, int* ids, Option* options, int flags);
  int option;
  bool suppresses;
  const wchar_t* option_failure;
  const wchar_t* verb;
  const wchar_t* already;
};

constexpr StateChange<ProFeatureSuppressOptions> kSuppress = {
    ProFeatureWithoptionsSuppress,           0,           true,
    L"Failed to allocate suppress options.", L"suppress", L"suppressed"};
constexpr StateChange<ProFeatureResumeOptions> kResume = {
    ProFeatureWithoptionsResume, 1, false, L"Failed to allocate resume options.", L"unsuppress", L"active"};

template <typename Option>
CreoMcpOperationResult Apply(const StateChange<Option>& change, const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  OccurrenceInfo occurrence;
  if (auto found = ResolveNamedOccurrence(assembly, arguments, occurrence); !found.success) return found;
  if (occurrence.suppressed == change.suppresses)
    return MakeSuccessResult(Format(L"Occurrence '%s' is already %s.", occurrence.name, change.already));

  OwnedArray<int> ids;
  if (!ids.HoldOne(occurrence.id)) return MakeFailureResult(L"Failed to allocate feature id array.");
  OwnedArray<int> options;
  if (!options.HoldOne(change.option)) return MakeFailureResult(change.option_failure);
  const ProError status =
      change.call(static_cast<ProSolid>(assembly), ids.get(), options.template As<Option>(), 0);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(
        Format(L"Failed to %s occurrence '%s' (status=%d).", change.verb, occurrence.name, status));
  RefreshAssemblyDisplay(assembly);
  PushSuppressOccurrence(occurrence.name, change.suppresses);
  return MakeSuccessResult(Format(L"Occurrence '%s' %sed.", occurrence.name, change.verb));
}

}  // namespace

CreoMcpOperationResult SuppressOccurrence(const std::wstring& arguments) {
  return Apply(kSuppress, arguments);
}

CreoMcpOperationResult UnsuppressOccurrence(const std::wstring& arguments) {
  return Apply(kResume, arguments);
}

void RegisterSuppressionOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_suppress_occurrence", SuppressOccurrence);
  provider.RegisterOperation(L"api_assembly_unsuppress_occurrence", UnsuppressOccurrence);
}

}  // namespace vek::assembly
