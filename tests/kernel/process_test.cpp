#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "tests/kernel/recipes.h"

extern char** environ;

namespace bench::kernel::testing {
namespace {

pid_t Start(const std::string& argument) {
  std::string program = KERNEL_PROGRAM, copy = argument;
  char* const arguments[] = {program.data(), copy.data(), nullptr};
  pid_t process = 0;
  EXPECT_EQ(posix_spawn(&process, KERNEL_PROGRAM, nullptr, nullptr, arguments, environ), 0);
  return process;
}

// The exit code of a process that ends within some seconds, else -1 after it was killed.
int ExitCode(pid_t process) {
  int status = 0;
  for (int tries = 0; tries < 1000; ++tries) {
    if (waitpid(process, &status, WNOHANG) == process) return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  kill(process, SIGKILL);
  waitpid(process, &status, 0);
  return -1;
}

// Binds to a port that is free and tells it.
int BindToFreePort(int listener) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  EXPECT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
  return ntohs(address.sin_port);
}

// The host's end of the wire.
class Host {
 public:
  Host() : listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    const int port = BindToFreePort(listener_);
    EXPECT_EQ(listen(listener_, 1), 0);
    kernel_ = Start(std::to_string(port));
    connection_ = accept(listener_, nullptr, nullptr);
  }
  ~Host() {
    Close();
    close(listener_);
  }

  void Send(const std::string& bytes) {
    EXPECT_EQ(send(connection_, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
  }

  json Receive() {
    std::size_t end = 0;
    while ((end = received_.find('\n')) == std::string::npos) {
      char chunk[4096];
      const ssize_t count = recv(connection_, chunk, sizeof chunk, 0);
      if (count <= 0) return nullptr;
      received_.append(chunk, static_cast<std::size_t>(count));
    }
    const json answer = json::parse(received_.substr(0, end));
    received_.erase(0, end + 1);
    return answer;
  }

  // Whether nothing is answered for that long.
  bool IsSilentFor(std::chrono::milliseconds span) {
    pollfd watched{connection_, POLLIN, 0};
    return poll(&watched, 1, static_cast<int>(span.count())) == 0;
  }

  // Closes the connection and gives the kernel's exit code.
  int Close() {
    if (connection_ < 0) return -1;
    close(connection_);
    connection_ = -1;
    return ExitCode(kernel_);
  }

 private:
  int listener_ = -1;
  int connection_ = -1;
  pid_t kernel_ = 0;
  std::string received_;
};

std::string Request(int id, const Recipes& recipes) {
  return json{{"id", id}, {"do", "regenerate"}, {"recipes", recipes}}.dump() + "\n";
}

TEST(Process, AnswersInOrderHoweverTheLinesArriveAndEndsWithTheConnection) {
  Host host;
  const std::string first =
      Request(1, {Extrude(1, Front(), Rectangle(1, 0, 0, 2, 3))}) + "\r\nnonsense\n" + Request(2, {});
  host.Send(first.substr(0, first.size() / 2));
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  host.Send(first.substr(first.size() / 2) + Request(3, {}));
  const json block = host.Receive();
  EXPECT_EQ(block["id"], 1);
  ExpectClose(Volume(block["ok"]), 60);
  EXPECT_TRUE(host.Receive().contains("error"));
  EXPECT_EQ(host.Receive()["id"], 2);
  EXPECT_EQ(host.Receive()["id"], 3);
  EXPECT_EQ(host.Close(), 0);
}

TEST(Process, TakesAndGivesLongLines) {
  Entities points;
  for (int i = 0; i < 2000; ++i) points.push_back(Point(i + 1, i, 0));
  Host host;
  const std::string request = Request(1, {SketchRecipe(1, Front(), points)});
  EXPECT_GT(request.size(), 65536u);
  host.Send(request);
  EXPECT_EQ(host.Receive()["ok"]["points"].size(), 2000u);
}

TEST(Process, EndsWithTheConnectionAlsoInTheMidstOfAComputation) {
  // Hundreds of holes, each a cut of its own in a body that has all those before: a matter of minutes.
  Recipes recipes{Extrude(1, Front(), {Circle(1, 0, 0, 1000)})};
  for (int i = 0; i < 400; ++i)
    recipes.push_back(Extrude(i + 2, Front(), {Circle(1, 10.0 * (i % 20), 10.0 * (i / 20), 3)},
                              {.operation = "cut", .mode = "through_all"}));
  Host host;
  host.Send(Request(1, recipes));
  ASSERT_TRUE(host.IsSilentFor(std::chrono::milliseconds(500))) << "it is at work";
  EXPECT_EQ(host.Close(), 0);
}

TEST(Process, EndsWhenItIsCalledWronglyOrNobodyListens) {
  for (const char* port : {"", "many", "0", "70000", "12x"}) EXPECT_EQ(ExitCode(Start(port)), 2) << port;
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  const int port = BindToFreePort(probe);
  close(probe);
  EXPECT_EQ(ExitCode(Start(std::to_string(port))), 1);
}

}  // namespace
}  // namespace bench::kernel::testing
