#include "bench/host/calls/section_records.h"

#include <algorithm>

namespace bench {
namespace {

constexpr unsigned kMostSplinePoints = 1'000'000;

static_assert(sizeof(Point2) == sizeof(Pro2dPnt), "spline points are handed out as they are kept");

Point2 Read(const Pro2dPnt& point) {
  return {point[0], point[1]};
}

void Write(const Point2& from, Pro2dPnt& to) {
  std::copy(from.begin(), from.end(), to);
}

template <typename Record>
const Record& As(const Pro2dEntdef& record) {
  return reinterpret_cast<const Record&>(record);
}

template <std::size_t N>
std::wstring TextOf(const wchar_t (&buffer)[N]) {
  return std::wstring(buffer, std::find(buffer, buffer + N - 1, L'\0'));
}

bool ReadSpline(const Pro2dSplinedef& record, SectionEntity& entity) {
  if (!record.point_arr || record.n_points > kMostSplinePoints) return false;
  for (unsigned i = 0; i < record.n_points; ++i) entity.points.push_back(Read(record.point_arr[i]));
  return true;
}

}  // namespace

std::optional<SectionEntity> ReadEntityRecord(const Pro2dEntdef& record) {
  SectionEntity entity;
  entity.type = record.type;
  switch (record.type) {
    case PRO_2D_POINT:
      entity.first = Read(As<Pro2dPntdef>(record).pnt);
      return entity;
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
      entity.first = Read(As<Pro2dLinedef>(record).end1);
      entity.second = Read(As<Pro2dLinedef>(record).end2);
      return entity;
    case PRO_2D_ARC: {
      const auto& arc = As<Pro2dArcdef>(record);
      entity.first = Read(arc.center);
      entity.radius = arc.radius;
      entity.start_angle = arc.start_angle;
      entity.end_angle = arc.end_angle;
      return entity;
    }
    case PRO_2D_CIRCLE:
      entity.first = Read(As<Pro2dCircledef>(record).center);
      entity.radius = As<Pro2dCircledef>(record).radius;
      return entity;
    case PRO_2D_ELLIPSE: {
      const auto& ellipse = As<Pro2dEllipsedef>(record);
      entity.first = Read(ellipse.origin);
      entity.radius = ellipse.x_radius;
      entity.second_radius = ellipse.y_radius;
      return entity;
    }
    case PRO_2D_TEXT:
      entity.first = Read(As<Pro2dTextdef>(record).corner1);
      entity.second = Read(As<Pro2dTextdef>(record).corner2);
      entity.text = TextOf(As<Pro2dTextdef>(record).text);
      entity.font = TextOf(As<Pro2dTextdef>(record).font);
      return entity;
    case PRO_2D_SPLINE:
      if (!ReadSpline(As<Pro2dSplinedef>(record), entity)) return std::nullopt;
      return entity;
  }
  return std::nullopt;
}

EntityRecord::EntityRecord(const SectionEntity& entity) : points_(entity.points) {
  switch (entity.type) {
    case PRO_2D_POINT:
      Write(entity.first, record_.point.pnt);
      break;
    case PRO_2D_LINE:
    case PRO_2D_CENTER_LINE:
      Write(entity.first, record_.line.end1);
      Write(entity.second, record_.line.end2);
      break;
    case PRO_2D_ARC:
      Write(entity.first, record_.arc.center);
      record_.arc.radius = entity.radius;
      record_.arc.start_angle = entity.start_angle;
      record_.arc.end_angle = entity.end_angle;
      break;
    case PRO_2D_CIRCLE:
      Write(entity.first, record_.circle.center);
      record_.circle.radius = entity.radius;
      break;
    case PRO_2D_ELLIPSE:
      Write(entity.first, record_.ellipse.origin);
      record_.ellipse.x_radius = entity.radius;
      record_.ellipse.y_radius = entity.second_radius;
      break;
    case PRO_2D_TEXT:
      Write(entity.first, record_.text.corner1);
      Write(entity.second, record_.text.corner2);
      std::copy(entity.text.begin(), entity.text.end(), record_.text.text);
      std::copy(entity.font.begin(), entity.font.end(), record_.text.font);
      break;
    case PRO_2D_SPLINE:
      record_.spline.n_points = static_cast<unsigned>(points_.size());
      record_.spline.point_arr = reinterpret_cast<Pro2dPnt*>(points_.data());
      break;
  }
  record_.common.type = entity.type;
}

}  // namespace bench
