// Components among the features of an assembly.
#pragma once

#include "bench/host/features/features.h"

namespace bench {

// Places a model at the end of the assembly, free of constraints. Refused when that would put the assembly
// into itself. The outcome tells the new feature's id.
FeatureOutcome AssembleComponent(Model& assembly, Model& model, const Matrix& place);

// The element tree of a component: its type, its initial position and, if it has constraints, their compound.
std::unique_ptr<ElementNode> ComponentTree(const Feature& feature);

// Puts a component where the initial position of such a tree says. Without the compound of the constraints it
// loses them; with it, they hold it as before.
FeatureOutcome RedefineComponent(Model& assembly, Feature& feature, const ElementNode& tree);

}  // namespace bench
