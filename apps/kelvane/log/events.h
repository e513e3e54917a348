// What a run does, as JSON lines for other programs: models, changed values, log lines, files written, the recap.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace kelvane {

// Does nothing without a file. Lines are flushed one by one; what can't be written ends the events, not the work.
class Events {
 public:
  Events() = default;
  ~Events();
  Events(const Events&) = delete;
  Events& operator=(const Events&) = delete;
  // A Fault when the file can't be made.
  void open(const std::string& path);
  [[nodiscard]] bool on() const { return stream_ != nullptr; }
  // Empty, or what to say of events that couldn't be written.
  [[nodiscard]] std::string fault() const;
  // {"event":"model",...}: the members of `what` behind the event's name.
  void tell(std::string_view event, const nlohmann::ordered_json& what);

 private:
  std::string path_;
  std::ostream* stream_ = nullptr;
  std::unique_ptr<std::ostream> owned_;
};

}  // namespace kelvane
