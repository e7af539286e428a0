#include "bench/host/base64.h"

#include <gtest/gtest.h>

namespace bench {
namespace {

TEST(Base64Test, DecodesWithEveryLengthOfPadding) {
  EXPECT_EQ(DecodeBase64(""), "");
  EXPECT_EQ(DecodeBase64("TQ=="), "M");
  EXPECT_EQ(DecodeBase64("TWE="), "Ma");
  EXPECT_EQ(DecodeBase64("TWFu"), "Man");
  EXPECT_EQ(DecodeBase64("+/8A"), std::string("\xFB\xFF\0", 3));
}

TEST(Base64Test, RefusesWhatIsNone) {
  for (const char* text : {"TWF", "TW Fu", "TW-u", "T===", "=TWF"}) EXPECT_FALSE(DecodeBase64(text)) << text;
}

}  // namespace
}  // namespace bench
