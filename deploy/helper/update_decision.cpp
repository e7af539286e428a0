#include "deploy/helper/update_decision.h"

namespace vek::helper {

Decision DecideOnOffer(const Version& installed, const Version& offered_version, std::string_view offered,
                       std::string_view staged) {
  if (!IsWorthInstalling(installed, offered_version))
    return staged.empty() ? Decision::kNothing : Decision::kWithdraw;
  return offered == staged ? Decision::kKeep : Decision::kStage;
}

bool IsWorthInstalling(const Version& installed, const Version& staged) {
  return staged > installed;
}

}  // namespace vek::helper
