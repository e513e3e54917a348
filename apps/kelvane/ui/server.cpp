#include "kelvane/ui/server.h"

#include <httplib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <thread>
#include <utility>

#include "kelvane/base/native_path.h"
#include "kelvane/ui/entrance.h"
#include "kelvane/ui/guard.h"
#include "kelvane/ui/lines.h"
#include "kelvane/ui/page.h"
#include "kelvane/ui/picture.h"
#include "kelvane/ui/user_actions.h"

namespace kelvane::view {
namespace {

using httplib::Request;
using httplib::Response;

constexpr const char* kHost = "127.0.0.1";
constexpr milliseconds kPatience{15'000};  // for the session's thread, which may be in a long operation
constexpr milliseconds kPulse{1'000};      // between two looks whether a page is still there
constexpr int kPulsesBetweenSigns = 15;

// Nothing of another place is loaded, and no page of another place shows this one.
constexpr const char* kPolicy =
    "default-src 'none'; img-src 'self'; connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors "
    "'none'";

// That, and the page's own style and script run, which carry the nonce of this answer.
std::string policy(const std::string& nonce) {
  return std::string(kPolicy) + "; script-src 'nonce-" + nonce + "'; style-src 'nonce-" + nonce + "'";
}

struct FileType {
  std::string_view extension;
  const char* type;
};
// What a browser shows by itself, without running it; everything else is downloaded.
constexpr FileType kShown[] = {
    {".csv", "text/plain; charset=utf-8"},
    {".txt", "text/plain; charset=utf-8"},
    {".log", "text/plain; charset=utf-8"},
    {".xml", "text/plain; charset=utf-8"},
    {".json", "text/plain; charset=utf-8"},
    {".csvheader", "text/plain; charset=utf-8"},
    {".pdf", "application/pdf"},
    {".png", "image/png"},
    {".jpg", "image/jpeg"},
    {".jpeg", "image/jpeg"},
    {".gif", "image/gif"},
};

void refuse(Response& response, int status, const std::string& text) {
  response.status = status;
  response.set_content(text + "\n", "text/plain; charset=utf-8");
}

// A body as it is: what is handed over whole is compressed by the library for as long as a page takes to build, and on
// the loopback that gains nothing.
void give(Response& response, std::string body, const char* type) {
  const auto kept = std::make_shared<const std::string>(std::move(body));
  if (kept->empty()) return response.set_content("", type);
  response.set_content_provider(kept->size(), type,
                                [kept](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
                                  return sink.write(kept->data() + offset, length);
                                });
}

std::size_t number(const Request& request, const char* name) {
  const std::string text = request.get_param_value(name);
  constexpr std::size_t kDigits = 9;
  const bool isNumber = !text.empty() && text.size() <= kDigits &&
                        std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  return isNumber ? std::stoul(text) : 0;
}

void replaceAll(std::string& text, std::string_view from, const std::string& to) {
  for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

// JSON that stands in a page's script element: no "<" begins anything there.
std::string inScript(std::string json) {
  replaceAll(json, "<", "\\u003c");
  return json;
}

// The library's door and its answers: whoever comes is handed on, and a request that is whole is answered from memory.
class Library : public httplib::Server {
 public:
  std::function<void(socket_t)> arrived;  // on the thread that listens
  // Behind binding: the library itself lets five wait.
  void letQueue(std::size_t count) { os::letQueue(static_cast<os::Socket>(svr_sock_.load()), static_cast<int>(count)); }
  // False where nothing more may be asked.
  bool answer(httplib::Stream& stream, bool last) {
    bool over = false;
    return processed(*this, stream, last, over) && !over && !last;
  }

 private:
  // The library's later releases want to be told who asks whom.
  static bool processed(auto& library, httplib::Stream& stream, bool last, bool& over) {
    if constexpr (requires { library.process_request(stream, last, over, nullptr); }) {
      return library.process_request(stream, last, over, nullptr);
    } else {
      std::string remote, local;
      int remotePort = 0, localPort = 0;
      stream.get_remote_ip_and_port(remote, remotePort);
      stream.get_local_ip_and_port(local, localPort);
      return library.process_request(stream, remote, remotePort, local, localPort, last, over, nullptr);
    }
  }
  bool process_and_close_socket(socket_t socket) override {
    arrived(socket);
    return true;
  }
};

// Hands connections on at once, where the library would put them before its own threads.
class AtOnce : public httplib::TaskQueue {
 public:
  // Nothing, or in the library's later releases whether it was taken.
  using Taken = decltype(std::declval<httplib::TaskQueue&>().enqueue(nullptr));
  Taken enqueue(std::function<void()> task) override {
    task();
    return static_cast<Taken>(true);
  }
  void shutdown() override {}
};

// A whole request, and the connection that its answer goes to.
class RequestStream : public httplib::Stream {
 public:
  RequestStream(std::string_view request, os::Connection& connection, milliseconds patience)
      : rest_(request), connection_(connection), patience_(patience) {}
  [[nodiscard]] bool is_readable() const override { return !rest_.empty(); }
  [[nodiscard]] bool is_writable() const override { return connection_.takesBytes(patience_); }
  ssize_t read(char* to, std::size_t size) override {
    const std::size_t count = rest_.copy(to, size);
    rest_.remove_prefix(count);
    return static_cast<ssize_t>(count);
  }
  // In pieces, each of which is waited for: who reads at all gets what is long.
  ssize_t write(const char* bytes, std::size_t size) override {
    constexpr std::size_t kPiece = 64U << 10U;
    for (std::string_view rest(bytes, size); !rest.empty(); rest.remove_prefix(std::min(kPiece, rest.size())))
      if (!connection_.send(rest.substr(0, kPiece), patience_)) return -1;
    return static_cast<ssize_t>(size);
  }
  void get_remote_ip_and_port(std::string& ip, int& /*port*/) const override { ip = kHost; }
  void get_local_ip_and_port(std::string& ip, int& /*port*/) const override { ip = kHost; }
  [[nodiscard]] socket_t socket() const override { return static_cast<socket_t>(connection_.socket()); }

 private:
  std::string_view rest_;
  os::Connection& connection_;
  milliseconds patience_;
};

// For a header: no quotes, no line ends, ASCII alone.
std::string headerName(const std::string& name) {
  std::string plain;
  for (const char c : name) plain += c >= ' ' && c <= '~' && c != '"' && c != '\\' ? c : '_';
  return plain;
}

}  // namespace

class Server::Work {
 public:
  Work(Inbox& inbox, Feed& feed, Doors doors, std::vector<Image> images, const Bounds& bounds)
      : inbox_(inbox),
        feed_(feed),
        doors_(std::move(doors)),
        images_(std::move(images)),
        bounds_(bounds),
        page_(view::page()) {}
  ~Work() {
    feed_.close();
    inbox_.close();
    server_.stop();
    if (thread_.joinable()) thread_.join();
    entrance_.reset();
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  bool start(int port) {
    server_.new_task_queue = [] { return new AtOnce; };
    server_.set_payload_max_length(bounds_.body);
    // Told to browsers; the entrance keeps to it.
    server_.set_keep_alive_timeout(std::chrono::floor<std::chrono::seconds>(bounds_.idle).count());
    server_.set_keep_alive_max_count(bounds_.requests);
    server_.set_tcp_nodelay(true);
    server_.set_default_headers({{"Content-Security-Policy", kPolicy},
                                 {"X-Content-Type-Options", "nosniff"},
                                 {"Referrer-Policy", "no-referrer"},
                                 {"Cross-Origin-Resource-Policy", "same-origin"},
                                 {"Cache-Control", "no-store"}});
    routes();
    if (port == 0) {
      port = server_.bind_to_any_port(kHost);
    } else if (!server_.bind_to_port(kHost, port)) {
      port = -1;
    }
    if (port < 0) return false;
    server_.letQueue(bounds_.connections);
    guard_.emplace(newToken(), port);
    address_ = "http://" + std::string(kHost) + ":" + std::to_string(port) + "/?token=" + guard_->token();
    entrance_ =
        std::make_unique<Entrance>(bounds_, [this](os::Connection& connection, std::string_view request, bool last) {
          RequestStream stream(request, connection, bounds_.piece);
          return server_.answer(stream, last);
        });
    server_.arrived = [this](socket_t socket) { entrance_->take(static_cast<os::Socket>(socket)); };
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();  // one that doesn't run yet can't be stopped
    return true;
  }
  [[nodiscard]] const std::string& address() const { return address_; }

 private:
  using Handled = httplib::Server::HandlerResponse;

  void routes() {
    server_.set_pre_routing_handler([this](const Request& request, Response& response) {
      return isLetIn(request, response) ? Handled::Unhandled : Handled::Handled;
    });
    const auto get = [this](const char* path, void (Work::*handler)(const Request&, Response&)) {
      server_.Get(path,
                  [this, handler](const Request& request, Response& response) { (this->*handler)(request, response); });
    };
    get("/", &Work::page);
    get(R"(/image/([^/]+))", &Work::image);
    get("/state", &Work::state);
    get("/events", &Work::events);
    get("/lines", &Work::lines);
    get("/models", &Work::models);
    get(R"(/file/(\d{1,9}))", &Work::writtenFile);
    server_.Post("/do", [this](const Request& request, Response& response) { action(request, response); });
  }

  bool isLetIn(const Request& request, Response& response) {
    const bool isOwn =
        guard_->isOwnHost(request.get_header_value("Host")) && guard_->isOwnOrigin(request.get_header_value("Origin"));
    if (!isOwn) {
      refuse(response, 403, "this is for pages of this address alone");
      return false;
    }
    const bool enters = request.path == "/" && guard_->isToken(request.get_param_value("token"));
    if (enters || guard_->isCookie(request.get_header_value("Cookie"))) return true;
    refuse(response, 403, "open the address that 'kelvane ui' printed");
    return false;
  }

  // With the token in the address: gives it as a cookie, so that it stands in no history.
  void page(const Request& request, Response& response) {
    if (request.has_param("token")) {
      response.set_header("Set-Cookie", guard_->cookie() + "; Path=/; HttpOnly; SameSite=Strict");
      response.set_redirect("/", 303);
      return;
    }
    const Told last = feed_.last();
    const std::string nonce = newToken();
    std::string page = page_;
    replaceAll(page, "@nonce@", nonce);
    replaceAll(page, "@told@",
               inScript(R"({"number":)" + std::to_string(last.number) + R"(,"state":)" + *last.state + "}"));
    response.headers.erase("Content-Security-Policy");
    response.set_header("Content-Security-Policy", policy(nonce));
    give(response, std::move(page), "text/html; charset=utf-8");
  }

  // They stay as they are as long as the session lives.
  void image(const Request& request, Response& response) {
    const auto found = std::find_if(images_.begin(), images_.end(),
                                    [&](const Image& entry) { return entry.name == request.matches[1].str(); });
    if (found == images_.end()) return refuse(response, 404, "there is no such image");
    response.headers.erase("Cache-Control");
    response.set_header("Cache-Control", "private, max-age=3600");
    response.set_content(found->bytes, found->type);
  }

  void state(const Request& /*request*/, Response& response) {
    give(response, *feed_.last().state, "application/json");
  }

  void events(const Request& request, Response& response) {
    const auto listener = feed_.listen(number(request, "since"));
    if (!listener) return refuse(response, 503, "too many pages are open");
    response.set_chunked_content_provider(
        "text/event-stream",
        [listener, idle = 0](std::size_t /*offset*/, httplib::DataSink& sink) mutable {
          const auto event = listener->next(kPulse);
          if (!event) {
            if (listener->over() || !sink.is_writable()) return false;
            idle = (idle + 1) % kPulsesBetweenSigns;
            return idle != 0 || sink.write(":\n\n", 3);
          }
          const std::string text = std::string("event: ") + event->name + "\ndata: " + *event->data + "\n\n";
          return sink.write(text.data(), text.size());
        },
        nullptr);
  }

  void answerRead(const std::string& what, const nlohmann::json& about, Response& response) const {
    const auto read = doors_.read(what, about);
    if (!read) return refuse(response, 503, "the session is busy");
    if (*read == "null") return refuse(response, 404, "there is no such thing");
    give(response, *read, "application/json");
  }

  void lines(const Request& request, Response& response) {
    answerRead("lines",
               {{"dialog", request.get_param_value("dialog")},
                {"component", request.get_param_value("component")},
                {"from", number(request, "from")},
                {"count", number(request, "count")}},
               response);
  }

  void models(const Request& /*request*/, Response& response) { answerRead("models", {}, response); }

  // Of the files that lists wrote, by number: no path comes from a request.
  void writtenFile(const Request& request, Response& response) {
    const auto read = doors_.read("file", std::stoul(request.matches[1].str()));
    const auto place = nlohmann::json::parse(read.value_or("null"));
    if (place.is_null()) return refuse(response, 404, "there is no such file");
    const auto path = nativePath(place.at("path").get<std::string>());
    const auto input = std::make_shared<std::ifstream>(path, std::ios::binary);
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (!*input || error) return refuse(response, 404, "the file can't be read");
    const std::string name = place.at("name").get<std::string>();
    const std::string extension = extensionOf(name);
    const auto* known = std::find_if(std::begin(kShown), std::end(kShown),
                                     [&](const FileType& item) { return item.extension == extension; });
    const bool shows = known != std::end(kShown) && !request.has_param("download");
    // A browser's own viewer of PDF files doesn't work in a sandbox.
    response.headers.erase("Content-Security-Policy");
    response.set_header("Content-Security-Policy",
                        extension == ".pdf" ? "frame-ancestors 'none'" : "default-src 'none'; sandbox");
    response.set_header("Content-Disposition",
                        std::string(shows ? "inline" : "attachment") + "; filename=\"" + headerName(name) + "\"");
    sendPieces(response, input, size, shows ? known->type : "application/octet-stream");
  }

  static std::string extensionOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    std::string extension = dot == name.npos ? std::string() : name.substr(dot);
    for (char& c : extension) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return extension;
  }

  static void sendPieces(Response& response, const std::shared_ptr<std::ifstream>& input, std::size_t size,
                         const char* type) {
    if (size == 0) return response.set_content("", type);
    response.set_content_provider(size, type, [input](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
      constexpr std::size_t kPiece = 64U << 10U;
      std::string bytes(std::min(length, kPiece), '\0');
      input->seekg(static_cast<std::streamoff>(offset));
      input->read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
      const auto got = static_cast<std::size_t>(input->gcount());
      return got > 0 && sink.write(bytes.data(), got);
    });
  }

  void action(const Request& request, Response& response) {
    const auto what = nlohmann::json::parse(request.body, nullptr, false);
    if (what.is_object() && what.value("do", nlohmann::json()) == "stop") {
      doors_.stopRun();
      response.set_content("{}", "application/json");
      return;
    }
    const std::string fault = what.is_discarded() ? "it is no JSON" : faultOf(what);
    if (!fault.empty()) return refuse(response, 400, fault);
    const std::uint64_t given = inbox_.put(what);
    if (given == 0) return refuse(response, 503, "too much waits to be done");
    response.status = 202;
    response.set_content(lineOf({{"number", given}}), "application/json");
  }

  Inbox& inbox_;
  Feed& feed_;
  Doors doors_;
  std::vector<Image> images_;
  Bounds bounds_;
  std::string page_;  // with the places to fill in
  Library server_;
  std::unique_ptr<Entrance> entrance_;
  std::optional<Guard> guard_;
  std::string address_;
  std::thread thread_;
};

Server::Server(Inbox& inbox, Feed& feed, Doors doors, std::vector<Image> images, const Bounds& bounds)
    : work_(std::make_unique<Work>(inbox, feed, std::move(doors), std::move(images), bounds)) {}
Server::~Server() = default;

bool Server::start(int port) { return work_->start(port); }
std::string Server::address() const { return work_->address(); }

}  // namespace kelvane::view
