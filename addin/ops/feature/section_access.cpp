#include "addin/ops/feature/section_access.h"

namespace vek::feature {

ProError ExtractFeatureSection(const ProFeature& feature, ExtractedTree& tree, ProSection& section) {
  section = nullptr;
  ProError status = tree.Extract(feature);
  if (status != PRO_TK_NO_ERROR) return status;
  if (tree.tree() == nullptr) return PRO_TK_GENERAL_ERROR;

  ProElement element = nullptr;
  status = tree.Follow(SketcherPath(), element);
  if (status != PRO_TK_NO_ERROR) return status;
  if (element == nullptr) return PRO_TK_E_NOT_FOUND;

  status = ExtractedTree::SectionOf(element, section);
  if (status != PRO_TK_NO_ERROR) return status;
  return section != nullptr ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
}

bool IsConstruction(ProSection section, int id) {
  ProBoolean construction{};
  return ProSectionEntityIsConstruction(section, id, &construction) == PRO_TK_NO_ERROR &&
         construction == PRO_B_TRUE;
}

}  // namespace vek::feature
