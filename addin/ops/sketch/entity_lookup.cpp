// The half of the references that looks into a session; entity_reference.cpp stays free of the toolkit.
#include "addin/ops/sketch/entity_reference.h"
#include "addin/ops/sketch/session.h"
#include "addin/text/format.h"

namespace vek::sketch {

int FindEntity(const SketchSession& session, wchar_t letter, int index) {
  int count = 0;
  for (std::size_t i = 0; i < session.entities.size(); ++i)
    if (session.entities[i].letter == letter && ++count == index) return static_cast<int>(i);
  return -1;
}

bool ResolveEntityReference(const SketchSession& session, std::wstring_view text, EntityReference& reference,
                            int& entity_id, std::wstring& error) {
  if (!ParseEntityReference(text, reference, error)) return false;
  const int place = FindEntity(session, reference.letter, reference.index);
  if (place < 0) {
    error = Format(L"Entity '%s' not found in sketch '%s'.", text, session.name);
    return false;
  }
  entity_id = session.entities[static_cast<std::size_t>(place)].entity_id;
  return true;
}

}  // namespace vek::sketch
