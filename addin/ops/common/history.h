// The session's history: two stacks of steps that the add-in knows how to reverse.
//
// It is a history of intentions: an entry tells what was done in the words of the operation that did it.
// Families push after they have succeeded, and only then. Main thread only.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "addin/server/operation_result.h"

namespace vek {

inline constexpr std::size_t HistoryLimit = 10;

enum class HistoryKind {
  kCreateFeature = 0,
  kSuppressFeature = 1,
  kSuppressOccurrence = 2,
  kSetParameter = 3,
  kMove = 4,
  kCreateSketch = 5,
  kDrawEntity = 6,
};

// Fields that a kind doesn't use are empty or zero.
struct HistoryEntry {
  HistoryKind kind = HistoryKind::kCreateFeature;
  std::wstring label;        // what api_document_get_history shows
  std::wstring target;       // the name of what was acted on
  std::wstring operation;    // sketch kinds: the operation to run again,
  std::wstring arguments;    // and what to run it with
  std::wstring entity;       // the labels of a drawing step, joined by ";"
  std::wstring before_text;  // parameter sets
  std::wstring after_text;
  bool flag = false;                          // toggles: true is suppress
  double from_x = 0, from_y = 0, from_z = 0;  // moves, millimetres
  double to_x = 0, to_y = 0, to_z = 0;
};

// The two stacks; the newest entry is at the back.
std::deque<HistoryEntry>& UndoStack();
std::deque<HistoryEntry>& RedoStack();

// True while the history itself replays a step; nothing is pushed then.
extern bool HistoryReplaying;

// Each appends to the undo stack, drops what is beyond the limit and empties the redo stack. Nothing is
// pushed when a text that the step can't do without is empty.
void PushCreateFeature(const std::wstring& name);
void PushSuppress(const std::wstring& name, bool suppress);
void PushSuppressOccurrence(const std::wstring& name, bool suppress);
void PushSetParameter(const std::wstring& name, const std::wstring& before, const std::wstring& after);
void PushMove(const std::wstring& name, const double (&from_mm)[3], const double (&to_mm)[3]);
void PushCreateSketch(const std::wstring& arguments, const std::wstring& name);
void PushDrawEntity(const std::wstring& operation, const std::wstring& arguments, const std::wstring& sketch,
                    const std::wstring& entity);

// Empties both stacks: the active document has changed.
void ClearHistory();

// `count` of the arguments, rounded; the default when it is missing. Must be 1 to 10.
CreoMcpOperationResult ReadHistoryCount(const std::wstring& arguments, int default_count, int& count);

}  // namespace vek
