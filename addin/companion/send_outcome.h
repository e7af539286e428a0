// What the log says of a request to the companion application, and what the user is told who has none
// running.
#pragma once

#include <string>

#include "addin/companion/web_client.h"

namespace vek {

// Logs `line` and the companion's answer.
VekWebClient::SuccessCallback LogSuccess(const wchar_t* line);

// Logs `head` and the error.
VekWebClient::ErrorCallback LogError(const wchar_t* head);

// Starts the companion and asks the user to try again once it is there.
void TurnOnCompanion();

}  // namespace vek
