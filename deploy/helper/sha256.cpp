#include "deploy/helper/sha256.h"

#include <windows.h>

#include <bcrypt.h>

#include <cstddef>

namespace vek::helper {
namespace {

class Algorithm {
 public:
  Algorithm() {
    if (!BCRYPT_SUCCESS(::BCryptOpenAlgorithmProvider(&handle_, BCRYPT_SHA256_ALGORITHM, nullptr, 0)))
      handle_ = nullptr;
  }
  ~Algorithm() {
    if (handle_) ::BCryptCloseAlgorithmProvider(handle_, 0);
  }
  Algorithm(const Algorithm&) = delete;
  Algorithm& operator=(const Algorithm&) = delete;
  BCRYPT_ALG_HANDLE get() const { return handle_; }

 private:
  BCRYPT_ALG_HANDLE handle_ = nullptr;
};

class Hash {
 public:
  explicit Hash(const Algorithm& algorithm) {
    if (!algorithm.get() ||
        !BCRYPT_SUCCESS(::BCryptCreateHash(algorithm.get(), &handle_, nullptr, 0, nullptr, 0, 0)))
      handle_ = nullptr;
  }
  ~Hash() {
    if (handle_) ::BCryptDestroyHash(handle_);
  }
  Hash(const Hash&) = delete;
  Hash& operator=(const Hash&) = delete;
  BCRYPT_HASH_HANDLE get() const { return handle_; }

 private:
  BCRYPT_HASH_HANDLE handle_ = nullptr;
};

bool Digest(std::string_view bytes, unsigned char (&digest)[32]) {
  const Algorithm algorithm;
  const Hash hash(algorithm);
  if (!hash.get()) return false;
  // The system only reads what it takes as writable, and counts in 32 bits.
  constexpr std::size_t kLongestPart = 1u << 30;
  while (!bytes.empty()) {
    const std::string_view part = bytes.substr(0, kLongestPart);
    auto* data = reinterpret_cast<PUCHAR>(const_cast<char*>(part.data()));
    if (!BCRYPT_SUCCESS(::BCryptHashData(hash.get(), data, static_cast<ULONG>(part.size()), 0))) return false;
    bytes.remove_prefix(part.size());
  }
  return BCRYPT_SUCCESS(::BCryptFinishHash(hash.get(), digest, sizeof digest, 0));
}

}  // namespace

std::string Sha256(std::string_view bytes) {
  unsigned char digest[32];
  if (!Digest(bytes, digest)) return {};
  std::string text;
  for (const unsigned char byte : digest) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

}  // namespace vek::helper
