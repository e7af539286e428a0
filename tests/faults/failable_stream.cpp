#include "tests/faults/failable_stream.h"

#include <shlwapi.h>

#include "tests/faults/windows_calls.h"

namespace vek::support {
namespace {

// Its life is that of the stream behind it.
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

}  // namespace

IStream* WINAPI CreateFailableMemStream(const BYTE* bytes, UINT size) {
  IStream* const stream = ::SHCreateMemStream(bytes, size);
  return stream ? new FailableStream(stream) : nullptr;
}

}  // namespace vek::support
