// What an update that is offered, and one that is staged, are to the version that is installed.
#pragma once

#include <string_view>

#include "deploy/helper/version.h"

namespace vek::helper {

enum class Decision {
  kNothing,   // nothing newer is offered, and nothing is staged
  kWithdraw,  // what is staged is no longer offered
  kKeep,      // what is offered is staged already
  kStage,     // what is offered is to be staged, in the place of what may be
};

// `offered` and `staged` are the manifests' bytes, the latter empty when nothing is staged completely. A
// manifest that changed under the same version is another update.
Decision DecideOnOffer(const Version& installed, const Version& offered_version, std::string_view offered,
                       std::string_view staged);

// Whether a staged update is still one: since it was staged, a newer version may have come by other ways.
bool IsWorthInstalling(const Version& installed, const Version& staged);

}  // namespace vek::helper
