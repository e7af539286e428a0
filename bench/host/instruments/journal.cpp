#include "bench/host/instruments/journal.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace bench {
namespace {

bool AreAlike(const JournalEntry& a, const JournalEntry& b) {
  return a.name == b.name && a.status == b.status && a.arguments == b.arguments;
}

}  // namespace

std::uint64_t Journal::Begin(const char* name, std::string arguments) {
  kept_.push_back({.run = {.entry = {++last_, name, std::move(arguments), 0}}});
  if (kept_.size() > kCapacity) kept_.pop_front();
  return last_;
}

void Journal::End(std::uint64_t number, int status) {
  // The run that begins with the number: calls that have not ended are each a run of their own. An old one
  // may have left meanwhile.
  const auto found =
      std::ranges::lower_bound(kept_, number, {}, [](const Kept& kept) { return kept.run.entry.number; });
  if (found == kept_.end() || found->run.entry.number != number) return;
  found->run.entry.status = status;
  found->ended = true;

  // It joins the run before it, unless other calls were made inside it, or it is itself inside that one.
  if (found == kept_.begin() || std::next(found) != kept_.end()) return;
  Kept& before = *std::prev(found);
  if (!before.ended || !AreAlike(before.run.entry, found->run.entry)) return;
  ++before.run.times;
  kept_.pop_back();
}

std::uint64_t Journal::Mark() const {
  return last_;
}

std::vector<JournalEntry> Journal::Since(std::uint64_t mark) const {
  std::vector<JournalEntry> calls;
  for (auto kept = kept_.rbegin(); kept != kept_.rend(); ++kept) {
    const JournalEntry& first = kept->run.entry;
    for (std::uint64_t number = first.number + kept->run.times; number-- > first.number;) {
      if (number <= mark) {
        std::ranges::reverse(calls);
        return calls;
      }
      calls.push_back(first);
      calls.back().number = number;
    }
  }
  std::ranges::reverse(calls);
  return calls;
}

std::vector<JournalEntry> Journal::Last(std::size_t count) const {
  return Since(last_ - std::min<std::uint64_t>(count, last_));
}

std::vector<JournalRun> Journal::LastRuns(std::size_t count) const {
  const std::size_t shown = std::min(count, kept_.size());
  std::vector<JournalRun> runs;
  for (auto kept = kept_.end() - static_cast<std::ptrdiff_t>(shown); kept != kept_.end(); ++kept)
    runs.push_back(kept->run);
  return runs;
}

void Journal::Clear() {
  kept_.clear();
  last_ = 0;
}

}  // namespace bench
