#include "bench/host/instruments/journal.h"

#include <gmock/gmock.h>

namespace bench {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

auto Named(const std::string& name) {
  return Field(&JournalEntry::name, name);
}

TEST(JournalTest, KeepsArgumentsAndStatusAlsoOfACallInsideItsLike) {
  Journal journal;
  const auto outer = journal.Begin("Visit", "a, 1");
  const auto inner = journal.Begin("Visit", "a, 1");
  journal.End(inner, -2);
  journal.End(outer, -2);
  EXPECT_EQ(journal.LastRuns(10).size(), 2u) << "no repetition";
  const auto third = journal.Begin("Type", "");
  journal.End(third, -7);
  const auto entries = journal.Last(3);
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].number, 1u);
  EXPECT_EQ(entries[0].arguments, "a, 1");
  EXPECT_EQ(entries[1].status, -2);
  EXPECT_EQ(entries[2].number, 3u);
  EXPECT_EQ(entries[2].status, -7);
}

TEST(JournalTest, ForgetsTheOldestBeyondItsCapacity) {
  Journal journal;
  const auto first = journal.Begin("First", "");
  for (std::size_t i = 0; i < Journal::kCapacity; ++i)
    journal.End(journal.Begin("Call", std::to_string(i)), 0);
  journal.End(first, -1);
  const auto all = journal.Last(2 * Journal::kCapacity);
  ASSERT_EQ(all.size(), Journal::kCapacity);
  EXPECT_EQ(all.front().number, 2u);
  EXPECT_EQ(all.front().status, 0);
  EXPECT_EQ(journal.Since(0).size(), Journal::kCapacity);
}

TEST(JournalTest, RepetitionPushesNothingElseOut) {
  Journal journal;
  journal.End(journal.Begin("First", ""), 0);
  for (std::size_t i = 0; i < 3 * Journal::kCapacity; ++i) journal.End(journal.Begin("Tick", "100"), 0);
  const auto runs = journal.LastRuns(Journal::kCapacity);
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].entry.name, "First");
  EXPECT_EQ(runs[1].entry.number, 2u);
  EXPECT_EQ(runs[1].times, 3 * Journal::kCapacity);
}

TEST(JournalTest, OnlyTheSameCallWithTheSameEndIsARepetition) {
  Journal journal;
  const auto make = [&journal](const char* name, const char* arguments, int status) {
    journal.End(journal.Begin(name, arguments), status);
  };
  make("Get", "a", 0);
  make("Get", "a", 0);
  make("Get", "b", 0);
  make("Get", "b", -1);
  make("Set", "b", -1);
  std::vector<std::uint64_t> times;
  for (const JournalRun& run : journal.LastRuns(10)) times.push_back(run.times);
  EXPECT_THAT(times, ElementsAre(2, 1, 1, 1));
  EXPECT_THAT(journal.LastRuns(1), ElementsAre(Field(&JournalRun::entry, Named("Set"))));
}

TEST(JournalTest, AMarkAmongRepetitionsTellsThoseBehindIt) {
  Journal journal;
  const auto make = [&journal](const char* name) { journal.End(journal.Begin(name, "x"), -1); };
  for (int i = 0; i < 3; ++i) make("Create");
  const auto mark = journal.Mark();
  EXPECT_THAT(journal.Since(mark), IsEmpty());
  for (int i = 0; i < 2; ++i) make("Create");
  make("Other");
  make("Create");

  std::vector<std::uint64_t> numbers;
  for (const JournalEntry& call : journal.Since(mark)) numbers.push_back(call.number);
  EXPECT_THAT(numbers, ElementsAre(4, 5, 6, 7));
  EXPECT_THAT(journal.Last(3), ElementsAre(Named("Create"), Named("Other"), Named("Create")));
  EXPECT_EQ(journal.Since(0).size(), 7u);
}

}  // namespace
}  // namespace bench
