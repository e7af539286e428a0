// Ways through element trees, by the ids of the elements on them.
#pragma once

#include <ProElement.h>

#include <span>

#include "addin/host/owned.h"

namespace vek {

// The element at the end of a path of ids from `tree`; it belongs to the tree. Null on failure.
ProError FollowElementPath(ProElement tree, std::span<const int> ids, ProElement& element);

// Takes the element at the end of the path out of the tree.
ProError RemoveElement(ProElement tree, std::span<const int> ids, OwnedElement& removed);

}  // namespace vek
