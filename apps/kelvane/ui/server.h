// The server of the pages: on the loopback alone, for who knows the token. docs/ui.md describes protocol and safety.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kelvane/ui/entrance.h"
#include "kelvane/ui/feed.h"
#include "kelvane/ui/inbox.h"

namespace kelvane::view {

// An image of the dialogs, which the server keeps in memory.
struct Image {
  std::string name, type, bytes;  // "part.png", "image/png"
};

// What the server asks of the session's side. Both are called by its own threads.
struct Doors {
  // Has something of the session read; as Inbox::ask.
  std::function<std::optional<std::string>(const std::string& what, const nlohmann::json& about)> read;
  std::function<void()> stopRun;
};

class Server {
 public:
  Server(Inbox& inbox, Feed& feed, Doors doors, std::vector<Image> images, const Bounds& bounds = {});
  ~Server();  // ends it
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // Begins to serve on that port, or with 0 on a free one. False where the port can't be had.
  bool start(int port);
  // "http://127.0.0.1:40123/?token=..."
  [[nodiscard]] std::string address() const;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace kelvane::view
