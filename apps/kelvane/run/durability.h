// When the disk has what a verb writes, as its options say, and the line for a file that it didn't take.
#pragma once

#include "kelvane/run/options.h"
#include "kelvane/show/model_folder.h"
#include "os/durable.h"
#include "text/encoding.h"

namespace kelvane {

// The option has no other words.
inline os::Durability durability(const RunOptions& options) {
  if (options.durable == "none") return os::Durability::none;
  return options.durable == "each" ? os::Durability::each : os::Durability::run;
}

// "models/gear.prt.3: the disk didn't take it: Input/output error"
inline std::string unsafeLine(const os::Unsafe& file) {
  return readable(file.path + L": the disk didn't take it: " + text::fromUtf8(file.error.message()));
}

}  // namespace kelvane
