#include "bench/kernel/boolean.h"

#include <BRepCheck_Analyzer.hxx>
#include <TopoDS.hxx>

#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

BOPAlgo_Operation ToolkitKind(BooleanKind kind) {
  switch (kind) {
    case BooleanKind::kFuse:
      return BOPAlgo_FUSE;
    case BooleanKind::kCut:
      return BOPAlgo_CUT;
    case BooleanKind::kCommon:
      return BOPAlgo_COMMON;
  }
  return BOPAlgo_UNKNOWN;
}

TopTools_ListOfShape ListOf(const std::vector<TopoDS_Solid>& solids) {
  TopTools_ListOfShape list;
  for (const TopoDS_Solid& solid : solids) list.Append(solid);
  return list;
}

}  // namespace

Boolean::Boolean(BooleanKind kind, const NamedShape& objects, const NamedShape& tools)
    : operation_(std::make_unique<BRepAlgoAPI_BooleanOperation>()) {
  operation_->SetArguments(ListOf(objects.solids));
  operation_->SetTools(ListOf(tools.solids));
  operation_->SetOperation(ToolkitKind(kind));
  // The solids of earlier features stay in the cache and must not be changed under it.
  operation_->SetNonDestructive(true);
  operation_->Build();
  if (!operation_->IsDone() || operation_->HasErrors())
    throw Refusal("The feature and the body can't be combined.");
  const Descent descent = [this](const TopoDS_Face& face) { return Descendants(face); };
  result_ = CarryNames({&objects, &tools}, descent, operation_->Shape());
  if (!result_.IsEmpty() && !BRepCheck_Analyzer(result_.Compound()).IsValid())
    throw Refusal("The feature and the body don't combine to a valid solid.");
}

std::vector<TopoDS_Face> Boolean::Descendants(const TopoDS_Face& face) {
  std::vector<TopoDS_Face> faces;
  for (const TopoDS_Shape& modified : operation_->Modified(face)) faces.push_back(TopoDS::Face(modified));
  if (faces.empty() && !operation_->IsDeleted(face)) faces.push_back(face);
  return faces;
}

}  // namespace bench::kernel
