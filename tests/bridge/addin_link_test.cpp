// The add-in that takes a batch and says nothing.

#include "bridge/addin_link.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace vek::bridge {
namespace {

using std::chrono::milliseconds;

// A port on which connections are taken by the system, and by nobody else.
class DumbListener {
 public:
  DumbListener() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(::bind(descriptor_, any, size), 0);
    EXPECT_EQ(::listen(descriptor_, 1), 0);
    EXPECT_EQ(::getsockname(descriptor_, any, &size), 0);
    port_ = ntohs(address.sin_port);
  }
  ~DumbListener() { ::close(descriptor_); }

  Address address() const { return {"localhost", port_}; }

 private:
  const int descriptor_ = ::socket(AF_INET, SOCK_STREAM, 0);
  std::uint16_t port_ = 0;
};

TEST(AddinLink, WaitsForASilentAddinUntilTheTimeIsOverOrNobodyWantsTheAnswer) {
  const DumbListener listener;
  AddinLink link(listener.address(), {milliseconds(5'000), milliseconds(300)});
  const Step step{"api_document_rebuild"};

  std::vector<milliseconds> told;
  const auto silent = link.Post({&step, 1}, [&told](milliseconds waited) {
    told.push_back(waited);
    return true;
  });
  EXPECT_TRUE(silent.failure.starts_with("Creo has not answered on localhost:")) << silent.failure;
  ASSERT_GE(told.size(), 2U);
  EXPECT_TRUE(std::ranges::is_sorted(told));
  EXPECT_GE(told.back(), milliseconds(300));

  told.clear();
  const auto abandoned = link.Post({&step, 1}, [&told](milliseconds waited) {
    told.push_back(waited);
    return false;
  });
  EXPECT_TRUE(abandoned.failure.starts_with("The call was cancelled.")) << abandoned.failure;
  EXPECT_EQ(told.size(), 1U);
}

}  // namespace
}  // namespace vek::bridge
