// Checksums that nobody can bring another content to, as the system works them out.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace os {

class Digest {
 public:
  virtual ~Digest() = default;
  virtual void take(std::string_view piece) = 0;
  // Of all pieces together, in small hexadecimal digits; empty where the system can't work it out. Asked once.
  virtual std::string hex() = 0;
};
// SHA-256, as FIPS 180-4 has it.
std::unique_ptr<Digest> sha256();
// Of one piece.
inline std::string sha256OfBytes(std::string_view bytes) {
  const auto digest = sha256();
  digest->take(bytes);
  return digest->hex();
}

}  // namespace os
