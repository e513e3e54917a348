// Base64 by RFC 4648.
#include "language/base64.h"

namespace language {
namespace {

constexpr std::string_view kStandard = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kUrlSafe = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr std::size_t kGroup = 3;  // bytes, which make four characters

unsigned byteAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

}  // namespace

std::string base64(std::string_view bytes, Base64 alphabet) {
  const std::string_view letters = alphabet == Base64::urlSafe ? kUrlSafe : kStandard;
  std::string all((bytes.size() + kGroup - 1) / kGroup * 4, '=');
  char* out = all.data();
  for (std::size_t at = 0; at < bytes.size(); at += kGroup, out += 4) {
    const unsigned group = byteAt(bytes, at) << 16U | byteAt(bytes, at + 1) << 8U | byteAt(bytes, at + 2);
    out[0] = letters[group >> 18U];
    out[1] = letters[group >> 12U & 0x3FU];
    if (at + 1 < bytes.size()) out[2] = letters[group >> 6U & 0x3FU];
    if (at + 2 < bytes.size()) out[3] = letters[group & 0x3FU];
  }
  return all;
}

}  // namespace language
