// Models as the text of a model file: everything but the geometry, which the recipes give again.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

// Throws when the model can't be told in full (a tree that refers to a model that is gone).
std::string ModelToText(const Model& model);

// A model with the name, features, ids and names of the file; its directory is the caller's to set. Throws,
// saying why, when the text is no model file or an impossible one.
std::unique_ptr<Model> ModelFromText(std::string_view text);

// The type of model that a file with this text holds; nothing when it is no model file.
std::optional<ProMdlType> TypeInText(std::string_view text);

}  // namespace bench
