// What the bench's process holds of its system, as its own system counts it.
#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include "bench/host/console/console.h"

namespace bench {
namespace {

// An entry of the system's list of all handles, of which only the owner counts here.
struct SystemHandle {
  void* object;
  ULONG_PTR owner;
  ULONG_PTR value;
  ULONG access;
  USHORT trace;
  USHORT type;
  ULONG attributes;
  ULONG reserved;
};

// Asked of the system's whole list: the count that a process can ask for of itself is always 0 under Wine.
std::size_t Handles() {
  using Query = LONG(NTAPI*)(int what, void* answer, ULONG size, ULONG* needed);
  constexpr int kAllHandles = 64;
  constexpr LONG kTooSmall = static_cast<LONG>(0xC0000004);
  const auto query = reinterpret_cast<Query>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  if (!query) throw ConsoleError("the system doesn't list handles");

  // The entries stand behind their count and one more word.
  constexpr std::size_t kHead = 2 * sizeof(ULONG_PTR);
  std::vector<std::byte> answer(1 << 16);
  LONG status = 0;
  while ((status = query(kAllHandles, answer.data(), static_cast<ULONG>(answer.size()), nullptr)) ==
         kTooSmall)
    answer.resize(answer.size() * 2);
  if (status != 0) throw ConsoleError("the system doesn't list handles");
  ULONG_PTR all = 0;
  std::memcpy(&all, answer.data(), sizeof all);
  std::size_t own = 0;
  for (ULONG_PTR i = 0; i < all; ++i) {
    SystemHandle handle;
    std::memcpy(&handle, answer.data() + kHead + i * sizeof handle, sizeof handle);
    if (handle.owner == GetCurrentProcessId()) ++own;
  }
  return own;
}

int Threads() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (snapshot == INVALID_HANDLE_VALUE) throw ConsoleError("the system doesn't list threads");
  int count = 0;
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  for (BOOL there = Thread32First(snapshot, &thread); there; there = Thread32Next(snapshot, &thread))
    if (thread.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  CloseHandle(snapshot);
  return count;
}

std::size_t ResidentBytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters))
    throw ConsoleError("the system doesn't tell the process's memory");
  return counters.WorkingSetSize;
}

struct HeapUse {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

// What is allocated at this moment, whatever the heaps keep beside it for later.
HeapUse AllocatedOnHeaps() {
  std::array<HANDLE, 64> heaps{};
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  if (count == 0 || count > heaps.size()) throw ConsoleError("the system doesn't list heaps");
  HeapUse use;
  for (const HANDLE heap : std::span(heaps).first(count)) {
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
      ++use.blocks;
      use.bytes += entry.cbData;
    }
    HeapUnlock(heap);
  }
  return use;
}

}  // namespace

void ShowResources(ConsoleWords, const ConsoleSay& say) {
  const HeapUse heap = AllocatedOnHeaps();
  say("handles: " + std::to_string(Handles()));
  say("threads: " + std::to_string(Threads()));
  say("memory: " + std::to_string(ResidentBytes() / 1024) + " kB");
  say("allocated: " + std::to_string(heap.bytes / 1024) + " kB in " + std::to_string(heap.blocks) +
      " blocks");
}

}  // namespace bench
