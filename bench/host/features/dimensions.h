// The dimensions of a model: which numbers of its features they are, and what they measure.
#pragma once

#include <ProObjects.h>

#include <optional>

#include "bench/host/model/model.h"

namespace bench {

// Gives symbols to the numbers of the feature that have none yet, and takes those away whose numbers are
// gone.
void UpdateDimensions(Model& model, const Feature& feature);

// Takes away the dimensions of features that the model doesn't have any more.
void DropDimensionsOfGoneFeatures(Model& model);

Dimension* FindDimension(Model& model, int id);

// Model units, or degrees of an angle. Nothing when the number can't be found.
std::optional<double> ValueOf(Model& model, const Dimension& dimension);

// Changes the number; the geometry follows with the next regeneration. A status other than 0 leaves it as it
// was: the feature's tree would make no sense with it, or the section can't have it.
ProError SetValue(Model& model, const Dimension& dimension, double value);

}  // namespace bench
