#include <optional>

#include "bridge/addin_link.h"
#include "bridge/version.h"

namespace vek::bridge {
namespace {

using Ending = Exchange::Ending;

constexpr int kOk = 200;
constexpr int kNotReady = 503;
constexpr int kTimedOut = 504;

constexpr char kStateUnknown[] =
    " Some or all of the operations may have run, or may still run: look at the model before you repeat "
    "them.";

Creo::Answer Failed(std::string failure) {
  return {std::move(failure), {}};
}

// What the add-in says of a request that it did not serve.
std::string ErrorIn(const std::string& body) {
  const auto json = ReadJson(body);
  const Json* const error = json ? FindMember(*json, "error") : nullptr;
  return error != nullptr && error->is_string() ? error->get<std::string>() : std::string("no reason given");
}

std::string FailureOfStatus(const Exchange& exchange, const std::string& address) {
  const std::string error = ErrorIn(exchange.body);
  const std::string status = std::to_string(exchange.status);
  switch (exchange.status) {
    case kNotReady:
      return "The add-in is starting or stopping: " + error;
    case kTimedOut:
      return "Creo is busy, or a dialog stands open in it: " + error + kStateUnknown;
    default:
      return "What answers on " + address + " did not take the batch (status " + status + "): " + error;
  }
}

// An add-in that does not know an operation says so in one of these ways.
bool IsUnknown(const std::string& message, const std::string& operation) {
  return message == "Operation '" + operation + "' is not implemented by this provider." ||
         message == "Operation '" + operation + "' is not implemented by the Creo provider yet.";
}

StepResult ReadResult(const Json& entry, const std::string& operation) {
  const Json* const success = FindMember(entry, "success");
  const Json* const message = FindMember(entry, "message");
  const Json* const data = FindMember(entry, "data");
  StepResult result;
  if (success == nullptr || !success->is_boolean() || message == nullptr || !message->is_string())
    return {StepResult::Outcome::kFailed, "The add-in gave no result for " + operation + ".", nullptr};
  result.outcome = success->get<bool>() ? StepResult::Outcome::kDone : StepResult::Outcome::kFailed;
  result.message = message->get<std::string>();
  if (data != nullptr) result.data = *data;
  if (result.outcome == StepResult::Outcome::kFailed && IsUnknown(result.message, operation))
    result.message += std::string(" The add-in in Creo is older than vek-mcp ") + kVersion + ".";
  return result;
}

Creo::Answer ReadAnswer(const Exchange& exchange, std::span<const Step> steps, const std::string& address) {
  if (exchange.status != kOk) return Failed(FailureOfStatus(exchange, address));
  const auto json = ReadJson(exchange.body);
  const Json* const results = json ? FindMember(*json, "results") : nullptr;
  if (results == nullptr)
    return Failed("The answer from " + address +
                  " is not what the add-in answers: " + exchange.body.substr(0, 80) + kStateUnknown);
  Creo::Answer answer;
  for (const Step& step : steps) {
    const Json* const entry = FindMember(*results, step.operation);
    answer.results.push_back(ReadResult(entry != nullptr ? *entry : Json(), step.operation));
  }
  return answer;
}

}  // namespace

Creo::Answer ReadExchange(const Exchange& exchange, std::span<const Step> steps, const std::string& address) {
  switch (exchange.ending) {
    case Ending::kAnswered:
      return ReadAnswer(exchange, steps, address);
    case Ending::kNobodyListens:
      return Failed("Creo isn't running or the add-in isn't loaded: nothing answers on " + address + ".");
    case Ending::kClosed:
      return Failed("The connection to " + address + " was closed without an answer: Creo may be closing." +
                    kStateUnknown);
    case Ending::kCut:
      return Failed("The answer from " + address + " was cut off." + kStateUnknown);
    case Ending::kForeign:
      return Failed("What answers on " + address + " is another program than the add-in.");
    case Ending::kSilent:
      return Failed("Creo has not answered on " + address +
                    " in time: it is busy, or a dialog stands open in it." + kStateUnknown);
    case Ending::kAbandoned:
      break;
  }
  return Failed(std::string("The call was cancelled.") + kStateUnknown);
}

}  // namespace vek::bridge
