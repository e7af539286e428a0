#include "addin/ops/sketch/dimensions.h"

#include <ProSecdim.h>

#include <algorithm>

#include "addin/ops/sketch/commit.h"
#include "addin/ops/sketch/curves.h"
#include "addin/ops/sketch/entity_reference.h"
#include "addin/server/json_reader.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

// The kinds of dimension as the host numbers them.
constexpr int kLineLength = 1;
constexpr int kPointDistance = 2;
constexpr int kRadius = 3;
constexpr int kDiameter = 4;
constexpr int kAngle = 12;

constexpr const wchar_t* kDefaultType = L"linear";
constexpr double kTextOffsetMm = 10;

constexpr const wchar_t* kEntityMissing = L"'entity' is required.";

// What the host is asked for.
struct DimensionRequest {
  int type = 0;
  std::vector<int> entities;
  std::vector<ProSectionPointType> points;
};

std::wstring TypeOrDefault(std::wstring type) {
  return type.empty() ? kDefaultType : std::move(type);
}

void AddEntity(DimensionRequest& request, int entity_id, int point) {
  request.entities.push_back(entity_id);
  request.points.push_back(static_cast<ProSectionPointType>(point));
}

// What the record asks of the host. False with the reason in `error`.
bool MakeRequest(const SketchSession& session, const SketchDimensionRecord& record, DimensionRequest& request,
                 std::wstring& error) {
  const std::wstring type = TypeOrDefault(ToLower(record.type));
  EntityReference first;
  int first_id = -1;
  if (!ResolveEntityReference(session, record.entity, first, first_id, error)) return false;
  const bool is_round = first.letter == L'A' || first.letter == L'C';

  if (type == L"linear") {
    error = L"Linear dimension requires a line entity.";
    request.type = first.point == kWholeEntity ? kLineLength : kPointDistance;
    AddEntity(request, first_id, first.point);
    return first.letter == L'L' || IsPointReference(first);
  }
  if (type == L"radial" || type == L"diameter") {
    const bool radial = type == L"radial";
    error = radial ? L"Radial dimension requires a circle or arc."
                   : L"Diameter dimension requires a circle or arc.";
    request.type = radial ? kRadius : kDiameter;
    AddEntity(request, first_id, kWholeEntity);
    return is_round;
  }
  if (type != L"angular") {
    error = Format(L"Unknown dimension type '%s'. Supported: linear, radial, diameter, angular.", type);
    return false;
  }
  if (record.entity2.empty()) {
    error = L"'entity2' is required for angular dimensions.";
    return false;
  }
  EntityReference second;
  int second_id = -1;
  if (!ResolveEntityReference(session, record.entity2, second, second_id, error)) return false;
  error = L"Angular dimension requires two line entities.";
  request.type = kAngle;
  AddEntity(request, first_id, kWholeEntity);
  AddEntity(request, second_id, kWholeEntity);
  return first.letter == L'L' && second.letter == L'L';
}

}  // namespace

bool ApplySketchDimension(ProSection section, const SketchSession& session, double scale,
                          const SketchDimensionRecord& record, std::wstring& error) {
  if (record.driven) return true;
  DimensionRequest request;
  if (!MakeRequest(session, record, request, error)) return false;

  // The value of an angle places its text as if it were a length.
  Pro2dPnt place = {scale * record.value + scale * kTextOffsetMm, scale * kTextOffsetMm};
  ProSectionIntentManagerModeSet(section, PRO_B_TRUE);
  int id = -1;
  ProError status = ProSecdimCreate(section, request.entities.data(), request.points.data(),
                                    static_cast<int>(request.entities.size()),
                                    static_cast<ProSecdimType>(request.type), place, &id);
  if (status != PRO_TK_NO_ERROR || id < 0) {
    ProSectionIntentManagerModeSet(section, PRO_B_FALSE);
    error = Format(L"Failed to create dimension (status=%d).", status);
    return false;
  }
  const double value = request.type == kAngle ? DegreesToRadians(record.value) : scale * record.value;
  status = ProSecdimValueSet(section, id, value);
  ProSectionIntentManagerModeSet(section, PRO_B_FALSE);
  if (status == PRO_TK_NO_ERROR) return true;
  error = Format(L"Failed to set dimension value (status=%d).", status);
  return false;
}

CreoMcpOperationResult SketchDimensionAdd(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  SketchDimensionRecord record;
  record.entity = JsonReadStringArgument(arguments, L"entity");
  if (record.entity.empty()) return MakeFailureResult(kEntityMissing);
  if (!JsonReadNumber(arguments, L"value", record.value)) return MakeFailureResult(L"'value' is required.");
  record.type = TypeOrDefault(ToLower(Trim(JsonReadStringArgument(arguments, L"type"))));
  record.entity2 = JsonReadStringArgument(arguments, L"entity2");
  record.driven = JsonReadBool(arguments, L"driven", false);

  session->dimensions.push_back(record);
  if (auto committed = CommitSketch(*session); !committed.success) {
    session->dimensions.pop_back();
    return committed;
  }
  return MakeSuccessResult(Format(L"%s dim %g on %s in '%s'%s.", record.type, record.value, record.entity,
                                  session->name,
                                  record.driven ? L" (tracked as driven; not applied in Creo)" : L""));
}

CreoMcpOperationResult SketchDimensionSetDriven(const std::wstring& arguments) {
  SketchSession* session = nullptr;
  double scale = 1;
  if (auto begun = BeginGeometryOp(arguments, session, scale); !begun.success) return begun;
  const std::wstring entity = JsonReadStringArgument(arguments, L"entity");
  if (entity.empty()) return MakeFailureResult(kEntityMissing);
  const std::wstring type = TypeOrDefault(ToLower(Trim(JsonReadStringArgument(arguments, L"type"))));
  const std::wstring entity2 = JsonReadStringArgument(arguments, L"entity2");
  const bool driven = JsonReadBool(arguments, L"driven", true);

  auto& records = session->dimensions;
  const auto record = std::find_if(records.begin(), records.end(), [&](const SketchDimensionRecord& each) {
    return EqualsIgnoreCase(each.entity, entity) && TypeOrDefault(ToLower(each.type)) == type &&
           EqualsIgnoreCase(each.entity2, entity2);
  });
  if (record == records.end())
    return MakeFailureResult(
        Format(L"No %s dimension on %s found in sketch '%s'.", type, entity, session->name));
  record->driven = driven;
  if (auto committed = CommitSketch(*session); !committed.success) return committed;
  return MakeSuccessResult(Format(
      L"%s dim on %s set driven=%s in '%s'%s.", type, entity, driven ? L"true" : L"false", session->name,
      driven ? L" (Creo Toolkit has no reference-dim API; dim is omitted while driven)" : L""));
}

}  // namespace vek::sketch
