#include "tests/faults/windows_calls.h"

#include <winsock2.h>

#include <windows.h>

#include <objidl.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>
#include <tlhelp32.h>
#include <wincrypt.h>
#include <winhttp.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <type_traits>

// The library's headers take the names of these two for granted.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

namespace vek::support {
namespace {

struct Plan {
  std::mutex mutex;
  std::map<std::string, int> counts;
  std::vector<WindowsCall> made;
  std::optional<WindowsCall> to_fail;
  bool failed = false;
  std::map<std::string, int> out;
};

// Never destroyed: the add-in's process-wide objects close their sockets when all else is gone.
Plan& ThePlan() {
  static Plan& plan = *new Plan;
  return plan;
}

// A call that has failed by itself. No other of that name has been made meanwhile: each is one thread's own.
void ForgetLast(const char* name) {
  Plan& plan = ThePlan();
  const DWORD error = ::GetLastError();
  {
    const std::lock_guard lock(plan.mutex);
    const auto last = std::ranges::find(plan.made.rbegin(), plan.made.rend(), name, &WindowsCall::name);
    if (last != plan.made.rend()) plan.made.erase(std::next(last).base());
  }
  ::SetLastError(error);
}

void Account(const char* kind, int count) {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  plan.out[kind] += count;
}

bool IsGivenOut(Gdiplus::GpStatus status) {
  return status == Gdiplus::Ok;
}
template <typename T>
bool IsGivenOut(T* handle) {
  return handle != nullptr && handle != INVALID_HANDLE_VALUE;
}
bool IsGivenOut(SOCKET socket) {
  return socket != INVALID_SOCKET;
}

// Giving back nothing is no more than a call without effect.
template <typename T>
bool IsNothing(T argument) {
  if constexpr (std::is_pointer_v<T>) return argument == nullptr;
  return false;
}

enum class Way { kFails, kFailsWhenDone, kFailsFirst, kGivesBack };

// The function that stands in the place of a call. `Row` is its line of the list.
template <typename Signature>
struct StandIn;
template <typename Result, typename... Arguments>
struct StandIn<Result (*)(Arguments...)> {
  template <typename Row>
  static Result Call(Arguments... arguments) {
    if constexpr (Row::kWay == Way::kGivesBack) {
      if (sizeof...(arguments) == 0 || !(... && IsNothing(arguments))) Account(Row::kKind, -1);
      return Row::Real()(arguments...);
    } else if constexpr (Row::kWay == Way::kFailsWhenDone) {
      const Result result = Row::Real()(arguments...);
      return result > 0 && IsToFail(Row::kName) ? Failed<Row>() : result;
    } else {
      if (IsDue<Row>() && IsToFail(Row::kName)) return Failed<Row>();
      const Result result = Row::Real()(arguments...);
      if (result == static_cast<Result>(Row::Failure())) ForgetLast(Row::kName);
      if constexpr (Row::kGivenOut > 0)
        if (Row::GivesOut(result)) Account(Row::kKind, Row::kGivenOut);
      return result;
    }
  }

 private:
  template <typename Row>
  static bool IsDue() {
    if constexpr (Row::kWay != Way::kFailsFirst) return true;
    Plan& plan = ThePlan();
    const std::lock_guard lock(plan.mutex);
    return plan.counts[Row::kName] == 0;
  }
  template <typename Row>
  static Result Failed() {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return static_cast<Result>(Row::Failure());
  }
};

// A stream of Windows whose calls are counted and failed with the others. Its life is that of the stream
// behind it.
class FailableStream final : public IStream {
 public:
  explicit FailableStream(IStream* stream) : stream_(stream) {}

  ULONG WINAPI AddRef() override { return stream_->AddRef(); }
  ULONG WINAPI Release() override {
    const ULONG left = stream_->Release();
    if (left == 0) delete this;
    return left;
  }
  HRESULT WINAPI QueryInterface(REFIID id, void** object) override {
    void* found = nullptr;
    const HRESULT result = stream_->QueryInterface(id, &found);
    *object = FAILED(result) ? nullptr : this;
    return result;
  }

  HRESULT WINAPI Read(void* bytes, ULONG size, ULONG* count) override {
    return IsToFail("IStream::Read") ? E_FAIL : stream_->Read(bytes, size, count);
  }
  HRESULT WINAPI Write(const void* bytes, ULONG size, ULONG* count) override {
    return IsToFail("IStream::Write") ? STG_E_MEDIUMFULL : stream_->Write(bytes, size, count);
  }
  HRESULT WINAPI Seek(LARGE_INTEGER move, DWORD from, ULARGE_INTEGER* at) override {
    return IsToFail("IStream::Seek") ? E_FAIL : stream_->Seek(move, from, at);
  }
  HRESULT WINAPI Stat(STATSTG* facts, DWORD which) override {
    return IsToFail("IStream::Stat") ? E_FAIL : stream_->Stat(facts, which);
  }

  // What neither the add-in nor an encoder asks for.
  HRESULT WINAPI SetSize(ULARGE_INTEGER size) override { return stream_->SetSize(size); }
  HRESULT WINAPI CopyTo(IStream* to, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                        ULARGE_INTEGER* written) override {
    return stream_->CopyTo(to, size, read, written);
  }
  HRESULT WINAPI Commit(DWORD how) override { return stream_->Commit(how); }
  HRESULT WINAPI Revert() override { return stream_->Revert(); }
  HRESULT WINAPI LockRegion(ULARGE_INTEGER at, ULARGE_INTEGER size, DWORD kind) override {
    return stream_->LockRegion(at, size, kind);
  }
  HRESULT WINAPI UnlockRegion(ULARGE_INTEGER at, ULARGE_INTEGER size, DWORD kind) override {
    return stream_->UnlockRegion(at, size, kind);
  }
  HRESULT WINAPI Clone(IStream** copy) override { return stream_->Clone(copy); }

 private:
  ~FailableStream() = default;

  IStream* const stream_;
};

// The system's stream in memory, behind such a one.
IStream* WINAPI CreateFailableMemStream(const BYTE* bytes, UINT size) {
  IStream* const stream = ::SHCreateMemStream(bytes, size);
  return stream ? new FailableStream(stream) : nullptr;
}

}  // namespace

bool IsToFail(const char* name) {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  const WindowsCall call{name, ++plan.counts[name]};
  plan.made.push_back(call);
  if (!plan.to_fail || plan.to_fail->name != call.name || plan.to_fail->nth != call.nth) return false;
  plan.failed = true;
  return true;
}

void ResetWindowsCalls() {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  plan.counts.clear();
  plan.made.clear();
  plan.to_fail.reset();
  plan.failed = false;
}

std::vector<WindowsCall> WindowsCallsMade() {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  return plan.made;
}

void FailWindowsCall(const WindowsCall& call) {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  plan.to_fail = call;
}

bool WindowsCallFailed() {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  return plan.failed;
}

std::map<std::string, int> OutstandingOfWindows() {
  Plan& plan = ThePlan();
  const std::lock_guard lock(plan.mutex);
  auto out = plan.out;
  std::erase_if(out, [](const auto& kind) { return kind.second == 0; });
  return out;
}

}  // namespace vek::support

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

// For each call of the list the pointer that an import has, and a jump by way of it for objects that name the
// function itself.
#define STAND_IN(call, real, way, failure, kind, given_out)                    \
  namespace vek::support {                                                     \
  namespace {                                                                  \
  struct Row_##call {                                                          \
    static constexpr const char* kName = #call;                                \
    static constexpr Way kWay = way;                                           \
    static constexpr const char* kKind = kind;                                 \
    static constexpr int kGivenOut = given_out;                                \
    static auto Real() { return &real; }                                       \
    static auto Failure() { return failure; }                                  \
    template <typename Result>                                                 \
    static bool GivesOut(Result result) {                                      \
      if constexpr (std::is_same_v<Result, int>)                               \
        return result != failure;                                              \
      else                                                                     \
        return IsGivenOut(result);                                             \
    }                                                                          \
  };                                                                           \
  }                                                                            \
  }                                                                            \
  extern "C" {                                                                 \
  decltype(&call) __imp_failable_##call =                                      \
      &vek::support::StandIn<decltype(&call)>::Call<vek::support::Row_##call>; \
  }                                                                            \
  asm(".text\n.globl failable_" #call "\nfailable_" #call ": jmp *__imp_failable_" #call "(%rip)\n");

#define OPENS(call, failure, kind) STAND_IN(call, call, Way::kFails, failure, kind, 1)
#define OPENS_TWO(call, failure, kind) STAND_IN(call, call, Way::kFails, failure, kind, 2)
#define FAILS(call, failure) STAND_IN(call, call, Way::kFails, failure, nullptr, 0)
#define MAKES(call, failure, function) \
  STAND_IN(call, vek::support::function, Way::kFails, failure, nullptr, 0)
#define FAILS_WHEN_DONE(call, failure) STAND_IN(call, call, Way::kFailsWhenDone, failure, nullptr, 0)
#define FAILS_FIRST(call, failure) STAND_IN(call, call, Way::kFailsFirst, failure, nullptr, 0)
#define GIVES_BACK(call, kind) STAND_IN(call, call, Way::kGivesBack, nullptr, kind, 0)
#define NEVER_FAILS(call)
#include "tests/faults/windows_calls.inc"
