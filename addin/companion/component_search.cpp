#include "addin/companion/component_search.h"

#include <ProFeature.h>

#include <algorithm>
#include <string>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek {
namespace {

constexpr int kComponentFeature = 1000;
constexpr int kAssembly = 1;
constexpr int kBadInputs = -2;
constexpr int kNotFound = -4;

// What a visit ends with that had nothing more to visit.
bool IsVisited(ProError status) {
  return status == PRO_TK_NO_ERROR || status == PRO_TK_USER_ABORT;
}

std::wstring NameToCompare(std::wstring_view name) {
  const std::wstring lowered = ToLower(name);
  return lowered.substr(0, lowered.find(L'.'));
}

// The search and what it has found so far.
struct ComponentSearchData {
  std::wstring searchName;
  int modelTypeFilter = kAnyModelType;
  std::vector<ProAsmcomp> topLevelMatches;
  std::vector<ProAsmcomppath> recursiveMatches;
};

// The component's own id; of a path deeper than its table, the last that the table holds.
int LastId(const ProAsmcomppath& path) {
  const int count = std::min(path.table_num, PRO_MAX_ASSEM_LEVEL);
  return count > 0 ? path.comp_id_table[count - 1] : -1;
}

// Whether the model of the component is one that is searched for; `matches` is how many were found before it.
bool IsWanted(const wchar_t* visit, const ComponentSearchData& data, ProMdl model, int id,
              std::size_t matches) {
  if (data.modelTypeFilter != kAnyModelType) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProMdlTypeGet(model, &type);
    if (type != data.modelTypeFilter) {
      LogShell(Format(L"%s: Model type mismatch (Component: %d, Filter: %d), skipping", visit, type,
                      data.modelTypeFilter));
      return false;
    }
  }
  ProMdlName buffer{};
  if (ProMdlMdlnameGet(model, buffer) != PRO_TK_NO_ERROR) return false;
  const std::wstring name = NameToCompare(BufferText(buffer));
  if (name != NameToCompare(data.searchName)) return false;
  LogShell(Format(L"%s: Exact match found", visit));
  LogShell(Format(L"%s: MATCH FOUND! Component matching '%s': %s (Feature ID: %d) - Total matches so far: %d",
                  visit, data.searchName, name, id, static_cast<int>(matches + 1)));
  return true;
}

// The component's model; null, after a line in the log, when the host doesn't give one.
ProMdl Taken(const wchar_t* visit, int id, ProError status, ProMdl model) {
  if (status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"%s: Failed to get component model for feature %d, error: %d", visit, id, status));
    return nullptr;
  }
  if (!model) LogShell(Format(L"%s: Component model is NULL", visit));
  return model;
}

void FeatureVisitCallback(ProFeature& feature, ProError status, ComponentSearchData& data) {
  constexpr const wchar_t* kVisit = L"FeatureVisitCallback";
  LogShell(Format(L"FeatureVisitCallback: Visiting feature ID: %d, status: %d", feature.id, status));
  if (status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"FeatureVisitCallback: Received error status: %d, continuing", status));
    return;
  }
  ProFeattype type = -1;
  if (const ProError failure = ProFeatureTypeGet(&feature, &type); failure != PRO_TK_NO_ERROR) {
    LogShell(Format(L"FeatureVisitCallback: Failed to get feature type for feature %d, error: %d", feature.id,
                    failure));
    return;
  }
  LogShell(Format(L"FeatureVisitCallback: Feature %d type: %d", feature.id, type));
  if (type != kComponentFeature) {
    LogShell(L"FeatureVisitCallback: Not a component feature, continuing");
    return;
  }
  LogShell(L"FeatureVisitCallback: Found component feature, getting model directly");
  ProMdl given = nullptr;
  const ProError asked = ProAsmcompMdlGet(&feature, &given);
  const ProMdl model = Taken(kVisit, feature.id, asked, given);
  if (model && IsWanted(kVisit, data, model, feature.id, data.topLevelMatches.size()))
    data.topLevelMatches.push_back(feature);
}

void RecursiveComponentVisitCallback(ProAsmcomppath& path, ProBoolean down, ComponentSearchData& data) {
  constexpr const wchar_t* kVisit = L"RecursiveComponentVisitCallback";
  if (down != PRO_B_TRUE) return;
  const int id = LastId(path);
  LogShell(Format(L"RecursiveComponentVisitCallback: Visiting feature ID: %d, status: %d", id, 0));
  ProMdl given = nullptr;
  const ProError asked = ProAsmcomppathMdlGet(&path, &given);
  const ProMdl model = Taken(kVisit, id, asked, given);
  if (!model || !IsWanted(kVisit, data, model, id, data.recursiveMatches.size())) return;
  ProAsmcomppath copy = path;
  copy.table_num = std::min(copy.table_num, PRO_MAX_ASSEM_LEVEL);
  data.recursiveMatches.push_back(copy);
}

ProError VisitTopLevel(ProMdl assembly, ComponentSearchData& data) {
  return VisitFeatures(assembly, [&](ProFeature* feature, ProError status) {
    FeatureVisitCallback(*feature, status, data);
    return PRO_TK_NO_ERROR;
  });
}

ProError VisitAllLevels(ProMdl assembly, ComponentSearchData& data) {
  return VisitDisplayedComponents(assembly, [&](ProAsmcomppath* path, ProBoolean down) {
    RecursiveComponentVisitCallback(*path, down, data);
    return PRO_TK_NO_ERROR;
  });
}

// The assembly that owns the component at the end of a path; null when it can't be told.
ProMdl ParentOf(ProAsmcomppath& path) {
  if (path.table_num == 1) return path.owner;
  ProAsmcomppath above{};
  ProMdl parent = nullptr;
  ProMdlType type = PRO_MDL_UNUSED;
  const bool is_assembly = ProAsmcomppathInit(static_cast<ProSolid>(path.owner), path.comp_id_table,
                                              path.table_num - 1, &above) == PRO_TK_NO_ERROR &&
                           ProAsmcomppathMdlGet(&above, &parent) == PRO_TK_NO_ERROR && parent &&
                           ProMdlTypeGet(parent, &type) == PRO_TK_NO_ERROR && type == kAssembly;
  if (is_assembly) return parent;
  LogShell(L"FindAllComponentsInAssembly: WARNING - Could not determine parent assembly from path");
  return nullptr;
}

bool HoldsId(const std::vector<ProAsmcomp>& components, int id) {
  return std::ranges::any_of(components, [id](const ProAsmcomp& component) { return component.id == id; });
}

// The assembly that owns a component below the top level; null when it can't be told. Ids begin anew in each
// assembly: what has the same one under another owner is another component.
ProMdl ParentBelow(ComponentSearchData& data, const ProAsmcomp& component) {
  for (ProAsmcomppath& path : data.recursiveMatches) {
    if (LastId(path) != component.id) continue;
    if (const ProMdl parent = ParentOf(path); parent == component.owner) return parent;
  }
  return nullptr;
}

// Adds the component at the end of a path unless it is there already.
void Merge(ProAsmcomppath& path, const ComponentSearchData& data, std::vector<ProAsmcomp>& components) {
  if (path.table_num <= 0) return;
  const int id = LastId(path);
  if (path.table_num == 1 && HoldsId(data.topLevelMatches, id)) {
    LogShell(
        Format(L"FindAllComponentsInAssembly: Skipping duplicate component (Feature ID: %d, Path length: 1 - "
               L"already found as top-level)",
               id));
    return;
  }
  const ProMdl parent = ParentOf(path);
  if (!parent) return;
  ProFeature feature{};
  if (const ProError status = ProFeatureInit(static_cast<ProSolid>(parent), id, &feature);
      status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"FindAllComponentsInAssembly: Failed to init feature from path, error: %d", status));
    return;
  }
  // One feature of one sub-assembly, however often the sub-assembly is placed.
  if (std::ranges::any_of(components,
                          [&](const ProAsmcomp& known) { return known.id == id && known.owner == parent; })) {
    LogShell(Format(
        L"FindAllComponentsInAssembly: Skipping duplicate component (Feature ID: %d, same parent assembly)",
        id));
    return;
  }
  components.push_back(feature);
  LogShell(
      Format(L"FindAllComponentsInAssembly: Added subassembly component %d (Feature ID: %d, Path length: %d)",
             static_cast<int>(components.size()), id, path.table_num));
}

int Refuse(const wchar_t* why) {
  LogShell(why);
  return kBadInputs;
}

}  // namespace

int FindAllComponentsInAssembly(ProMdl assembly, std::wstring_view name, std::vector<ProAsmcomp>& components,
                                int modelTypeFilter) {
  components.clear();
  LogShell(L"=== Starting component search in assembly (finding all matches, including subassemblies) ===");
  if (modelTypeFilter >= 0)
    LogShell(Format(L"FindAllComponentsInAssembly: Filtering by model type: %d", modelTypeFilter));
  if (!assembly) return Refuse(L"FindAllComponentsInAssembly: ERROR - Assembly is NULL");
  if (name.empty()) return Refuse(L"FindAllComponentsInAssembly: ERROR - Component name is empty");

  ComponentSearchData data{std::wstring(name), modelTypeFilter, {}, {}};
  LogShell(Format(L"FindAllComponentsInAssembly: Initialized search data with name: %s", name));
  const ProError features = VisitTopLevel(assembly, data);
  LogShell(Format(L"FindAllComponentsInAssembly: ProSolidFeatVisit completed with status: %d", features));
  const ProError displayed = VisitAllLevels(assembly, data);
  LogShell(
      Format(L"FindAllComponentsInAssembly: ProSolidDispCompVisit completed with status: %d", displayed));
  if (!IsVisited(features) && !IsVisited(displayed)) {
    LogShell(Format(
        L"FindAllComponentsInAssembly: ERROR - Both searches failed (FeatVisit: %d, DispCompVisit: %d)",
        features, displayed));
    return features;
  }
  const int top_level = static_cast<int>(data.topLevelMatches.size());
  LogShell(Format(L"FindAllComponentsInAssembly: Found %d top-level matching component(s)", top_level));
  LogShell(Format(L"FindAllComponentsInAssembly: Found %d recursive matching component(s)",
                  static_cast<int>(data.recursiveMatches.size())));

  for (const ProAsmcomp& component : data.topLevelMatches) {
    components.push_back(component);
    LogShell(Format(L"FindAllComponentsInAssembly: Added top-level component %d (Feature ID: %d)",
                    static_cast<int>(components.size()), component.id));
  }
  for (ProAsmcomppath& path : data.recursiveMatches) Merge(path, data, components);
  if (components.empty()) {
    LogShell(Format(
        L"FindAllComponentsInAssembly: ERROR - Component '%s' not found in assembly or subassemblies", name));
    LogShell(L"=== Component search completed - not found ===");
    return kNotFound;
  }
  const int found = static_cast<int>(components.size());
  LogShell(
      Format(L"FindAllComponentsInAssembly: SUCCESS - Found and returned %d component(s) (top-level: %d, "
             L"subassembly: %d)",
             found, top_level, found - top_level));
  LogShell(L"=== Component search completed successfully ===");
  return 0;
}

int FindAllComponentsInAssemblyWithParents(ProMdl assembly, std::wstring_view name,
                                           std::vector<ProAsmcomp>& components, std::vector<ProMdl>& parents,
                                           int modelTypeFilter) {
  components.clear();
  parents.clear();
  LogShell(L"=== Starting component search with parent assemblies ===");
  std::vector<ProAsmcomp> found;
  if (const int status = FindAllComponentsInAssembly(assembly, name, found, modelTypeFilter); status != 0)
    return status;

  // The paths once more: the first search keeps none.
  ComponentSearchData data{std::wstring(name), modelTypeFilter, {}, {}};
  VisitTopLevel(assembly, data);
  VisitAllLevels(assembly, data);
  for (const ProAsmcomp& component : found) {
    const int number = static_cast<int>(components.size()) + 1;
    ProMdl parent = nullptr;
    if (component.owner == assembly && HoldsId(data.topLevelMatches, component.id)) {
      parent = assembly;
      LogShell(
          Format(L"Component %d (Feature ID: %d) is top-level, parent: root assembly", number, component.id));
    } else {
      parent = ParentBelow(data, component);
      if (!parent) continue;
      LogShell(Format(L"Component %d (Feature ID: %d) is in subassembly, parent assembly found", number,
                      component.id));
    }
    components.push_back(component);
    parents.push_back(parent);
  }
  if (components.size() != found.size())
    LogShell(L"WARNING: Mismatch between components and parent assemblies count");
  LogShell(Format(
      L"FindAllComponentsInAssemblyWithParents: SUCCESS - Found %d component(s) with parent assemblies",
      static_cast<int>(components.size())));
  return 0;
}

int GetComponentTransform(ProAsmcomp& component, ProMatrix matrix) {
  LogShell(L"=== Getting component transformation matrix ===");
  if (const ProError status = ProAsmcompPositionGet(&component, matrix); status != PRO_TK_NO_ERROR) {
    LogShell(Format(L"ERROR: ProAsmcompPositionGet failed with error: %d", status));
    return status;
  }
  const auto row = [&](int i) {
    return Format(L"%.3f,%.3f,%.3f,%.3f", matrix[i][0], matrix[i][1], matrix[i][2], matrix[i][3]);
  };
  LogShell(
      Format(L"SUCCESS: Transformation matrix retrieved - [%s; %s; %s; %s]", row(0), row(1), row(2), row(3)));
  return 0;
}

}  // namespace vek
