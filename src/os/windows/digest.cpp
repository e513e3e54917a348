#include "os/digest.h"

#include <algorithm>
#include <array>

#include "os/hex_digits.h"
#include "os/windows/native.h"

// Behind what it needs.
#include <bcrypt.h>

namespace os {
namespace {

class SystemDigest : public Digest {
 public:
  SystemDigest() {
    isGood_ = ::BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr, 0) >= 0 &&
              ::BCryptCreateHash(algorithm_, &state_, nullptr, 0, nullptr, 0, 0) >= 0;
  }
  ~SystemDigest() override {
    if (state_) ::BCryptDestroyHash(state_);
    if (algorithm_) ::BCryptCloseAlgorithmProvider(algorithm_, 0);
  }
  SystemDigest(const SystemDigest&) = delete;
  SystemDigest& operator=(const SystemDigest&) = delete;

  void take(std::string_view piece) override {
    constexpr std::size_t kMost = std::size_t{1} << 30;  // the system counts in 32 bits
    for (; isGood_ && !piece.empty(); piece.remove_prefix(std::min(kMost, piece.size()))) {
      std::string_view part = piece.substr(0, kMost);
      isGood_ = ::BCryptHashData(state_, bytesOf(part), static_cast<ULONG>(part.size()), 0) >= 0;
    }
  }
  std::string hex() override {
    std::array<unsigned char, 32> bytes{};
    if (!isGood_ || ::BCryptFinishHash(state_, bytes.data(), static_cast<ULONG>(bytes.size()), 0) < 0) return {};
    return hexDigits(bytes);
  }

 private:
  // It only reads them.
  static PUCHAR bytesOf(std::string_view part) { return reinterpret_cast<PUCHAR>(const_cast<char*>(part.data())); }

  BCRYPT_ALG_HANDLE algorithm_ = nullptr;
  BCRYPT_HASH_HANDLE state_ = nullptr;
  bool isGood_ = false;
};

}  // namespace

std::unique_ptr<Digest> sha256() { return std::make_unique<SystemDigest>(); }

}  // namespace os
