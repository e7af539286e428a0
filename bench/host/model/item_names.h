// Names of features and of their geometry.
#pragma once

#include <ProObjects.h>

#include <optional>
#include <string>
#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

// The item of that type and name: a feature by its own name; geometry by its own or by that of the feature
// that owns it, which for the types 5 and 176 must be a datum plane. Case doesn't matter.
std::optional<int> FindByName(const Model& model, ProType type, std::wstring_view name);

// The name that the item holds, to be read or replaced; null when there is no such item.
std::wstring* NameOf(Model& model, ProType type, int id);

// Whether another item of the same type holds the name.
bool IsNameTaken(const Model& model, ProType type, int id, std::wstring_view name);

}  // namespace bench
