// The add-in over HTTP. A connection serves one batch; between two batches there is nothing.
#pragma once

#include <chrono>
#include <span>
#include <string>

#include "bridge/address.h"
#include "bridge/creo.h"

namespace vek::bridge {

// What became of a request.
struct Exchange {
  enum class Ending { kAnswered, kNobodyListens, kClosed, kCut, kForeign, kSilent, kAbandoned };
  Ending ending = Ending::kNobodyListens;
  int status = 0;
  std::string body;
};

class AddinLink : public Creo {
 public:
  struct Limits {
    std::chrono::milliseconds connecting{5'000};
    // The add-in gives a batch 120 s, and another client's may be before ours.
    std::chrono::milliseconds answering{250'000};
  };

  explicit AddinLink(Address address) : AddinLink(std::move(address), Limits()) {}
  AddinLink(Address address, Limits limits) : address_(std::move(address)), limits_(limits) {}

  Answer Post(std::span<const Step> steps, const KeepWaiting& keep_waiting) override;

  const Address& address() const { return address_; }

 private:
  const Address address_;
  const Limits limits_;
};

// The results of the steps in what came of posting them, or why there are none.
Creo::Answer ReadExchange(const Exchange& exchange, std::span<const Step> steps, const std::string& address);

}  // namespace vek::bridge
