// The tools as a client lists them: one for each operation, with JSON Schemas made from the catalogue, and
// the batch.
#pragma once

#include "bridge/catalogue.h"
#include "bridge/json.h"

namespace vek::bridge {

inline constexpr char kBatchTool[] = "batch";

// The member of a result's structured content that holds data which is an array: structured content is an
// object always.
inline constexpr char kElements[] = "items";

// A screenshot's picture travels as image content; these members of its data are left out of the structured
// content.
inline constexpr char kPictureData[] = "screenshot_base64";
inline constexpr char kPictureType[] = "screenshot_media_type";

Json OperationTool(const Operation& operation);
Json BatchTool(const Catalogue& catalogue);

// All of them, the batch first: it is what most of an assistant's work goes through.
Json ListTools(const Catalogue& catalogue);

}  // namespace vek::bridge
