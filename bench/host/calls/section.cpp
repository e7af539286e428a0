#include "bench/host/calls/section.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/calls/section_records.h"
#include "bench/host/features/section_solver.h"
#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/instruments/opaque_handles.h"
#include "bench/host/model/section_check.h"

namespace bench {
namespace {

struct OpenSection {
  std::shared_ptr<SectionData> data;
  bool of_tree = false;
  std::map<int, EntityRecord> records;  // those that were handed out; they live as long as their entities
};

OpaqueHandles<ProSection, OpenSection>& Sections() {
  static OpaqueHandles<ProSection, OpenSection> sections;
  return sections;
}

OpaqueHandles<ProWSecerror, int>& ErrorCounts() {
  static OpaqueHandles<ProWSecerror, int> counts;
  return counts;
}

ProSection Enter(std::shared_ptr<SectionData> data, bool of_tree) {
  OpenSection section;
  section.data = std::move(data);
  section.of_tree = of_tree;
  return Sections().Enter(std::move(section));
}

// The section behind a handle; null, and a violation, when there is none.
OpenSection* Use(ProSection handle) {
  OpenSection* section = Sections().Find(handle);
  if (section && section->of_tree) return section;
  return TheHost().ledger.Check(handle, HandleKind::kSection, CurrentCall()) ? section : nullptr;
}

// Runs `body` on a live section, and on an entity of it.
template <typename Body>
ProError WithSection(ProSection handle, Body&& body) {
  if (!handle) return PRO_TK_BAD_INPUTS;
  OpenSection* section = Use(handle);
  return section ? body(*section) : PRO_TK_INVALID_PTR;
}

template <typename Body>
ProError WithEntity(ProSection handle, int id, Body&& body) {
  return WithSection(handle, [&](OpenSection& section) {
    const auto found = section.data->entities.find(id);
    return found == section.data->entities.end() ? PRO_TK_E_NOT_FOUND : body(section, found->second);
  });
}

template <typename Condition>
bool Concerns(const Condition& condition, int entity) {
  return std::ranges::any_of(condition.targets,
                             [entity](const SectionTarget& target) { return target.entity == entity; });
}

// Writes the count into a caller's list of errors, where there is one, and gives the status that goes with
// it.
ProError TellErrors(ProWSecerror* errors, int count) {
  if (errors && *errors) {
    if (!TheHost().ledger.Check(*errors, HandleKind::kSectionErrors, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    *ErrorCounts().Find(*errors) = count;
  }
  return count == 0 ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
}

}  // namespace

ProSection EnterSectionOfTree(std::shared_ptr<SectionData> section) {
  return Enter(std::move(section), true);
}

void ForgetSectionOfTree(ProSection section) {
  Sections().Remove(section);
}

std::shared_ptr<SectionData> SectionOfTree(ProSection section) {
  const OpenSection* open = Use(section);
  return open && open->of_tree ? open->data : nullptr;
}

SectionData* UseSection(ProSection handle) {
  OpenSection* section = Use(handle);
  return section ? section->data.get() : nullptr;
}

void ReplaceSection(ProSection handle, SectionData data) {
  OpenSection& section = *Sections().Find(handle);
  section.records.clear();
  *section.data = std::move(data);
}

}  // namespace bench

using namespace bench;

ProError ProSection2DAlloc(ProSection* section) {
  HOST_CALL() {
    if (!section) return PRO_TK_BAD_INPUTS;
    *section = Enter(std::make_shared<SectionData>(), false);
    TheHost().ledger.Give(*section, HandleKind::kSection, CurrentCall());
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSectionIntentManagerModeSet(ProSection section, ProBoolean on) {
  HOST_CALL(section, on) {
    return WithSection(section, [&](OpenSection& open) {
      open.data->intent_manager = on != PRO_B_FALSE;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionNameSet(ProSection section, ProName name) {
  HOST_CALL(section, name) {
    if (!name || !*name) return PRO_TK_BAD_INPUTS;
    return WithSection(section, [&](OpenSection& open) {
      open.data->name = name;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityAdd(ProSection section, Pro2dEntdef* entity, int* id) {
  HOST_CALL(section, entity ? static_cast<int>(entity->type) : 0) {
    if (!entity || !id) return PRO_TK_BAD_INPUTS;
    return WithSection(section, [&](OpenSection& open) {
      auto read = ReadEntityRecord(*entity);
      if (!read || !CanHold(*read)) return PRO_TK_BAD_INPUTS;
      *id = open.data->next_id++;
      open.data->entities.emplace(*id, std::move(*read));
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityDelete(ProSection section, int id) {
  HOST_CALL(section, id) {
    return WithEntity(section, id, [&](OpenSection& open, SectionEntity&) {
      open.records.erase(id);
      open.data->entities.erase(id);
      // What held on to the entity goes with it.
      std::erase_if(open.data->constraints, [id](const auto& entry) { return Concerns(entry.second, id); });
      std::erase_if(open.data->dimensions, [id](const auto& entry) { return Concerns(entry.second, id); });
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityGet(ProSection section, int id, Pro2dEntdef** entity) {
  HOST_CALL(section, id) {
    if (!entity) return PRO_TK_BAD_INPUTS;
    return WithEntity(section, id, [&](OpenSection& open, SectionEntity& kept) {
      *entity = open.records.try_emplace(id, kept).first->second.Get();
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityIdsGet(ProSection section, int** ids) {
  HOST_CALL(section) {
    if (!ids) return PRO_TK_BAD_INPUTS;
    return WithSection(section, [&](OpenSection& open) {
      std::vector<int> all;
      for (const auto& [id, entity] : open.data->entities) all.push_back(id);
      *ids = NewArray(all);
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityConstructionSet(ProSection section, int id, ProBoolean construction) {
  HOST_CALL(section, id, construction) {
    return WithEntity(section, id, [&](OpenSection&, SectionEntity& entity) {
      entity.construction = construction != PRO_B_FALSE;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionEntityIsConstruction(ProSection section, int id, ProBoolean* construction) {
  HOST_CALL(section, id) {
    if (!construction) return PRO_TK_BAD_INPUTS;
    return WithEntity(section, id, [&](OpenSection&, SectionEntity& entity) {
      *construction = entity.construction ? PRO_B_TRUE : PRO_B_FALSE;
      return PRO_TK_NO_ERROR;
    });
  };
}

ProError ProSectionSolve(ProSection section, ProWSecerror* errors) {
  HOST_CALL(section, errors ? *errors : nullptr) {
    return WithSection(section, [&](OpenSection& open) {
      if (open.data->constraints.empty() && open.data->dimensions.empty()) return TellErrors(errors, 0);
      SolvedSection solved = SolveSection(*open.data);
      if (solved.no_kernel) return PRO_TK_COMM_ERROR;
      const bool holds = solved.section.has_value();
      if (holds) ReplaceSection(section, std::move(*solved.section));
      return TellErrors(errors, holds ? 0 : 1);
    });
  };
}

ProError ProSectionRegenerate(ProSection section, ProWSecerror* errors) {
  HOST_CALL(section, errors ? *errors : nullptr) {
    return WithSection(section, [&](OpenSection& open) {
      return TellErrors(errors, static_cast<int>(DegenerateEntities(*open.data).size()));
    });
  };
}

ProError ProSecerrorAlloc(ProWSecerror* errors) {
  HOST_CALL() {
    if (!errors) return PRO_TK_BAD_INPUTS;
    *errors = ErrorCounts().Enter(0);
    TheHost().ledger.Give(*errors, HandleKind::kSectionErrors, CurrentCall());
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSecerrorCount(ProWSecerror* errors, int* count) {
  HOST_CALL(errors ? *errors : nullptr) {
    if (!errors || !*errors || !count) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.Check(*errors, HandleKind::kSectionErrors, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    *count = *ErrorCounts().Find(*errors);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProSecerrorFree(ProWSecerror* errors) {
  HOST_CALL_THAT_NEVER_FAILS(errors ? *errors : nullptr) {
    if (!errors || !*errors) return PRO_TK_BAD_INPUTS;
    if (!TheHost().ledger.TakeBack(*errors, HandleKind::kSectionErrors, CurrentCall()))
      return PRO_TK_INVALID_PTR;
    ErrorCounts().Remove(*errors);
    *errors = nullptr;
    return PRO_TK_NO_ERROR;
  };
}
