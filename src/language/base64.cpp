#include "language/base64.h"

#include <openssl/evp.h>

#include <algorithm>
#include <vector>

namespace language {

std::string base64(std::string_view bytes, Base64 alphabet) {
  constexpr std::size_t kPiece = 3 * 65536;  // whole groups, so that no piece but the last is padded
  std::string all;
  all.reserve((bytes.size() + 2) / 3 * 4);
  std::vector<unsigned char> piece(std::min(bytes.size(), kPiece) / 3 * 4 + 5);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kPiece))) {
    const std::string_view now = bytes.substr(0, kPiece);
    const std::vector<unsigned char> raw(now.begin(), now.end());
    const int length = EVP_EncodeBlock(piece.data(), raw.data(), static_cast<int>(raw.size()));
    all.append(piece.begin(), piece.begin() + length);
  }
  if (alphabet == Base64::urlSafe) {
    std::replace(all.begin(), all.end(), '+', '-');
    std::replace(all.begin(), all.end(), '/', '_');
  }
  return all;
}

}  // namespace language
