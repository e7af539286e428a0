// Between the entity records of the toolkit and the entities of a section.
#pragma once

#include <Pro2dEntdef.h>

#include <optional>
#include <vector>

#include "bench/host/model/section_data.h"

namespace bench {

// What a caller's record says; nothing when its type is unknown or its points are missing.
std::optional<SectionEntity> ReadEntityRecord(const Pro2dEntdef& record);

// A record that is handed out, with the memory that it points into. It stays where it was made.
class EntityRecord {
 public:
  explicit EntityRecord(const SectionEntity& entity);
  EntityRecord(const EntityRecord&) = delete;
  EntityRecord& operator=(const EntityRecord&) = delete;

  Pro2dEntdef* Get() { return &record_.common; }

 private:
  union {
    Pro2dEntdef common;
    Pro2dPntdef point;
    Pro2dLinedef line;
    Pro2dClinedef centerline;
    Pro2dArcdef arc;
    Pro2dCircledef circle;
    Pro2dSplinedef spline;
    Pro2dEllipsedef ellipse;
    Pro2dTextdef text;
  } record_{};
  std::vector<Point2> points_;
};

}  // namespace bench
