#include "os/digest.h"

#include <openssl/evp.h>

#include <array>

#include "os/freed.h"
#include "os/hex_digits.h"

namespace os {
namespace {

class LibraryDigest : public Digest {
 public:
  LibraryDigest() : isGood_(state_ && EVP_DigestInit_ex(state_.get(), EVP_sha256(), nullptr) == 1) {}
  void take(std::string_view piece) override {
    isGood_ = isGood_ && EVP_DigestUpdate(state_.get(), piece.data(), piece.size()) == 1;
  }
  std::string hex() override {
    std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
    unsigned size = 0;
    if (!isGood_ || EVP_DigestFinal_ex(state_.get(), bytes.data(), &size) != 1) return {};
    return hexDigits({bytes.data(), size});
  }

 private:
  std::unique_ptr<EVP_MD_CTX, Freed<&EVP_MD_CTX_free>> state_{EVP_MD_CTX_new()};
  bool isGood_;
};

}  // namespace

std::unique_ptr<Digest> sha256() { return std::make_unique<LibraryDigest>(); }

}  // namespace os
