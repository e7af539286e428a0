#include "bench/host/drawing/cross_section.h"

#include <algorithm>

#include "bench/host/features/face_frame.h"
#include "bench/host/text.h"

namespace bench {

std::optional<CutPlane> PlaneOfSurface(const Model& solid, int surface) {
  const auto frame = FrameOf(const_cast<Model&>(solid), {{}, PRO_SURFACE, surface});
  if (!frame || frame->kind != FaceFrame::Kind::kPlane) return std::nullopt;
  return CutPlane{frame->point, frame->direction};
}

const CrossSection* FindCrossSection(const Model& solid, std::wstring_view name) {
  const auto found = std::ranges::find_if(solid.cross_sections, [name](const CrossSection& section) {
    return EqualsIgnoringCase(section.name, name);
  });
  return found == solid.cross_sections.end() ? nullptr : &*found;
}

const CrossSection* FindCrossSection(const Model& solid, int id) {
  const auto found = std::ranges::find(solid.cross_sections, id, &CrossSection::id);
  return found == solid.cross_sections.end() ? nullptr : &*found;
}

ProError AddCrossSection(Model& solid, std::wstring_view name, int surface, int& id) {
  if (name.empty() || name.size() >= PRO_NAME_SIZE) return PRO_TK_INVALID_NAME;
  if (FindCrossSection(solid, name)) return PRO_TK_E_FOUND;
  const GeometryItem* item = solid.FindItem(PRO_SURFACE, surface);
  if (!item || !item->alive) return PRO_TK_E_NOT_FOUND;
  if (!PlaneOfSurface(solid, surface)) return PRO_TK_INVALID_TYPE;
  id = solid.next_id++;
  solid.cross_sections.push_back({id, std::wstring(name), surface});
  solid.modified = true;
  return PRO_TK_NO_ERROR;
}

}  // namespace bench
