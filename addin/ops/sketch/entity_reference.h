// How clients refer to what they drew: "L:1" for an entity, "L:1:start" for a point of it.
#pragma once

#include <string>
#include <string_view>

namespace vek::sketch {

struct SketchSession;

// Which part of an entity is meant, in the host's numbers.
inline constexpr int kWholeEntity = 1;
inline constexpr int kStartPoint = 2;
inline constexpr int kEndPoint = 3;
inline constexpr int kCenterPoint = 4;

struct EntityReference {
  wchar_t letter = 0;  // upper case; any letter passes
  int index = 0;       // from 1, among the entities of that letter
  int point = kWholeEntity;
};

// Whether a point is meant, and not a curve.
bool IsPointReference(const EntityReference& reference);

// False with the reason in `error`. Pure.
bool ParseEntityReference(std::wstring_view text, EntityReference& reference, std::wstring& error);

// The place in the session's entities of the one that bears this label now, or -1. Labels move when an
// earlier entity goes.
int FindEntity(const SketchSession& session, wchar_t letter, int index);

// Parses the text and finds the entity's id in the private section. False with the reason in `error`.
bool ResolveEntityReference(const SketchSession& session, std::wstring_view text, EntityReference& reference,
                            int& entity_id, std::wstring& error);

}  // namespace vek::sketch
