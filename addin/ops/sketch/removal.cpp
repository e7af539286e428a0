#include "addin/ops/sketch/removal.h"

#include "addin/ops/sketch/commit.h"
#include "addin/ops/sketch/entity_reference.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

constexpr const wchar_t* kEntityMissing = L"'entity' is required.";
constexpr std::size_t kShortestLabel = 3;

std::vector<std::wstring> SplitLabels(std::wstring_view joined) {
  std::vector<std::wstring> labels;
  while (!joined.empty()) {
    const std::size_t end = joined.find(L';');
    if (const auto label = Trim(joined.substr(0, end)); !label.empty()) labels.emplace_back(label);
    if (end == std::wstring_view::npos) break;
    joined.remove_prefix(end + 1);
  }
  return labels;
}

}  // namespace

CreoMcpOperationResult SketchEntityDelete(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  const std::wstring entity = JsonReadStringArgument(arguments, L"entity");
  if (entity.size() < kShortestLabel || entity[1] != L':')
    return MakeFailureResult(L"'entity' must look like 'L:2', 'C:1', or 'A:3'.");
  const wchar_t letter = ToUpper(entity.substr(0, 1)).front();
  const int place = FindEntity(*session, letter, ReadLeadingInteger(std::wstring_view(entity).substr(2)));
  if (place < 0)
    return MakeFailureResult(Format(L"Entity '%s' not found in sketch '%s'.", entity, session->name));

  const auto record = session->entities.begin() + place;
  if (ProSectionEntityDelete(session->section, record->entity_id) != PRO_TK_NO_ERROR)
    return MakeFailureResult(L"Failed to delete entity from section.");
  session->entities.erase(record);
  auto committed = CommitSketch(*session);
  if (session->entities.empty())
    return MakeSuccessResult(
        Format(L"Entity '%s' deleted; empty sketch '%s' discarded.", entity, session->name));
  if (!committed.success) return committed;
  return MakeSuccessResult(Format(L"Entity '%s' deleted from sketch '%s'.", entity, session->name));
}

CreoMcpOperationResult DeleteSketch(const std::wstring& name) {
  SketchSession* const session = FindSketchSession(name);
  if (session == nullptr) return MakeFailureResult(Format(L"Sketch '%s' not found.", name));
  if (!DiscardSketchFeature(*session)) return MakeFailureResult(L"Failed to delete sketch feature.");
  SketchSessionTable().erase(name);
  return MakeSuccessResult(Format(L"Sketch '%s' deleted.", name));
}

CreoMcpOperationResult DeleteSketchEntities(const std::wstring& sketch, const std::wstring& labels) {
  const std::vector<std::wstring> parts = SplitLabels(labels);
  if (parts.empty()) return MakeFailureResult(kEntityMissing);
  for (auto label = parts.rbegin(); label != parts.rend(); ++label) {
    auto deleted = SketchEntityDelete(
        Format(LR"({"sketch_name":"%s","entity":"%s"})", JsonEscape(sketch), JsonEscape(*label)));
    if (!deleted.success) return deleted;
  }
  return MakeSuccessResult(Format(L"Deleted %d entit%s from '%s'.", static_cast<int>(parts.size()),
                                  parts.size() == 1 ? L"y" : L"ies", sketch));
}

}  // namespace vek::sketch
