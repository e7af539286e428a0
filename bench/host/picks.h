// What the user has selected, and what he will pick when he is asked: scripted from the console and from
// tests.
#pragma once

#include <ProObjects.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// An item of a model, and the way to it from the model that the user looks at.
struct Picked {
  ProModelitem item{};
  ProAsmcomppath path{};
};

class Picks {
 public:
  void Select(std::vector<Picked> items) { selected_ = std::move(items); }
  // Those of the selected items that are still there.
  std::vector<Picked> Selected() const;

  // What the next interactive selection gives; nothing cancels it.
  void PickNext(std::optional<Picked> item) { next_.push_back(std::move(item)); }
  // The next pick; nothing when it is cancelled, and when none was scripted.
  std::optional<Picked> TakePick();

  void Clear() { *this = {}; }

 private:
  std::vector<Picked> selected_;
  std::deque<std::optional<Picked>> next_;
};

// What a text names in the current model: the id of a face, or in an assembly that of a component, or of a
// face behind the ids of the components that lead to it, with slashes between. Nothing when there is no such
// item.
std::optional<Picked> ReadPick(const std::string& text);

}  // namespace bench
