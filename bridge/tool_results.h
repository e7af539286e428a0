// The results of operations as results of tools.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "bridge/catalogue.h"
#include "bridge/creo.h"
#include "bridge/json.h"

namespace vek::bridge {

// The message as text; the data as structured content, and as text for clients that know no other; a picture
// as image. Some failures tell data, too.
Json OperationToolResult(const Operation& operation, StepResult result);

// A line of text for each step; all results as structured content and as text; the pictures as images, in the
// order of the steps. An error when a step failed.
Json BatchToolResult(std::span<const Step> steps, std::vector<StepResult> results);

// A call that was refused before anything was posted.
Json RefusedToolResult(const std::vector<std::string>& mistakes);

}  // namespace vek::bridge
