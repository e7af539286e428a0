#include "addin/text/base64.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vek {
namespace {

TEST(DecodeBase64, ReadsTheAlphabetAndPassesOverAllElse) {
  using namespace std::string_literals;
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      // 'M' 'a' 'n' is 4D 61 6E: 010011 010110 000101 101110, which is T, W, F, u.
      {"TWFu", "Man"},
      {"TWE=", "Ma"},
      {"TWE", "Ma"},  // a short group gives what it has
      {"TW", "M"},
      {"T", ""},  // six bits make no byte
      {"+/+/", "\xfb\xff\xbf"},
      {"T\r\nW\tF u\r\n", "Man"},
      // Padding ends no group: 19, 16, 19, 16 are 010011 010000 010011 010000.
      {"TQ==TQ==", "\x4d\x04\xd0"},
      {"TWFu-_\xc3\xa4TWFu", "ManMan"},
      {"TWFu\0TWFu"s, "Man"},     // a NUL where a group begins ends the text
      {"TW\0FuTWFu"s, "ManMan"},  // and is passed over elsewhere
  };
  for (const auto& [text, bytes] : cases) {
    std::string buffer(text.size() + 1, '#');
    std::size_t size = text.size();
    EXPECT_TRUE(DecodeBase64(text, reinterpret_cast<unsigned char*>(buffer.data()), size)) << text;
    EXPECT_EQ(buffer.substr(0, size), bytes) << text;
    EXPECT_EQ(buffer[size], '#') << text;
  }
}

TEST(DecodeBase64, CountsOnWhenTheBufferIsFull) {
  unsigned char buffer[5] = {0, 0, 0, '#', '#'};
  std::size_t size = 4;
  EXPECT_FALSE(DecodeBase64("TWFuTWFuTQ", buffer, size));
  EXPECT_EQ(size, 7u);
  EXPECT_EQ(std::string(buffer, buffer + 5), "Man##");
}

}  // namespace
}  // namespace vek
