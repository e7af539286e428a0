#include "bench/host/calls/array.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "bench/host/host.h"
#include "bench/host/instruments/call_frame.h"

namespace bench {
namespace {

// Stands before the first object; callers know only the objects.
struct alignas(std::max_align_t) Header {
  int count;
  int capacity;
  int object_size;
  int reallocation_size;
};

constexpr int kMostBytes = 1 << 30;

Header* HeaderOf(ProArray array) {
  return static_cast<Header*>(array) - 1;
}

char* ObjectAt(ProArray array, int index) {
  return static_cast<char*>(array) + static_cast<std::size_t>(index) * HeaderOf(array)->object_size;
}

bool Fits(long long count, int object_size) {
  return count * object_size <= kMostBytes;
}

ProArray Allocate(int count, int capacity, int object_size, int reallocation_size) {
  const std::size_t bytes = static_cast<std::size_t>(capacity) * object_size;
  auto* header = static_cast<Header*>(std::calloc(1, sizeof(Header) + std::max<std::size_t>(bytes, 1)));
  if (!header) throw std::bad_alloc();
  *header = {count, capacity, object_size, reallocation_size};
  return header + 1;
}

// Room for `count` objects. The array may move, as its callers must expect: they hand over its address.
ProArray Grown(ProArray array, int count) {
  const Header& old = *HeaderOf(array);
  if (count <= old.capacity) return array;
  const ProArray grown = Allocate(old.count, std::max(count, old.capacity + old.reallocation_size),
                                  old.object_size, old.reallocation_size);
  std::memcpy(grown, array, static_cast<std::size_t>(old.count) * old.object_size);
  TheHost().ledger.TakeBack(array, HandleKind::kArray, CurrentCall());
  TheHost().ledger.Give(grown, HandleKind::kArray, CurrentCall());
  std::free(HeaderOf(array));
  return grown;
}

bool IsLive(const void* array) {
  return TheHost().ledger.Check(array, HandleKind::kArray, CurrentCall());
}

}  // namespace

ProArray NewArray(const void* objects, int count, int object_size, int reallocation_size) {
  const ProArray array = Allocate(count, count, object_size, reallocation_size);
  if (objects && count > 0) std::memcpy(array, objects, static_cast<std::size_t>(count) * object_size);
  TheHost().ledger.Give(array, HandleKind::kArray, CurrentCall());
  return array;
}

bool FreeArray(ProArray array) {
  if (!TheHost().ledger.TakeBack(array, HandleKind::kArray, CurrentCall())) return false;
  std::free(HeaderOf(array));
  return true;
}

std::optional<int> ArrayCount(const void* array, int object_size) {
  if (!array || !IsLive(array)) return std::nullopt;
  const Header& header = *HeaderOf(const_cast<void*>(array));
  if (header.object_size != object_size) return std::nullopt;
  return header.count;
}

}  // namespace bench

using namespace bench;

ProError ProArrayAlloc(int count, int object_size, int reallocation_size, ProArray* array) {
  HOST_CALL(count, object_size, reallocation_size) {
    if (!array || count < 0 || object_size <= 0 || reallocation_size <= 0) return PRO_TK_BAD_INPUTS;
    if (!Fits(count, object_size)) return PRO_TK_OUT_OF_MEMORY;
    *array = NewArray(nullptr, count, object_size, reallocation_size);
    return PRO_TK_NO_ERROR;
  };
}

ProError ProArrayFree(ProArray* array) {
  HOST_CALL_THAT_NEVER_FAILS(array ? *array : nullptr) {
    if (!array || !*array) return PRO_TK_BAD_INPUTS;
    if (!FreeArray(*array)) return PRO_TK_INVALID_PTR;
    *array = nullptr;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProArraySizeGet(ProArray array, int* count) {
  HOST_CALL(array) {
    if (!array || !count) return PRO_TK_BAD_INPUTS;
    if (!IsLive(array)) return PRO_TK_INVALID_PTR;
    *count = HeaderOf(array)->count;
    return PRO_TK_NO_ERROR;
  };
}

ProError ProArrayObjectAdd(ProArray* array, int index, int count, void* objects) {
  HOST_CALL(array ? *array : nullptr, index, count) {
    if (!array || !*array || !objects || count <= 0) return PRO_TK_BAD_INPUTS;
    if (!IsLive(*array)) return PRO_TK_INVALID_PTR;
    const Header& header = *HeaderOf(*array);
    const int before = header.count;
    const int place = index == -1 ? before : index;
    if (place < 0 || place > before) return PRO_TK_BAD_INPUTS;
    if (!Fits(static_cast<long long>(before) + count, header.object_size)) return PRO_TK_OUT_OF_MEMORY;

    *array = Grown(*array, before + count);
    const auto size = static_cast<std::size_t>(HeaderOf(*array)->object_size);
    std::memmove(ObjectAt(*array, place + count), ObjectAt(*array, place), (before - place) * size);
    std::memcpy(ObjectAt(*array, place), objects, count * size);
    HeaderOf(*array)->count = before + count;
    return PRO_TK_NO_ERROR;
  };
}
