#include "addin/ops/sketch/session.h"

#include "addin/ops/common/model_access.h"
#include "addin/ops/common/units.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"

namespace vek::sketch {

std::int32_t SketchNameCounter = 0;

std::map<std::wstring, SketchSession>& SketchSessionTable() {
  static std::map<std::wstring, SketchSession> table;
  return table;
}

SketchSession* FindSketchSession(const std::wstring& name) {
  auto& table = SketchSessionTable();
  const auto entry = table.find(name);
  return entry == table.end() ? nullptr : &entry->second;
}

std::wstring EntityLabelsFrom(const SketchSession& session, std::size_t first) {
  std::wstring labels;
  std::map<wchar_t, int> counts;
  for (std::size_t i = 0; i < session.entities.size(); ++i) {
    const wchar_t letter = session.entities[i].letter;
    const int number = ++counts[letter];
    if (i < first) continue;
    if (!labels.empty()) labels += L';';
    labels += Format(L"%c:%d", letter, number);
  }
  return labels;
}

CreoMcpOperationResult RequireActiveModel(ProMdl& model) {
  static constexpr ActiveModelWords kWords{L"No active document.", L"Failed to read active document type.",
                                           L"Sketches require an active part document."};
  return RequireActiveModelOfType(kPartType, kWords, model);
}

CreoMcpOperationResult BeginGeometryOp(const std::wstring& arguments, SketchSession*& session,
                                       double& scale) {
  session = nullptr;
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;

  const std::wstring name = JsonReadStringArgument(arguments, L"sketch_name");
  if (name.empty()) return MakeFailureResult(L"'sketch_name' is required.");
  SketchSession* const found = FindSketchSession(name);
  if (found == nullptr)
    return MakeFailureResult(Format(L"Sketch '%s' not found. Create it first with api_sketch_create.", name));
  if (found->model != model)
    return MakeFailureResult(L"Sketch belongs to a different document than the active one.");

  session = found;
  scale = MmToModelScale(model);
  return MakeSuccessResult();
}

}  // namespace vek::sketch
