// Who may ask the server anything.
#pragma once

#include <string>
#include <string_view>

namespace kelvane::view {

// 32 random bytes in hexadecimal.
std::string newToken();

class Guard {
 public:
  Guard(std::string token, int port);
  [[nodiscard]] const std::string& token() const { return token_; }
  // The cookie that carries the token; ports of a machine share their cookies, so the port is in its name.
  [[nodiscard]] std::string cookie() const;
  // A page of another place that got a name for this machine is known by its Host, a request that it sends by its
  // Origin; a request without an Origin comes from no other page.
  [[nodiscard]] bool isOwnHost(std::string_view host) const;
  [[nodiscard]] bool isOwnOrigin(std::string_view origin) const;
  // Takes the same time for every token of that length.
  [[nodiscard]] bool isToken(std::string_view given) const;
  // True where a Cookie header holds the token.
  [[nodiscard]] bool isCookie(std::string_view header) const;

 private:
  std::string token_, port_;
};

}  // namespace kelvane::view
