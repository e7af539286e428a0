#include "addin/ops/assembly/constraint_listing.h"

#include <vector>

#include "addin/host/owned.h"
#include "addin/ops/assembly/constraint_words.h"
#include "addin/ops/assembly/occurrences.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::assembly {
namespace {

// The name of the occurrence on which the constraint's reference in the assembly lies.
std::wstring ReferencedOccurrence(ProMdl assembly, ProAsmcompconstraint constraint) {
  OwnedSelection selection;
  ProDatumside side{};
  if (ProAsmcompconstraintAsmreferenceGet(constraint, selection.out(), &side) != PRO_TK_NO_ERROR ||
      !selection)
    return {};
  ProAsmcomppath path{};
  if (ProSelectionAsmcomppathGet(selection.get(), &path) != PRO_TK_NO_ERROR || path.table_num < 1) return {};
  std::vector<OccurrenceInfo> occurrences;
  if (!CollectOccurrences(assembly, occurrences).success) return {};
  for (const OccurrenceInfo& occurrence : occurrences)
    if (occurrence.id == path.comp_id_table[0]) return occurrence.name;
  return {};
}

// Appends the rows of one occurrence; one whose constraints can't be read has none.
void AppendConstraints(ProMdl assembly, OccurrenceInfo& occurrence, std::vector<ConstraintInfo>& rows) {
  OwnedConstraints constraints;
  if (ProAsmcompConstraintsGet(&occurrence.comp, constraints.out()) != PRO_TK_NO_ERROR || !constraints)
    return;
  int count = 0;
  if (ProArraySizeGet(constraints.get(), &count) != PRO_TK_NO_ERROR) return;
  for (int i = 0; i < count; ++i) {
    const ProAsmcompconstraint constraint = constraints.get()[i];
    ProAsmcompConstrType type{};
    ProAsmcompconstraintTypeGet(constraint, &type);
    ConstraintInfo row;
    row.type = ConstraintTypeWord(type);
    row.name = Format(L"%s_%s_%d", occurrence.name, row.type, i + 1);
    row.suppressed = occurrence.suppressed;
    row.occ1 = occurrence.name;
    row.occ2 = ReferencedOccurrence(assembly, constraint);
    rows.push_back(std::move(row));
  }
}

bool Passes(const ConstraintInfo& row, const std::wstring& filter) {
  if (filter.empty()) return true;
  const std::wstring names = row.occ1 + L"|" + row.occ2;
  return names.find(filter) != std::wstring::npos ||
         ToLower(names).find(ToLower(filter)) != std::wstring::npos;
}

std::wstring RowData(const ConstraintInfo& row) {
  return Format(L"{\"name\":\"%s\",\"type\":\"%s\",\"suppressed\":%s,\"occ1\":\"%s\",\"occ2\":\"%s\"}",
                JsonEscape(row.name), JsonEscape(row.type), row.suppressed ? L"true" : L"false",
                JsonEscape(row.occ1), JsonEscape(row.occ2));
}

CreoMcpOperationResult ListConstraints(const std::wstring& arguments) {
  ProMdl assembly = nullptr;
  if (auto active = RequireActiveAssembly(assembly); !active.success) return active;
  const std::wstring filter = JsonReadStringArgument(arguments, L"occurrence_name");
  std::vector<OccurrenceInfo> occurrences;
  if (auto collected = CollectOccurrences(assembly, occurrences); !collected.success) return collected;

  std::vector<ConstraintInfo> rows;
  for (OccurrenceInfo& occurrence : occurrences) AppendConstraints(assembly, occurrence, rows);
  std::erase_if(rows, [&](const ConstraintInfo& row) { return !Passes(row, filter); });

  std::wstring data = L"[";
  for (const ConstraintInfo& row : rows) {
    if (data.size() > 1) data += L",";
    data += RowData(row);
  }
  data += L"]";
  return MakeSuccessResult(Format(L"%d constraint(s) found.", static_cast<int>(rows.size())), data);
}

}  // namespace

void RegisterConstraintListingOperation(CreoMcpProvider& provider) {
  provider.RegisterOperation(L"api_assembly_list_constraints", ListConstraints);
}

}  // namespace vek::assembly
