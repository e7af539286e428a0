// Expandable arrays, as the toolkit hands them out and takes them.
#pragma once

#include <ProArray.h>

#include <optional>
#include <vector>

namespace bench {

// A new array with a copy of `count` objects (zeroes when `objects` is null), in the ledger in the name of
// the call that is being made. The caller of the toolkit frees it with ProArrayFree.
ProArray NewArray(const void* objects, int count, int object_size, int reallocation_size = 1);

template <typename Object>
Object* NewArray(const std::vector<Object>& objects) {
  return static_cast<Object*>(NewArray(objects.data(), static_cast<int>(objects.size()), sizeof(Object)));
}

// Ends an array as ProArrayFree does. False, and a violation, when it is no live one.
bool FreeArray(ProArray array);

// The objects of an array that a caller handed over; nothing when it is null, no live array (a violation), or
// holds objects of another size.
std::optional<int> ArrayCount(const void* array, int object_size);

template <typename Object>
std::optional<std::vector<Object>> ArrayObjects(const Object* array) {
  const auto count = ArrayCount(array, sizeof(Object));
  if (!count) return std::nullopt;
  return std::vector<Object>(array, array + *count);
}

}  // namespace bench
