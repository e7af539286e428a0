// The endpoints of the server. They run on the server thread and call nothing of the host.
#pragma once

#include "addin/server/http_message.h"
#include "addin/server/main_thread_bridge.h"

namespace vek {

// Answers `request` by its method and path. A batch blocks until the main thread has run it or the bridge's
// wait is over. `port` is what the health body names.
void RouteRequest(HttpServerResponse& response, const HttpServerRequest& request,
                  CreoMcpMainThread& main_thread, int port);

}  // namespace vek
