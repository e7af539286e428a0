#include "addin/ops/assembly/occurrences.h"

#include <ProFeature.h>
#include <ProModelitem.h>

#include <map>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/assembly/occurrence_names.h"
#include "addin/ops/common/model_access.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

constexpr ActiveModelWords kActiveModelWords = {
    L"No active Creo document.",
    L"Failed to determine active document type.",
    L"Assembly operations require an active assembly document.",
};

constexpr int kComponentType = 1000;
constexpr int kFeatureItemType = 3;
constexpr int kSuppressedStatus = 5;
constexpr std::wstring_view kUnnamedPrefix = L"COMP_";
constexpr int kNameNumberLimit = 10000;

bool IsComponent(ProFeature* feature) {
  ProFeattype type{};
  return ProFeatureTypeGet(feature, &type) == PRO_TK_NO_ERROR && static_cast<int>(type) == kComponentType;
}

// A component whose model can't be reached is one all the same.
OccurrenceInfo ReadOccurrence(const ProFeature& feature) {
  OccurrenceInfo info;
  info.id = feature.id;
  info.comp = feature;
  info.name = OccurrenceDisplayName(feature);
  ProFeatStatus status{};
  ProFeatureStatusGet(&info.comp, &status);
  info.suppressed = static_cast<int>(status) == kSuppressedStatus;

  ProMdl model = nullptr;
  if (ProAsmcompMdlGet(&info.comp, &model) != PRO_TK_NO_ERROR || model == nullptr) return info;
  info.model = model;
  ProMdlType type = PRO_MDL_UNUSED;
  if (ProMdlTypeGet(model, &type) == PRO_TK_NO_ERROR) info.model_type = type;
  info.full_path = ModelFullPath(model, info.model_type);
  return info;
}

std::wstring PlacedModelName(const OccurrenceInfo& info) {
  return info.model != nullptr ? ModelName(info.model) : info.name;
}

bool BeginsLikeUnnamed(const std::wstring& name) {
  return EqualsIgnoreCase(std::wstring_view(name).substr(0, kUnnamedPrefix.size()), kUnnamedPrefix);
}

// Gives the component the first free name of the base. False when none could be given.
bool NameAfter(ProMdl assembly, ProAsmcomp comp, const std::wstring& base, std::wstring& name) {
  for (int i = 1; i < kNameNumberLimit; ++i) {
    name = i == 1 ? base : Format(L"%s_%d", base, i);
    ProName buffer{};
    CopyCut(buffer, name);
    ProModelitem bearer{};
    if (ProModelitemByNameInit(assembly, static_cast<ProType>(kFeatureItemType), buffer, &bearer) !=
        PRO_TK_NO_ERROR)
      return ProModelitemNameSet(&comp, buffer) == PRO_TK_NO_ERROR;
    if (bearer.id == comp.id) return true;
  }
  return false;
}

// One model of the listing, with what its first occurrence tells of it.
struct UniqueComponent {
  std::wstring name;
  std::wstring part_number;
  std::wstring full_path;
  int occurrence_count = 0;
};

std::map<std::wstring, UniqueComponent> GatherUnique(const std::vector<OccurrenceInfo>& list) {
  std::map<std::wstring, UniqueComponent> components;
  for (const OccurrenceInfo& info : list) {
    std::wstring key = info.full_path.empty() ? Format(L"id:%d", info.id) : ToLower(info.full_path);
    const auto [row, is_new] = components.try_emplace(std::move(key));
    if (is_new) row->second = {info.name, PlacedModelName(info), info.full_path, 0};
    ++row->second.occurrence_count;
  }
  return components;
}

CreoMcpOperationResult ListComponents(const std::wstring&) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  std::vector<OccurrenceInfo> list;
  if (auto collected = CollectOccurrences(assembly, list); !collected.success) return collected;

  const auto components = GatherUnique(list);
  std::wstring data = L"[";
  for (const auto& [key, component] : components) {
    if (data.size() > 1) data += L",";
    data += Format(LR"({"name":"%s","part_number":"%s","full_path":"%s","occurrence_count":%d})",
                   JsonEscape(component.name), JsonEscape(component.part_number),
                   JsonEscape(component.full_path), component.occurrence_count);
  }
  data += L"]";
  return MakeSuccessResult(Format(L"%d unique component(s) found (%d total occurrences).",
                                  static_cast<int>(components.size()), static_cast<int>(list.size())),
                           data);
}

}  // namespace

CreoMcpOperationResult RequireActiveAssembly(ProMdl& assembly) {
  return RequireActiveModelOfType(kAssemblyType, kActiveModelWords, assembly);
}

CreoMcpOperationResult CollectOccurrences(ProMdl assembly, std::vector<OccurrenceInfo>& list) {
  list.clear();
  const ProError status = VisitFeatures(
      assembly, [](ProFeature* feature) { return IsComponent(feature) ? PRO_TK_NO_ERROR : PRO_TK_CONTINUE; },
      [&list](ProFeature* feature, ProError filter_status) {
        if (feature != nullptr && filter_status == PRO_TK_NO_ERROR && IsComponent(feature))
          list.push_back(ReadOccurrence(*feature));
        return PRO_TK_NO_ERROR;
      });
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to visit assembly components (status=%d).", status));
  return MakeSuccessResult();
}

std::wstring OccurrenceDisplayName(const ProAsmcomp& comp) {
  ProModelitem item = comp;
  ProName buffer{};
  if (ProModelitemNameGet(&item, buffer) == PRO_TK_NO_ERROR) {
    const std::wstring text = BufferText(buffer);
    // What the host shows in place of a name is none.
    if (const auto name = Trim(text); !name.empty() && !EqualsIgnoreCase(name, L"no_name"))
      return std::wstring(name);
  }
  return Format(L"COMP_%d", comp.id);
}

CreoMcpOperationResult ResolveOccurrence(ProMdl assembly, const std::wstring& query, OccurrenceInfo& info) {
  info = OccurrenceInfo();
  if (query.empty()) return MakeFailureResult(L"'occurrence_name' is required.");
  std::vector<OccurrenceInfo> list;
  if (auto collected = CollectOccurrences(assembly, list); !collected.success) return collected;

  const std::wstring wanted = NormalizeOccurrenceName(query);
  std::vector<const OccurrenceInfo*> placing;
  for (const OccurrenceInfo& candidate : list) {
    if (NormalizeOccurrenceName(candidate.name) == wanted) {
      info = candidate;
      return MakeSuccessResult();
    }
  }
  for (const OccurrenceInfo& candidate : list)
    if (NormalizeOccurrenceName(PlacedModelName(candidate)) == wanted) placing.push_back(&candidate);

  if (placing.size() == 1) {
    info = *placing.front();
    return MakeSuccessResult();
  }
  if (placing.empty())
    return MakeFailureResult(
        Format(L"Occurrence '%s' not found. Use list_components 'name' (occurrence) or 'part_number' (Model "
               L"Tree name).",
               query));
  std::wstring message =
      Format(L"Multiple occurrences match part '%s'. Use a specific occurrence name: ", query);
  for (const OccurrenceInfo* candidate : placing) {
    if (candidate != placing.front()) message += L", ";
    message += candidate->name;
  }
  return MakeFailureResult(message);
}

CreoMcpOperationResult ResolveNamedOccurrence(ProMdl assembly, const std::wstring& arguments,
                                              OccurrenceInfo& info) {
  return ResolveOccurrence(assembly, JsonReadStringArgument(arguments, L"occurrence_name"), info);
}

std::wstring AssignOccurrenceName(ProMdl assembly, const ProAsmcomp& comp, std::wstring_view desired) {
  std::wstring base(Trim(desired));
  const std::wstring current = OccurrenceDisplayName(comp);
  if (base.empty()) {
    if (!BeginsLikeUnnamed(current)) return current;
    base = L"Component";
  }
  std::wstring name;
  return NameAfter(assembly, comp, base, name) ? name : OccurrenceDisplayName(comp);
}

void RegisterOccurrenceOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_list_components", ListComponents);
}

}  // namespace vek::assembly
