// `kelvane ui` in a thread of its own, and a browser's requests to it.
#pragma once

#include <httplib.h>

#include <atomic>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <nlohmann/json.hpp>
#include <thread>

#include "kelvane/run/run_fixture.h"

namespace test {

using nlohmann::json;

// What the program prints, readable while it runs.
class Printed : public std::streambuf {
 public:
  // Waits for the first line; empty when the program ended without one.
  std::string firstLine() {
    std::unique_lock lock(mutex_);
    arrived_.wait(lock, [this] { return ended_ || text_.find('\n') != text_.npos; });
    return text_.substr(0, text_.find('\n'));
  }
  std::string text() {
    const std::lock_guard lock(mutex_);
    return text_;
  }
  void end() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    arrived_.notify_all();
  }

 private:
  int_type overflow(int_type letter) override {
    const char entry = traits_type::to_char_type(letter);
    xsputn(&entry, 1);
    return letter;
  }
  std::streamsize xsputn(const char* letters, std::streamsize count) override {
    const std::lock_guard lock(mutex_);
    text_.append(letters, static_cast<std::size_t>(count));
    arrived_.notify_all();
    return count;
  }
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::string text_;
  bool ended_ = false;
};

// A browser that was given an address.
class Browser {
 public:
  explicit Browser(const std::string& address)
      : port_(std::stoi(address.substr(address.find(':', 6) + 1))),
        token_(address.substr(address.find("token=") + 6)),
        client_("127.0.0.1", port_) {
    const auto entered = client_.Get(("/?token=" + token_).c_str());
    if (!entered) throw std::runtime_error("nobody serves " + address);
    const std::string given = entered->get_header_value("Set-Cookie");
    headers_ = {{"Cookie", given.substr(0, given.find(';'))}};
  }

  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] const std::string& token() const { return token_; }
  httplib::Client& client() { return client_; }
  [[nodiscard]] const httplib::Headers& headers() const { return headers_; }

  httplib::Result get(const std::string& path) { return client_.Get(path.c_str(), headers_); }
  json read(const std::string& path) {
    const auto got = get(path);
    return got && got->status == 200 ? json::parse(got->body) : json();
  }
  json state() { return read("/state"); }
  // The lines of a table or tree of the tool.
  json lines(const std::string& component, int from = 0, int count = 100) {
    return read("/lines?dialog=kvanerunner&component=" + component + "&from=" + std::to_string(from) +
                "&count=" + std::to_string(count));
  }
  // Sends an action; the answer's status.
  int send(const json& action) {
    const auto answer = client_.Post("/do", headers_, action.dump(), "application/json");
    if (answer && answer->status == 202) number_ = json::parse(answer->body).at("number");
    return answer ? answer->status : 0;
  }
  // The state for which `holds` is true; an empty one when it doesn't come in half a minute.
  template <class Holds>
  json waitFor(Holds holds) {
    for (int i = 0; i < 1500; ++i) {
      json now = state();
      if (now.is_object() && holds(now)) return now;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return {};
  }
  // Does it and waits until it is worked and nothing follows from it any more, or another question is open.
  json act(const json& action) {
    const json before = state().at("question");
    EXPECT_EQ(202, send(action)) << action;
    return waitFor([&](const json& now) {
      const json& question = now.at("question");
      return (!question.is_null() && question != before) || (now.at("worked") >= number_ && !now.at("busy"));
    });
  }
  json press(const std::string& component, const std::string& dialog = "kvanerunner") {
    return act({{"do", "press"}, {"dialog", dialog}, {"component", component}});
  }
  json choose(const std::string& menu, const std::string& name) {
    return act({{"do", "choose"}, {"dialog", "kvanerunner"}, {"component", menu}, {"name", name}});
  }
  // Opens a model and the tool on it.
  json openTool(const std::string& model) {
    act({{"do", "open"}, {"model", model}});
    return act({{"do", "command"}, {"command", "KVANEVisitParametersCmd"}});
  }

 private:
  int port_;
  std::string token_;
  httplib::Client client_;
  httplib::Headers headers_;
  std::uint64_t number_ = 0;
};

class UiView : public RunFixture {
 protected:
  ~UiView() override { end(SIGTERM); }

  // Starts the program on "models" and "packages"; the address that it prints.
  const std::string& start(const std::vector<std::string>& more = {}) {
    std::filesystem::create_directories(path("packages"));
    if (std::filesystem::exists(path("standards")))
      std::filesystem::rename(path("standards"), path("packages/standards"));
    std::vector<std::string> words = {"ui", "--models", models(), "--packages", path("packages")};
    words.insert(words.end(), more.begin(), more.end());
    running_ = true;
    program_ = std::thread([this, words] {
      std::ostream out(&out_), err(&err_);
      code_ = kelvane::program(words, out, err);
      running_ = false;
      out_.end();
    });
    address_ = out_.firstLine();
    EXPECT_TRUE(address_.starts_with("http://127.0.0.1:")) << out_.text() << err_.text();
    return address_;
  }
  // As Ctrl-C or a request to end; the exit code.
  int end(int signal) {
    if (!program_.joinable()) return code_;
    if (running_ && !address_.empty()) std::raise(signal);
    program_.join();
    return code_;
  }

  Printed out_, err_;
  std::string address_;

 private:
  std::thread program_;
  std::atomic<bool> running_ = false;
  int code_ = -1;
};

// "C1.PRT on, C2.PRT off" of the table's lines.
inline std::string checksOf(const json& table) {
  std::string text;
  for (const json& line : table.at("lines")) {
    for (const json& cell : line.at("cells")) {
      const json part = cell.value("component", json::object());
      if (part.value("name", "").ends_with("_cb"))
        text += (text.empty() ? "" : ", ") + line.at("name").get<std::string>() + (part.at("checked") ? " on" : " off");
    }
  }
  return text;
}

}  // namespace test
