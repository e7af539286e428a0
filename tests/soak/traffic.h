// Requests of honest clients, each of whose answers is known beforehand: single ones, and scenes of several
// batches that build something, ask about it, and close it again.
#pragma once

#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace vek::soak {

class Traffic {
 public:
  // `work` is the bench's working directory as this system names it.
  Traffic(std::uint32_t seed, std::string work);

  // Saves the parts that later scenes open and place.
  void Prepare();

  // Scenes, with single requests in between, until `requests` of them have been answered. Stops at the first
  // that was answered wrongly, with a failure.
  void Run(int requests);

  // The health request, answered as it was at the start; how long that took.
  std::chrono::milliseconds AskHealth(std::chrono::milliseconds limit);
  // One small batch that runs on the main thread.
  void AskBatch();

  int requests() const { return requests_; }
  int batches() const { return batches_; }
  int sketches() const { return sketches_; }

 private:
  void Block();
  void Stud();
  void Frame();
  void PartOpening();
  void AskToOpenPart();
  void Single();
  void Singles();
  std::string Batch(const std::string& operations);
  int Between(int least, int most);
  std::string NewSketch();
  // A file of the working directory as the bench names it.
  std::string WindowsPath(const std::string& file) const;
  void Close(const std::string& answer);

  std::mt19937 random_;
  const std::string work_;
  std::string health_;
  int requests_ = 0;
  int batches_ = 0;
  int sketches_ = 0;
};

// Fails the running test when `text` lacks one of `parts`.
void ExpectHolds(const std::string& text, std::initializer_list<std::string> parts);

}  // namespace vek::soak
