// The endpoints of the server. They run on the server thread and call nothing of the host.
#pragma once

#include <functional>

#include "addin/server/http_message.h"
#include "addin/server/main_thread_bridge.h"

namespace vek {

// What the endpoints hand their work to.
struct Endpoints {
  CreoMcpMainThread& main_thread;
  int port;  // as the health body names it
  std::function<void(HttpServerResponse&, const HttpServerRequest&)> open_part;
};

// Answers `request` by its method and path. A batch blocks until the main thread has run it or the bridge's
// wait is over.
void RouteRequest(HttpServerResponse& response, const HttpServerRequest& request, const Endpoints& endpoints);

}  // namespace vek
