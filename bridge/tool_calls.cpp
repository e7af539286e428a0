#include "bridge/tool_calls.h"

#include <utility>
#include <vector>

#include "bridge/argument_check.h"
#include "bridge/rpc.h"
#include "bridge/tool_results.h"
#include "bridge/tools.h"

namespace vek::bridge {
namespace {

struct BatchCall {
  std::vector<Step> steps;
  bool stop_on_failure = false;
};

// Reads one step, or tells what is wrong with it.
std::vector<std::string> ReadStep(const Json& entry, const Catalogue& catalogue, Step& step) {
  const Json* const operation = FindMember(entry, "operation");
  if (operation == nullptr || !operation->is_string())
    return {"It is not {\"operation\": name, \"arguments\": {…}}."};
  std::vector<std::string> mistakes;
  for (const auto& [name, value] : entry.items())
    if (name != "operation" && name != "arguments")
      mistakes.push_back("Unknown member '" + name + "': a step has operation and arguments.");
  step.operation = operation->get<std::string>();
  const Operation* const known = catalogue.Find(step.operation);
  if (known == nullptr) {
    mistakes.push_back("There is no operation '" + step.operation + "'.");
    return mistakes;
  }
  if (const Json* const arguments = FindMember(entry, "arguments")) step.arguments = *arguments;
  if (!step.arguments.is_object()) {
    mistakes.push_back("'arguments' must be an object.");
    return mistakes;
  }
  for (std::string& mistake : ArgumentMistakes(*known, step.arguments))
    mistakes.push_back(std::move(mistake));
  return mistakes;
}

std::vector<std::string> ReadBatch(const Json& arguments, const Catalogue& catalogue, BatchCall& batch) {
  std::vector<std::string> mistakes;
  for (const auto& [name, value] : arguments.items())
    if (name != "steps" && name != "stop_on_failure")
      mistakes.push_back("Unknown argument '" + name + "': batch takes steps, stop_on_failure.");
  if (const Json* const stop = FindMember(arguments, "stop_on_failure")) {
    if (stop->is_boolean())
      batch.stop_on_failure = stop->get<bool>();
    else
      mistakes.push_back("Argument 'stop_on_failure' must be true or false.");
  }
  const Json* const steps = FindMember(arguments, "steps");
  if (steps == nullptr || !steps->is_array() || steps->empty()) {
    mistakes.push_back("'steps' is required: an array of {\"operation\": name, \"arguments\": {…}}.");
    return mistakes;
  }
  for (const Json& entry : *steps) {
    Step& step = batch.steps.emplace_back();
    for (const std::string& mistake : ReadStep(entry, catalogue, step))
      mistakes.push_back("Step " + std::to_string(batch.steps.size()) + ": " + mistake);
  }
  return mistakes;
}

}  // namespace

std::size_t ToolCall::StepCount() const {
  const Json* const steps = tool == kBatchTool ? FindMember(arguments, "steps") : nullptr;
  return steps != nullptr && steps->is_array() ? steps->size() : 1;
}

ToolCall ReadToolCall(const Json& params, const Catalogue& catalogue) {
  const Json* const name = FindMember(params, "name");
  if (name == nullptr || !name->is_string()) throw InvalidParams("'name' is required: the name of a tool.");
  ToolCall call{name->get<std::string>()};
  if (call.tool != kBatchTool && catalogue.Find(call.tool) == nullptr)
    throw InvalidParams("Unknown tool: " + call.tool);
  if (const Json* const arguments = FindMember(params, "arguments")) call.arguments = *arguments;
  if (!call.arguments.is_object()) throw InvalidParams("'arguments' must be an object.");
  return call;
}

Json RunToolCall(const ToolCall& call, const Catalogue& catalogue, Creo& creo, const Follower& follower) {
  if (call.tool == kBatchTool) {
    BatchCall batch;
    const auto mistakes = ReadBatch(call.arguments, catalogue, batch);
    if (!mistakes.empty()) return RefusedToolResult(mistakes);
    return BatchToolResult(batch.steps, RunSteps(batch.steps, batch.stop_on_failure, creo, follower));
  }
  const Operation& operation = *catalogue.Find(call.tool);
  const auto mistakes = ArgumentMistakes(operation, call.arguments);
  if (!mistakes.empty()) return RefusedToolResult(mistakes);
  const Step step{call.tool, call.arguments};
  return OperationToolResult(operation, RunSteps({&step, 1}, false, creo, follower).front());
}

}  // namespace vek::bridge
