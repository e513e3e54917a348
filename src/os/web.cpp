#include "os/web.h"

namespace os {
namespace {

std::shared_ptr<Web>& inForce() {
  static std::shared_ptr<Web> current = machineWeb();
  return current;
}

}  // namespace

std::string withoutCredentials(const std::string& url) {
  const std::size_t scheme = url.find("://");
  const std::size_t host = scheme == url.npos ? 0 : scheme + 3;
  const std::size_t end = std::min(url.find_first_of("/?#", host), url.size());
  const std::size_t at = url.substr(0, end).rfind('@');
  return at == url.npos || at < host ? url : url.substr(0, host) + url.substr(at + 1);
}

text::Result<std::string> WithheldWeb::send(const WebRequest& request) {
  asked_.push_back((request.body ? "POST " : "GET ") + withoutCredentials(request.url));
  return fault_;
}

Web& web() { return *inForce(); }

WebGuard::WebGuard(std::shared_ptr<Web> other) : saved_(std::exchange(inForce(), std::move(other))) {}
WebGuard::~WebGuard() { inForce() = std::move(saved_); }

}  // namespace os
