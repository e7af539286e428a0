// What came of recipes that were seen before, found by the chain of recipes up to each.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "bench/kernel/stage.h"

namespace bench::kernel {

// At most `capacity` stages; those used longest ago go first, later ones of a chain before earlier ones.
class StageCache {
 public:
  // A stage's name; a recipe's place in a chain is its parent's name and its own text.
  using Id = std::uint64_t;
  static constexpr Id kRoot = 0;

  struct Entry {
    Id id = kRoot;
    std::shared_ptr<const Stage> stage;
  };

  explicit StageCache(std::size_t capacity) : capacity_(capacity) {}

  // An entry without a stage when there is none.
  Entry Find(Id parent, const std::string& recipe) const;
  Entry Add(Id parent, const std::string& recipe, std::shared_ptr<const Stage> stage);
  // Marks a stage as used now. A chain is touched from its end to its beginning.
  void Touch(Id parent, const std::string& recipe);
  // Lets go what is above the capacity.
  void Trim();
  void Clear();

 private:
  using Place = std::pair<Id, std::string>;
  struct Slot {
    Entry entry;
    std::list<const Place*>::iterator use;
  };

  std::size_t capacity_;
  Id last_ = kRoot;
  std::map<Place, Slot> slots_;
  std::list<const Place*> uses_;  // the latest first
};

}  // namespace bench::kernel
