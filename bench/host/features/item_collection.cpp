#include "bench/host/features/item_collection.h"

#include <algorithm>

namespace bench {
namespace {

constexpr int kOneEdge = 101;
constexpr int kWhatRunsOn = 114;
constexpr int kSingleSurfaces = 1;

const Collection& CollectionAt(const ElementNode& tree, std::initializer_list<int> path) {
  return std::get<Collection>(tree.Find(path)->value);
}

bool NamesOne(const CollectionInstruction& instruction, int type, ProType item_type) {
  return instruction.type == type && instruction.include && instruction.items.size() == 1 &&
         instruction.items.front().type == item_type;
}

bool IsRunningOn(const CollectionInstruction& instruction) {
  return instruction.type == kWhatRunsOn && instruction.items.empty();
}

}  // namespace

std::optional<TreeProblem> CheckEdges(const ElementNode& tree, std::initializer_list<int> path,
                                      RunningOn running_on) {
  const int element = *(path.end() - 1);
  const Collection& collection = CollectionAt(tree, path);
  if (collection.of_surfaces) return TreeProblem{element, "is no collection of edges"};
  auto end = collection.instructions.end();
  if (running_on == RunningOn::kTaken && RunsOn(tree, path)) --end;
  if (end == collection.instructions.begin()) return TreeProblem{element, "names no edge"};
  const bool all_edges = std::all_of(collection.instructions.begin(), end, [](const auto& instruction) {
    return NamesOne(instruction, kOneEdge, PRO_EDGE);
  });
  if (!all_edges) return TreeProblem{element, "must name single edges of the body"};
  return std::nullopt;
}

std::optional<TreeProblem> CheckFaces(const ElementNode& tree, std::initializer_list<int> path) {
  const int element = *(path.end() - 1);
  const Collection& collection = CollectionAt(tree, path);
  if (!collection.of_surfaces) return TreeProblem{element, "is no collection of surfaces"};
  if (collection.instructions.empty()) return TreeProblem{element, "names no surface"};
  const bool all_faces = std::ranges::all_of(collection.instructions, [](const auto& instruction) {
    return NamesOne(instruction, kSingleSurfaces, PRO_SURFACE);
  });
  if (!all_faces) return TreeProblem{element, "must name single surfaces of the body"};
  return std::nullopt;
}

std::vector<std::string> CollectedKeys(const Model& model, const ElementNode& tree,
                                       std::initializer_list<int> path) {
  std::vector<std::string> keys;
  for (const CollectionInstruction& instruction : CollectionAt(tree, path).instructions)
    for (const ItemReference& item : instruction.items) keys.push_back(KeyOf(model, item));
  return keys;
}

bool RunsOn(const ElementNode& tree, std::initializer_list<int> path) {
  const auto& instructions = CollectionAt(tree, path).instructions;
  return !instructions.empty() && IsRunningOn(instructions.back());
}

}  // namespace bench
