// What collections of edges and of faces in a tree name, where each instruction names one of them.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "bench/host/features/feature_kind.h"

namespace bench {

// Whether edges of a chain may be followed by the instruction for what runs on tangentially from them.
enum class RunningOn { kRefused, kTaken };

// Of the collection at the end of the path, which a checked tree has: what is wrong with it unless it names
// at least one edge of a body, one with each instruction.
std::optional<TreeProblem> CheckEdges(const ElementNode& tree, std::initializer_list<int> path,
                                      RunningOn running_on);
// The same for faces.
std::optional<TreeProblem> CheckFaces(const ElementNode& tree, std::initializer_list<int> path);

// The kernel's names of what it names, in its order.
std::vector<std::string> CollectedKeys(const Model& model, const ElementNode& tree,
                                       std::initializer_list<int> path);
bool RunsOn(const ElementNode& tree, std::initializer_list<int> path);

}  // namespace bench
