// The Model Context Protocol over lines: takes a client's lines and writes its answers.
//
// The thread that gives the lines answers all but calls of tools itself. Those are run by one worker, in the
// order in which they came, because Creo does one thing at a time; so a client is answered, and can cancel,
// while Creo works.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "bridge/catalogue.h"
#include "bridge/creo.h"
#include "bridge/json.h"
#include "bridge/rpc.h"
#include "bridge/tool_calls.h"

namespace vek::bridge {

class Server {
 public:
  // Writes one line; called from both threads, never at the same time.
  using WriteLine = std::function<void(const std::string& line)>;

  Server(const Catalogue& catalogue, Creo& creo, WriteLine write_line);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void Take(std::string_view line);

  // Returns when all calls that were taken are answered; nothing is to be taken afterwards.
  void Finish();

 private:
  class Replies;
  struct Call;

  void TakeMessage(const Json& json, const std::shared_ptr<Replies>& replies);
  void TakeRequest(const Message& message, const std::shared_ptr<Replies>& replies);
  void TakeNotification(const Message& message);
  Json Result(const Message& message) const;
  void QueueCall(const Message& message, const std::shared_ptr<Replies>& replies);
  void Work();
  void Answer(Call& call);
  void Write(const Json& message);

  const Catalogue& catalogue_;
  Creo& creo_;
  const WriteLine write_line_;
  std::mutex writing_;

  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Call>> calls_;  // the first is the one that runs
  bool finishing_ = false;

  std::thread worker_;
};

}  // namespace vek::bridge
