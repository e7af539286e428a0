#include "bench/host/journal.h"

#include <gmock/gmock.h>

namespace bench {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

auto Named(const std::string& name) {
  return Field(&JournalEntry::name, name);
}

TEST(JournalTest, KeepsNameArgumentsAndStatusUnderRunningNumbers) {
  Journal journal;
  const auto first = journal.Begin("One", "a, 1");
  journal.End(first, 0);
  const auto second = journal.Begin("Two", "");
  journal.End(second, -4);
  const auto entries = journal.Last(2);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].number, 1u);
  EXPECT_EQ(entries[0].arguments, "a, 1");
  EXPECT_EQ(entries[0].status, 0);
  EXPECT_EQ(entries[1].number, 2u);
  EXPECT_EQ(entries[1].status, -4);
}

TEST(JournalTest, ACallInsideAnotherEndsOnItsOwnEntry) {
  Journal journal;
  const auto outer = journal.Begin("Visit", "");
  const auto inner = journal.Begin("TypeGet", "");
  journal.End(inner, -2);
  journal.End(outer, -7);
  EXPECT_EQ(journal.Last(2)[0].status, -7);
  EXPECT_EQ(journal.Last(2)[1].status, -2);
}

TEST(JournalTest, SinceAMarkAreTheCallsBehindIt) {
  Journal journal;
  journal.Begin("Before", "");
  const auto mark = journal.Mark();
  EXPECT_THAT(journal.Since(mark), IsEmpty());
  journal.Begin("After", "");
  journal.Begin("Later", "");
  EXPECT_THAT(journal.Since(mark), ElementsAre(Named("After"), Named("Later")));
}

TEST(JournalTest, ForgetsTheOldestBeyondItsCapacity) {
  Journal journal;
  const auto first = journal.Begin("First", "");
  for (std::size_t i = 0; i < Journal::kCapacity; ++i) journal.Begin("Tick", "");
  journal.End(first, -1);
  const auto all = journal.Last(2 * Journal::kCapacity);
  ASSERT_EQ(all.size(), Journal::kCapacity);
  EXPECT_EQ(all.front().number, 2u);
  EXPECT_EQ(all.front().status, 0);
  EXPECT_EQ(journal.Since(0).size(), Journal::kCapacity);
}

}  // namespace
}  // namespace bench
