#include "kelvane/ui/guard.h"

#include "kelvane/base/random_digits.h"

namespace kelvane::view {

std::string newToken() {
  constexpr std::size_t kBytes = 32;
  return randomDigits(2 * kBytes);
}

Guard::Guard(std::string token, int port) : token_(std::move(token)), port_(std::to_string(port)) {}

std::string Guard::cookie() const { return "kelvane_" + port_ + "=" + token_; }

bool Guard::isOwnHost(std::string_view host) const {
  return host == "127.0.0.1:" + port_ || host == "localhost:" + port_;
}

bool Guard::isOwnOrigin(std::string_view origin) const {
  constexpr std::string_view kScheme = "http://";
  return origin.empty() || (origin.starts_with(kScheme) && isOwnHost(origin.substr(kScheme.size())));
}

bool Guard::isToken(std::string_view given) const {
  if (given.size() != token_.size()) return false;
  unsigned differs = 0;
  for (std::size_t i = 0; i < token_.size(); ++i)
    differs |= static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(token_[i]);
  return differs == 0;
}

bool Guard::isCookie(std::string_view header) const {
  const std::string name = "kelvane_" + port_ + "=";
  for (std::size_t at = 0; at < header.size();) {
    const std::size_t end = std::min(header.find(';', at), header.size());
    std::string_view text = header.substr(at, end - at);
    while (text.starts_with(' ')) text.remove_prefix(1);
    if (text.starts_with(name) && isToken(text.substr(name.size()))) return true;
    at = end + 1;
  }
  return false;
}

}  // namespace kelvane::view
