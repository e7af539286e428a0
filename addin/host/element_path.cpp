#include "addin/host/element_path.h"

#include <vector>

namespace vek {
namespace {

ProError MakeElementPath(std::span<const int> ids, OwnedElementPath& path) {
  std::vector<ProElempathItem> items(ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) {
    items[i].type = PRO_ELEM_PATH_ITEM_ID;
    items[i].path_item.elem_id = static_cast<ProElemId>(ids[i]);
  }
  const ProError status = ProElempathAlloc(path.out());
  if (status != PRO_TK_NO_ERROR) return status;
  return ProElempathDataSet(path.get(), items.data(), static_cast<int>(items.size()));
}

}  // namespace

ProError FollowElementPath(ProElement tree, std::span<const int> ids, ProElement& element) {
  element = nullptr;
  OwnedElementPath path;
  const ProError status = MakeElementPath(ids, path);
  if (status != PRO_TK_NO_ERROR) return status;
  return ProElemtreeElementGet(tree, path.get(), &element);
}

ProError RemoveElement(ProElement tree, std::span<const int> ids, OwnedElement& removed) {
  OwnedElementPath path;
  const ProError status = MakeElementPath(ids, path);
  if (status != PRO_TK_NO_ERROR) return status;
  return ProElemtreeElementRemove(tree, path.get(), removed.out());
}

}  // namespace vek
