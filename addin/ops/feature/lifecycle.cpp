#include "addin/ops/feature/lifecycle.h"

#include <ProFeature.h>
#include <ProWindows.h>

#include <vector>

#include "addin/host/owned.h"
#include "addin/ops/common/history.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::feature {
namespace {

// A change of a feature's state: the host's call with its one option, and what is said of it.
template <typename Option>
struct StateChange {
  ProError (*call)(ProSolid solid, int* ids, Option* options, int flags);
  int option;
  const wchar_t* option_failure;
  const wchar_t* verb;
  const wchar_t* done;
};

constexpr StateChange<ProFeatureDeleteOptions> kDelete = {
    ProFeatureWithoptionsDelete, 1, L"Failed to allocate feature delete options.", L"delete", L"Deleted"};
constexpr StateChange<ProFeatureSuppressOptions> kSuppress = {
    ProFeatureWithoptionsSuppress, 0, L"Failed to allocate suppress options.", L"suppress", L"Suppressed"};
constexpr StateChange<ProFeatureResumeOptions> kResume = {
    ProFeatureWithoptionsResume, 1, L"Failed to allocate resume options.", L"unsuppress", L"Unsuppressed"};

template <typename Option>
CreoMcpOperationResult Apply(const StateChange<Option>& change, ProMdl model, const FeatureInfo& info,
                             const std::wstring& name) {
  OwnedArray<int> ids;
  if (!ids.HoldOne(info.id)) return MakeFailureResult(L"Failed to allocate feature id array.");
  OwnedArray<int> options;
  if (!options.HoldOne(change.option)) return MakeFailureResult(change.option_failure);
  const ProError status =
      change.call(static_cast<ProSolid>(model), ids.get(), options.template As<Option>(), 0);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to %s feature '%s' (status=%d).", change.verb, name, status));
  ProWindowRepaint(kCurrentWindow);
  return MakeSuccessResult(Format(L"%s feature '%s'.", change.done, name));
}

// The part, the name that the client gave, and the feature that bears it.
CreoMcpOperationResult FindNamedFeature(const std::wstring& arguments, ProMdl& model, std::wstring& name,
                                        FeatureInfo& info) {
  if (auto active = RequireActiveModel(model); !active.success) return active;
  if (auto named = ReadFeatureName(arguments, name); !named.success) return named;
  return FeatureLookup(model, name, info, false);
}

CreoMcpOperationResult FeatureDelete(const std::wstring& arguments) {
  ProMdl model = nullptr;
  std::wstring name;
  FeatureInfo info;
  if (auto found = FindNamedFeature(arguments, model, name, info); !found.success) return found;
  return Apply(kDelete, model, info, name);
}

CreoMcpOperationResult FeatureList(const std::wstring&) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  std::vector<FeatureInfo> all;
  FeatureVisitContext context;
  context.all = &all;
  const ProError status = VisitFeatureInfo(model, context);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to list features (status=%d).", status));

  std::wstring data = L"[";
  for (const FeatureInfo& info : all) {
    if (data.size() > 1) data += L",";
    data += Format(L"{\"name\":\"%s\",\"type\":\"%s\",\"is_suppressed\":%s}", JsonEscape(info.name),
                   JsonEscape(info.type), info.is_suppressed ? L"true" : L"false");
  }
  data += L"]";
  return MakeSuccessResult(Format(L"Found %u features.", all.size()), data);
}

CreoMcpOperationResult FeatureSuppress(const std::wstring& arguments) {
  ProMdl model = nullptr;
  std::wstring name;
  FeatureInfo info;
  if (auto found = FindNamedFeature(arguments, model, name, info); !found.success) return found;
  if (info.is_suppressed) return MakeSuccessResult(Format(L"Feature '%s' is already suppressed.", name));
  auto result = SuppressFeature(model, info, name);
  if (result.success) PushSuppress(name, true);
  return result;
}

CreoMcpOperationResult FeatureUnsuppress(const std::wstring& arguments) {
  ProMdl model = nullptr;
  std::wstring name;
  FeatureInfo info;
  if (auto found = FindNamedFeature(arguments, model, name, info); !found.success) return found;
  if (!info.is_suppressed) return MakeSuccessResult(Format(L"Feature '%s' is already active.", name));
  auto result = ResumeFeature(model, info, name);
  if (result.success) PushSuppress(name, false);
  return result;
}

}  // namespace

CreoMcpOperationResult SuppressFeature(ProMdl model, const FeatureInfo& info, const std::wstring& name) {
  return Apply(kSuppress, model, info, name);
}

CreoMcpOperationResult ResumeFeature(ProMdl model, const FeatureInfo& info, const std::wstring& name) {
  return Apply(kResume, model, info, name);
}

void RegisterLifecycleOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_feature_delete", FeatureDelete);
  provider.RegisterOperation(L"api_feature_list", FeatureList);
  provider.RegisterOperation(L"api_feature_suppress", FeatureSuppress);
  provider.RegisterOperation(L"api_feature_unsuppress", FeatureUnsuppress);
}

}  // namespace vek::feature
