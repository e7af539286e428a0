#include "addin/ops/common/history.h"

#include <cmath>
#include <utility>

#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek {
namespace {

void Push(HistoryEntry entry) {
  auto& undo = UndoStack();
  undo.push_back(std::move(entry));
  while (undo.size() > HistoryLimit) undo.pop_front();
  RedoStack().clear();
}

void PushToggle(HistoryKind kind, std::wstring label, const std::wstring& name, bool suppress) {
  HistoryEntry entry;
  entry.kind = kind;
  entry.label = std::move(label);
  entry.target = name;
  entry.flag = suppress;
  Push(std::move(entry));
}

}  // namespace

bool HistoryReplaying = false;

std::deque<HistoryEntry>& UndoStack() {
  static std::deque<HistoryEntry> stack;
  return stack;
}

std::deque<HistoryEntry>& RedoStack() {
  static std::deque<HistoryEntry> stack;
  return stack;
}

void PushCreateFeature(const std::wstring& name) {
  if (HistoryReplaying || name.empty()) return;
  HistoryEntry entry;
  entry.kind = HistoryKind::kCreateFeature;
  entry.label = Format(L"Create %s", name);
  entry.target = name;
  Push(std::move(entry));
}

void PushSuppress(const std::wstring& name, bool suppress) {
  if (HistoryReplaying || name.empty()) return;
  PushToggle(HistoryKind::kSuppressFeature,
             suppress ? Format(L"Suppress %s", name) : Format(L"Unsuppress %s", name), name, suppress);
}

void PushSuppressOccurrence(const std::wstring& name, bool suppress) {
  if (HistoryReplaying || name.empty()) return;
  PushToggle(HistoryKind::kSuppressOccurrence,
             suppress ? Format(L"Suppress occurrence %s", name) : Format(L"Unsuppress occurrence %s", name),
             name, suppress);
}

void PushSetParameter(const std::wstring& name, const std::wstring& before, const std::wstring& after) {
  // A parameter may have had no value before; one that has none afterwards was not set.
  if (HistoryReplaying || name.empty() || after.empty()) return;
  HistoryEntry entry;
  entry.kind = HistoryKind::kSetParameter;
  entry.label = Format(L"Set %s", name);
  entry.target = name;
  entry.before_text = before;
  entry.after_text = after;
  Push(std::move(entry));
}

void PushMove(const std::wstring& name, const double (&from_mm)[3], const double (&to_mm)[3]) {
  if (HistoryReplaying || name.empty()) return;
  HistoryEntry entry;
  entry.kind = HistoryKind::kMove;
  entry.label = Format(L"Move %s", name);
  entry.target = name;
  entry.from_x = from_mm[0];
  entry.from_y = from_mm[1];
  entry.from_z = from_mm[2];
  entry.to_x = to_mm[0];
  entry.to_y = to_mm[1];
  entry.to_z = to_mm[2];
  Push(std::move(entry));
}

void PushCreateSketch(const std::wstring& arguments, const std::wstring& name) {
  if (HistoryReplaying || name.empty() || arguments.empty()) return;
  HistoryEntry entry;
  entry.kind = HistoryKind::kCreateSketch;
  entry.label = Format(L"Create sketch %s", name);
  entry.target = name;
  entry.operation = L"api_sketch_create";
  entry.arguments = arguments;
  Push(std::move(entry));
}

void PushDrawEntity(const std::wstring& operation, const std::wstring& arguments, const std::wstring& sketch,
                    const std::wstring& entity) {
  if (HistoryReplaying || operation.empty() || sketch.empty() || entity.empty()) return;
  HistoryEntry entry;
  entry.kind = HistoryKind::kDrawEntity;
  entry.label = Format(L"Draw %s in %s", entity, sketch);
  entry.target = sketch;
  entry.operation = operation;
  entry.arguments = arguments;
  entry.entity = entity;
  Push(std::move(entry));
}

void ClearHistory() {
  UndoStack().clear();
  RedoStack().clear();
}

CreoMcpOperationResult ReadHistoryCount(const std::wstring& arguments, int default_count, int& count) {
  double number = default_count;
  JsonReadNumber(arguments, L"count", number);
  // Compared as a floating number: what is not finite, or beyond an integer, is refused like any other.
  const double rounded = std::round(number);
  if (!(rounded >= 1)) return MakeFailureResult(L"'count' must be at least 1.");
  if (rounded > static_cast<double>(HistoryLimit))
    return MakeFailureResult(Format(L"'count' must be between 1 and %d.", static_cast<int>(HistoryLimit)));
  count = static_cast<int>(rounded);
  return MakeSuccessResult();
}

}  // namespace vek
