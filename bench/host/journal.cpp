#include "bench/host/journal.h"

#include <algorithm>
#include <utility>

namespace bench {

std::uint64_t Journal::Begin(const char* name, std::string arguments) {
  entries_.push_back({++last_, name, std::move(arguments), 0});
  if (entries_.size() > kCapacity) entries_.pop_front();
  return last_;
}

void Journal::End(std::uint64_t number, int status) {
  // Entries are numbered without a gap, so the number tells the place; an old one may have left meanwhile.
  if (entries_.empty() || number < entries_.front().number || number > last_) return;
  entries_[number - entries_.front().number].status = status;
}

std::uint64_t Journal::Mark() const {
  return last_;
}

std::vector<JournalEntry> Journal::Since(std::uint64_t mark) const {
  if (mark >= last_) return {};
  return Last(last_ - mark);
}

std::vector<JournalEntry> Journal::Last(std::size_t count) const {
  const auto kept = static_cast<std::ptrdiff_t>(std::min(count, entries_.size()));
  return {entries_.end() - kept, entries_.end()};
}

void Journal::Clear() {
  entries_.clear();
  last_ = 0;
}

}  // namespace bench
