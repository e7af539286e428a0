// The update that waits in the folder "pending" for the host's end.
//
// It is complete if and only if the marker stands there, which is written last and is the update's manifest.
// Whatever takes the update away takes the marker first.
#pragma once

#include <string>
#include <string_view>

#include "deploy/helper/installation.h"
#include "deploy/helper/manifest.h"
#include "deploy/helper/outcome.h"

namespace vek::helper {

// The marker's bytes; empty when no update is staged completely.
std::string StagedManifest(const Installation& installation);

// Copies the files of the manifest, whose bytes are `manifest_bytes`, from the folder `source`, in the place
// of what is staged. A file that is not what the manifest says, or can't be copied, leaves nothing staged.
Outcome Stage(const Installation& installation, const std::wstring& source, const Manifest& manifest,
              std::string_view manifest_bytes);

// Takes away what is staged, complete or not. False when the marker stays.
bool ClearStaged(const Installation& installation);

}  // namespace vek::helper
