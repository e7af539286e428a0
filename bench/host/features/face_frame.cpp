#include "bench/host/features/face_frame.h"

namespace bench {
namespace {

constexpr ProFeattype kDatumPlane = 923;

std::optional<FaceFrame> FrameOfFace(const FaceInfo& face) {
  if (face.type == "plane") return FaceFrame{FaceFrame::Kind::kPlane, face.point, face.normal};
  if (face.type != "cylinder") return std::nullopt;
  return FaceFrame{FaceFrame::Kind::kCylinder, face.origin, face.axis, face.radius, face.orientation < 0};
}

std::optional<FaceFrame> FrameIn(Model& model, ProType type, int id) {
  if (type != PRO_SURFACE && type != PRO_DATUM_PLANE) return std::nullopt;
  const Feature* owner = model.OwnerOf(type, id);
  if (!owner || owner->status == PRO_FEAT_SUPPRESSED) return std::nullopt;
  if (owner->type == kDatumPlane) {
    const Vector3 origin = MillimetresPer(model.length_unit) * owner->plane.origin;
    return FaceFrame{FaceFrame::Kind::kPlane, origin, owner->plane.Normal()};
  }
  const GeometryItem* item = model.FindItem(type, id);
  const FaceInfo* face = item->alive ? model.topology.Face(item->key) : nullptr;
  return face ? FrameOfFace(*face) : std::nullopt;
}

}  // namespace

std::optional<FaceFrame> FrameOf(Model& start, const PlacedItem& item) {
  const auto end = Follow(start, item.path);
  const auto frame = end && end->model ? FrameIn(*end->model, item.type, item.id) : std::nullopt;
  return frame ? std::optional(MovedBy(end->place, *frame)) : std::nullopt;
}

FaceFrame MovedBy(const Matrix& place, const FaceFrame& frame) {
  FaceFrame moved = frame;
  moved.point = MovedBy(place, frame.point);
  moved.direction = TurnedBy(place, frame.direction);
  return moved;
}

}  // namespace bench
