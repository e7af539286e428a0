#include "bench/kernel/stage_cache.h"

namespace bench::kernel {

StageCache::Entry StageCache::Find(Id parent, const std::string& recipe) const {
  const auto found = slots_.find({parent, recipe});
  return found == slots_.end() ? Entry{} : found->second.entry;
}

StageCache::Entry StageCache::Add(Id parent, const std::string& recipe, std::shared_ptr<const Stage> stage) {
  const auto [added, fresh] = slots_.try_emplace({parent, recipe});
  Slot& slot = added->second;
  if (fresh) {
    uses_.push_front(&added->first);
    slot.use = uses_.begin();
  }
  slot.entry = {++last_, std::move(stage)};
  return slot.entry;
}

void StageCache::Touch(Id parent, const std::string& recipe) {
  const auto found = slots_.find({parent, recipe});
  if (found != slots_.end()) uses_.splice(uses_.begin(), uses_, found->second.use);
}

void StageCache::Trim() {
  while (slots_.size() > capacity_) {
    const Place oldest = *uses_.back();
    uses_.pop_back();
    slots_.erase(oldest);
  }
}

void StageCache::Clear() {
  slots_.clear();
  uses_.clear();
}

}  // namespace bench::kernel
