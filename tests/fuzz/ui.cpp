// Requests to the pages' server, as bytes of a connection; what they ask to be done is done in a session with the tool.
#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>

#include "fuzz/target.h"
#include "headless/proui/ui.h"
#include "kelvane/ui/lines.h"
#include "kelvane/ui/server.h"
#include "kelvane/ui/user_actions.h"
#include "support/world.h"
#include "text/pieces.h"

namespace {

using std::chrono::milliseconds;
using namespace kelvane::view;

Bounds quick() {
  Bounds bounds;
  bounds.threads = 4;
  bounds.idle = milliseconds(5);
  return bounds;
}

// The server, and what stands for the session's thread.
class Serving {
 public:
  Serving()
      : server_(inbox_, feed_, {[](const std::string&, const nlohmann::json&) { return "null"; }, [] {}}, {}, quick()) {
    if (!server_.start(0)) throw std::runtime_error("no port");
    const std::string address = server_.address();
    port_ = std::stoi(address.substr(address.find(':', 6) + 1));
    cookie_ = "kelvane_" + std::to_string(port_) + "=" + address.substr(address.find("token=") + 6);
  }
  // Sends the bytes and takes what comes back, until the server ends the connection.
  std::string answer(std::string request) {
    request = text::replaceAll(request, "@cookie@", cookie_);
    request = text::replaceAll(request, "@host@", "127.0.0.1:" + std::to_string(port_));
    os::Connection connection(::socket(AF_INET, SOCK_STREAM, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port_));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int number = static_cast<int>(connection.socket());
    if (::connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return {};
    (void)connection.send(request, milliseconds(1'000));
    // A stream of events has no end; nothing is told here, so that it says nothing either.
    if (request.find("/events") == request.npos) connection.endSending();
    std::string heard;
    os::SocketWatch watch;
    for (int i = 0; i < 200 && connection.receive(heard, 1U << 20U); ++i)
      watch.wait({connection.socket()}, milliseconds(5));
    return heard;
  }
  Inbox& inbox() { return inbox_; }

 private:
  Inbox inbox_;
  Feed feed_;
  Server server_;
  int port_ = 0;
  std::string cookie_;
};

std::unique_ptr<test::World> opened() {
  auto world = std::make_unique<test::World>();
  world->part(L"BRACKET").with(L"COLOR", L"red");
  world->list("clean.xml", "<task type='deleteModelParameter' version='3' forPRT='true' searchin='1' name_0='COLOR'/>");
  world->start();
  world->open(L"BRACKET", creo::ProMdlType::part);
  world->openTool();
  return world;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Serving serving;
  static std::unique_ptr<test::World> world;
  const std::string heard = serving.answer(std::string(fuzz::bytesOf(data, size)));
  fuzz::holds(heard.empty() || heard.starts_with("HTTP/1."), "an answer of HTTP, or none");
  bool isChanged = false;
  while (auto action = serving.inbox().take(milliseconds(0))) {
    if (!world) world = opened();
    fuzz::holds(faultOf(action->what).empty(), "only what can be done is handed on");
    (void)carryOut(world->session(), action->what);
    world->session().settle();
    (void)linesOf(world->session(), {"kvanerunner", "kvaneTable", 0, kMostLines});
    isChanged = true;
  }
  if (isChanged) world.reset();
  return 0;
}
