#include "kelvane/log/events.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "kelvane/base/fault.h"

namespace kelvane {

Events::~Events() = default;

void Events::open(const std::string& path) {
  owned_ = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
  if (!*owned_) throw Fault("the events' file " + path + " can't be written");
  stream_ = owned_.get();
  path_ = path;
}

std::string Events::fault() const {
  return stream_ && !*stream_ ? "the events can't be written to " + path_ : std::string();
}

void Events::tell(std::string_view event, const nlohmann::ordered_json& what) {
  if (!stream_) return;
  nlohmann::ordered_json line = {{"event", event}};
  line.update(what);
  *stream_ << line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
}

}  // namespace kelvane
