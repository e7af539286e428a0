// Calls of tools, from their parameters to their results.
#pragma once

#include <string>

#include "bridge/catalogue.h"
#include "bridge/creo.h"
#include "bridge/json.h"
#include "bridge/steps.h"

namespace vek::bridge {

struct ToolCall {
  std::string tool;
  Json arguments = Json::object();

  // How many steps the progress of the call counts.
  std::size_t StepCount() const;
};

// The parameters of "tools/call"; throws RpcError for a tool that is none and for arguments that are no
// object.
ToolCall ReadToolCall(const Json& params, const Catalogue& catalogue);

// Checks the call and runs it. Mistakes in it are results that say so, since only results reach an assistant.
Json RunToolCall(const ToolCall& call, const Catalogue& catalogue, Creo& creo, const Follower& follower);

}  // namespace vek::bridge
