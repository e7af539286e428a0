#include "addin/ops/document/undo_redo.h"

#include "addin/ops/assembly/moving.h"
#include "addin/ops/assembly/suppression.h"
#include "addin/ops/common/history.h"
#include "addin/ops/feature/frame.h"
#include "addin/ops/feature/lifecycle.h"
#include "addin/ops/parameters/parameters.h"
#include "addin/ops/sketch/registration.h"
#include "addin/ops/sketch/removal.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"

namespace vek::document {
namespace {

constexpr int kDefaultCount = 1;

// Keeps what a replayed operation does from being entered as a new step.
class Replaying {
 public:
  Replaying() { HistoryReplaying = true; }
  ~Replaying() { HistoryReplaying = false; }
  Replaying(const Replaying&) = delete;
  Replaying& operator=(const Replaying&) = delete;
};

// A feature that is in that state already counts as brought there.
CreoMcpOperationResult SetFeatureSuppressed(const std::wstring& name, bool suppress) {
  ProMdl model = nullptr;
  if (auto active = feature::RequireActiveModel(model); !active.success) return active;
  feature::FeatureInfo info;
  if (auto found = feature::FeatureLookup(model, name, info, false); !found.success) return found;
  if (info.is_suppressed == suppress)
    return MakeSuccessResult(
        Format(L"Feature '%s' is already %s.", name, suppress ? L"suppressed" : L"unsuppressed"));
  return suppress ? feature::SuppressFeature(model, info, name) : feature::ResumeFeature(model, info, name);
}

CreoMcpOperationResult SetParameter(const HistoryEntry& entry, const std::wstring& expression) {
  return parameters::ParametersSet(
      Format(LR"({"name":"%s","expression":"%s"})", JsonEscape(entry.target), JsonEscape(expression)));
}

// Draws anew. The entities may bear other labels than the first time.
CreoMcpOperationResult DrawAgain(HistoryEntry& entry) {
  auto drawn = sketch::ReplaySketchOperation(entry.operation, entry.arguments);
  if (!drawn.success) return drawn;
  if (const std::wstring labels = JsonReadStringArgument(drawn.dataJson, L"entity"); !labels.empty())
    entry.entity = labels;
  return drawn;
}

CreoMcpOperationResult SetOccurrenceSuppressed(const std::wstring& name, bool suppress) {
  const std::wstring arguments = Format(LR"({"occurrence_name":"%s"})", JsonEscape(name));
  return suppress ? assembly::SuppressOccurrence(arguments) : assembly::UnsuppressOccurrence(arguments);
}

// Moves by the entry's difference from where the occurrence stands now.
CreoMcpOperationResult MoveByDifference(const HistoryEntry& entry, bool undo) {
  const auto difference = [undo](double from, double to) { return undo ? from - to : to - from; };
  return assembly::MoveComponent(Format(LR"({"occurrence_name":"%s","dx_mm":%g,"dy_mm":%g,"dz_mm":%g})",
                                        JsonEscape(entry.target), difference(entry.from_x, entry.to_x),
                                        difference(entry.from_y, entry.to_y),
                                        difference(entry.from_z, entry.to_z)));
}

// Reverses the entry, or does it again; that may give it other labels.
CreoMcpOperationResult ApplyEntry(HistoryEntry& entry, bool undo) {
  switch (entry.kind) {
    case HistoryKind::kCreateFeature:
      return SetFeatureSuppressed(entry.target, undo);
    case HistoryKind::kSuppressFeature:
      return SetFeatureSuppressed(entry.target, entry.flag != undo);
    case HistoryKind::kSuppressOccurrence:
      return SetOccurrenceSuppressed(entry.target, entry.flag != undo);
    case HistoryKind::kSetParameter:
      return SetParameter(entry, undo ? entry.before_text : entry.after_text);
    case HistoryKind::kMove:
      return MoveByDifference(entry, undo);
    case HistoryKind::kCreateSketch:
      return undo ? sketch::DeleteSketch(entry.target)
                  : sketch::ReplaySketchOperation(entry.operation, entry.arguments);
    case HistoryKind::kDrawEntity:
      return undo ? sketch::DeleteSketchEntities(entry.target, entry.entity) : DrawAgain(entry);
  }
  return MakeFailureResult(L"Unsupported history entry.");
}

// Walks up to `count` steps from the back of `source`; each goes over to `target`.
CreoMcpOperationResult ApplySteps(std::deque<HistoryEntry>& source, std::deque<HistoryEntry>& target,
                                  int count, bool undo) {
  if (count < 1) return MakeFailureResult(L"'count' must be at least 1.");
  const wchar_t* word = undo ? L"undo" : L"redo";
  const Replaying replaying;
  int applied = 0;
  for (; applied < count && !source.empty(); ++applied) {
    HistoryEntry entry = source.back();
    auto step = ApplyEntry(entry, undo);
    if (!step.success) {
      if (applied == 0) return step;
      return MakeFailureResult(
          Format(L"Only %d of %d %s step(s) applied: %s", applied, count, word, step.message));
    }
    source.pop_back();
    target.push_back(std::move(entry));
    while (target.size() > HistoryLimit) target.pop_front();
  }
  if (applied == 0) return MakeFailureResult(Format(L"No Vek %s steps available.", word));
  if (applied < count)
    return MakeFailureResult(Format(L"Only %d of %d %s step(s) applied.", applied, count, word));
  return MakeSuccessResult(Format(L"%d %s step(s) applied.", applied, word),
                           Format(LR"({"applied":%d,"requested":%d})", applied, count));
}

CreoMcpOperationResult DocumentUndo(const std::wstring& arguments) {
  int count = 0;
  if (auto read = ReadHistoryCount(arguments, kDefaultCount, count); !read.success) return read;
  return ApplySteps(UndoStack(), RedoStack(), count, true);
}

CreoMcpOperationResult DocumentRedo(const std::wstring& arguments) {
  int count = 0;
  if (auto read = ReadHistoryCount(arguments, kDefaultCount, count); !read.success) return read;
  return ApplySteps(RedoStack(), UndoStack(), count, false);
}

}  // namespace

void RegisterUndoRedoOperations(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_document_undo", DocumentUndo);
  provider.RegisterOperation(L"api_document_redo", DocumentRedo);
}

}  // namespace vek::document
