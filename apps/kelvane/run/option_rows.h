// Options that the verbs which run lists have in common.
#pragma once

#include "kelvane/base/verb.h"
#include "kelvane/run/options.h"

namespace kelvane {

inline OptionRow durableRow(RunOptions& options) {
  return {
      "--durable", "each|run|none",
      "when the disk has what was written: before each save ends, before the end and before anything outside is told, "
      "or whenever the system comes to it",
      &options.durable};
}
inline OptionRow elsewhereRow(bool& elsewhere) {
  return {"--elsewhere", "",
          "takes back outside the folder of models, too, what a journal names there that isn't of this user's own runs",
          &elsewhere};
}
// The rows write into the options, which must outlive them.
inline std::vector<OptionRow> surroundingRows(RunOptions& options) {
  return {{"--config", "DIR", "a folder with kvd_main.cfg", &options.config},
          {"--set", "KVD_KEY=VALUE", "a key of the configuration", &options.settings},
          {"--creo-option", "NAME=VALUE", "an option of Creo's own configuration", &options.creoOptions}};
}
inline std::vector<OptionRow> outputRows(RunOptions& options) {
  return {{"--events", "FILE", "JSON lines: models, changed values, log lines, files, recap", &options.events},
          {"--operations", "", "every operation too among the events", &options.operations},
          {"--max-errors", "N", "shows at most N error lines; 0 shows all", &options.maxErrors}};
}

}  // namespace kelvane
