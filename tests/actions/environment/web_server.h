// A web server on the loopback for tests: it notes what it was asked and answers as it is told.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace test {

struct WebAsked {
  std::string method, target, body;
  std::map<std::string, std::string> headers;  // names in lower case
};

class WebServer {
 public:
  enum class Kind { plain, tls };  // tls: with a certificate that nobody has signed
  explicit WebServer(Kind kind = Kind::plain);
  ~WebServer();
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

  // The answer to each request whose target holds `piece`, the first that fits; else an empty one.
  void answer(const std::string& piece, const std::string& body, int status = 200);
  // `size` bytes, `step` of them at a time with a pause between; with `broken` the connection ends halfway.
  void answerSlowly(const std::string& piece, std::size_t size, std::size_t step, int milliseconds,
                    bool broken = false);
  void answerBy(const std::string& piece, std::function<std::string(const WebAsked&)> body);

  // "http://127.0.0.1:4711"
  [[nodiscard]] std::string address() const;
  [[nodiscard]] std::vector<WebAsked> asked() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace test
