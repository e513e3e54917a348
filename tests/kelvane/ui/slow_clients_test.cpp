// Connections that hold on to the server of the pages: none keeps it from answering others, and each has an end.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <sys/socket.h>

#include <nlohmann/json.hpp>

#include "kelvane/ui/server.h"

namespace test {
namespace {

using kelvane::view::Bounds;
using std::chrono::milliseconds;
using testing::AllOf;
using testing::Gt;
using testing::HasSubstr;
using testing::StartsWith;

// A connection of its own, byte by byte.
class Caller {
 public:
  explicit Caller(int port) : connection_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int number = static_cast<int>(connection_.socket());
    if (::connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
      throw std::runtime_error("nobody listens");
  }
  bool says(std::string_view bytes) { return connection_.send(bytes, milliseconds(5'000)); }
  // All that comes until the other side ends it, or ten seconds are over: then "..." stands at the end.
  std::string hears() {
    os::SocketWatch watch;
    std::string all;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (connection_.receive(all, 1U << 20U)) {
      const auto left = std::chrono::ceil<milliseconds>(end - std::chrono::steady_clock::now());
      if (left.count() <= 0) return all + "...";
      watch.wait({connection_.socket()}, left);
    }
    return all;
  }

 private:
  os::Connection connection_;
};

class SlowClients : public testing::Test {
 protected:
  void serve(const Bounds& bounds) {
    const kelvane::view::Doors doors = {[](const std::string&, const nlohmann::json&) { return "[]"; }, [] {}};
    server_ =
        std::make_unique<kelvane::view::Server>(inbox_, feed_, doors, std::vector<kelvane::view::Image>{}, bounds);
    ASSERT_TRUE(server_->start(0));
    const std::string address = server_->address();
    port_ = std::stoi(address.substr(address.find(':', 6) + 1));
    cookie_ = "Cookie: kelvane_" + std::to_string(port_) + "=" + address.substr(address.find("token=") + 6) + "\r\n";
    host_ = "Host: 127.0.0.1:" + std::to_string(port_) + "\r\n";
  }
  [[nodiscard]] std::string request(const std::string& line, const std::string& more = "") const {
    return line + " HTTP/1.1\r\n" + host_ + cookie_ + more + "\r\n";
  }
  // What a person's page gets, and within which time.
  std::string asked(const std::string& line, milliseconds& took) {
    const auto begin = std::chrono::steady_clock::now();
    Caller page(port_);
    page.says(request(line, "Connection: close\r\n"));
    std::string answer = page.hears();
    took = std::chrono::ceil<milliseconds>(std::chrono::steady_clock::now() - begin);
    return answer;
  }

  kelvane::view::Inbox inbox_;
  kelvane::view::Feed feed_;
  std::unique_ptr<kelvane::view::Server> server_;
  int port_ = 0;
  std::string cookie_, host_;
};

// A hundred that stop somewhere in a request, far more than there are threads: a page is served as if they weren't
// there.
TEST_F(SlowClients, AHundredThatNeverEndTheirRequestsKeepNobodyWaiting) {
  Bounds bounds;
  bounds.threads = 4;
  bounds.request = std::chrono::seconds(60);
  serve(bounds);
  const std::vector<std::string> begins = {"", "G", "GET /state HTTP/1.1\r\nHost: 127",
                                           request("GET /state").substr(0, 90),
                                           request("POST /do", "Content-Length: 100\r\n") + "{\"do\":"};
  std::vector<std::unique_ptr<Caller>> slow;
  for (std::size_t i = 0; i < 100; ++i) {
    slow.push_back(std::make_unique<Caller>(port_));
    ASSERT_TRUE(slow.back()->says(begins[i % begins.size()]));
  }
  milliseconds took{};
  for (int i = 0; i < 10; ++i) {
    EXPECT_THAT(asked("GET /state", took), AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("\r\n\r\n{}")));
    EXPECT_LT(took, milliseconds(3'000)) << i;
  }
  // They were only slow: what comes late, but in time, is answered.
  ASSERT_TRUE(slow[4]->says(std::string(94, ' ')));
  ASSERT_TRUE(slow[2]->says(".0.0.1\r\nConnection: close\r\n\r\n"));
  EXPECT_THAT(slow[2]->hears(), StartsWith("HTTP/1.1 403"));
}

// Those that have shown who they are, but take nothing of what they asked for, cost a thread no longer than a piece
// may.
TEST_F(SlowClients, WhoTakesNoAnswerIsLeft) {
  Bounds bounds;
  bounds.threads = 2;
  bounds.piece = milliseconds(200);
  serve(bounds);
  feed_.tell("\"" + std::string(32U << 20U, 'x') + "\"", "{}");
  std::vector<std::unique_ptr<Caller>> slow;
  for (int i = 0; i < 6; ++i) {
    slow.push_back(std::make_unique<Caller>(port_));
    ASSERT_TRUE(slow.back()->says(request(i % 2 ? "GET /state" : "GET /events?since=0")));
  }
  milliseconds took{};
  EXPECT_THAT(asked("GET /models", took), StartsWith("HTTP/1.1 200"));
  EXPECT_LT(took, milliseconds(8'000));
}

// With more than the bound the one goes that has been waited for longest.
TEST_F(SlowClients, ConnectionsAreCounted) {
  Bounds bounds;
  bounds.connections = 20;
  bounds.request = std::chrono::seconds(60);
  serve(bounds);
  std::vector<std::unique_ptr<Caller>> many;
  for (int i = 0; i < 21; ++i) many.push_back(std::make_unique<Caller>(port_));
  EXPECT_EQ("", many.front()->hears());
  many.back()->says(request("GET /state", "Connection: close\r\n"));
  EXPECT_THAT(many.back()->hears(), StartsWith("HTTP/1.1 200"));
}

// What is too large, too late or no request ends the connection with its reason, before it takes memory or a thread.
TEST_F(SlowClients, ARequestOutsideItsBoundsIsRefusedWithItsReason) {
  Bounds bounds;
  bounds.request = milliseconds(500);
  bounds.idle = milliseconds(300);
  serve(bounds);
  const std::string large(100'000, 'x');
  const std::pair<std::string, std::string> cases[] = {
      {"GET /state HTTP/1.1\r\nHost", "HTTP/1.1 408"},
      {request("POST /do", "Content-Length: 50\r\n") + "{", "HTTP/1.1 408"},
      {"GET /" + large, "HTTP/1.1 414"},
      {request("GET /image/" + std::string(8'000, 'x')), "HTTP/1.1 414"},
      {"GET /state HTTP/1.1\r\nX: " + large, "HTTP/1.1 431"},
      {request("POST /do", "Content-Length: 70000\r\n") + large, "HTTP/1.1 413"},
      {request("POST /do", "Content-Length: 2\r\ncontent-length: 3\r\n") + "{} ", "HTTP/1.1 400"},
      {request("POST /do", "Content-Length: -1\r\n"), "HTTP/1.1 400"},
      {request("POST /do", "Transfer-Encoding: chunked\r\n") + "0\r\n\r\n", "HTTP/1.1 411"},
      {request("POST /do", "Expect: 100-continue\r\nContent-Length: 2\r\n"), "HTTP/1.1 417"},
      {"\r\n\r\n", "HTTP/1.1 400"},
      {"", ""},
  };
  for (const auto& [bytes, answer] : cases) {
    Caller caller(port_);
    caller.says(bytes);
    const std::string heard = caller.hears();
    EXPECT_TRUE(answer.empty() ? heard.empty() : heard.starts_with(answer)) << bytes.substr(0, 80) << "\n" << heard;
    EXPECT_FALSE(heard.ends_with("...")) << bytes.substr(0, 80);
  }
}

// Requests that come together are answered one behind the other, and an idle connection ends by itself.
TEST_F(SlowClients, AConnectionIsKeptBetweenRequests) {
  Bounds bounds;
  bounds.idle = milliseconds(400);
  serve(bounds);
  Caller caller(port_);
  caller.says(request("GET /state") + request("POST /do", "Content-Length: 2\r\n") + "{}" + request("GET /models"));
  const std::string heard = caller.hears();
  const std::size_t first = heard.find("HTTP/1.1 200"), second = heard.find("HTTP/1.1 400"),
                    third = heard.rfind("HTTP/1.1 200");
  EXPECT_EQ(0U, first) << heard;
  EXPECT_THAT(second, Gt(first));
  EXPECT_TRUE(third != heard.npos && third > second) << heard;
}

}  // namespace
}  // namespace test
