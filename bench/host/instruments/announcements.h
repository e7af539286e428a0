// What the host says of its own accord: complaints, message dialogs, and other lines of the console.
#pragma once

#include <deque>
#include <functional>
#include <string>

namespace bench {

class Announcements {
 public:
  static constexpr std::size_t kCapacity = 1'000;
  using Sink = std::function<void(const std::string& line)>;

  // Where lines go as they are said; none by default. The sink outlives Clear.
  void SetSink(Sink sink) { sink_ = std::move(sink); }

  // One line, in UTF-8, without its line break.
  void Say(const std::string& line);
  void Complain(const std::string& what) { Say("complaint: " + what); }

  // The last lines said.
  const std::deque<std::string>& Lines() const { return lines_; }
  void Clear() { lines_.clear(); }

 private:
  Sink sink_;
  std::deque<std::string> lines_;
};

}  // namespace bench
