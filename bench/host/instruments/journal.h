// The call journal: every toolkit call in its order, the last ones kept.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace bench {

struct JournalEntry {
  std::uint64_t number;  // running, from 1
  std::string name;
  std::string arguments;
  int status;
};

// The same call, `times` in a row with no other one between: all its numbers follow on the entry's.
struct JournalRun {
  JournalEntry entry;
  std::uint64_t times = 1;
};

class Journal {
 public:
  // Of runs, not of calls: an idle add-in's timer repeats one call for hours and pushes nothing else out.
  static constexpr std::size_t kCapacity = 20'000;

  // Opens an entry and gives its number; its status is entered when the call returns.
  std::uint64_t Begin(const char* name, std::string arguments);
  void End(std::uint64_t number, int status);

  // The number of the last call so far; the calls since then are `Since` of it, each by itself however often
  // it was repeated.
  std::uint64_t Mark() const;
  std::vector<JournalEntry> Since(std::uint64_t mark) const;
  std::vector<JournalEntry> Last(std::size_t count) const;

  // The last runs.
  std::vector<JournalRun> LastRuns(std::size_t count) const;

  void Clear();

 private:
  struct Kept {
    JournalRun run;
    bool ended = false;
  };
  std::deque<Kept> kept_;
  std::uint64_t last_ = 0;
};

}  // namespace bench
