// What `kelvane run` was asked.
#pragma once

#include <string>
#include <vector>

#include "kelvane/trust/grant_options.h"

namespace kelvane {

struct RunOptions {
  std::string package, list, folder;

  // Which models.
  std::vector<std::string> starts;  // "GEARBOX.ASM"; none: each model that no other one uses
  std::string select;               // pattern on the rows' names
  int limit = 0;                    // 0: no limit
  std::string filter;               // a filter file of the package
  bool again = false;               // those too that the list worked before
  bool headFoot = false;            // Head and Foot run without a model, too

  // What is kept.
  std::string save = "touched";  // touched, all, none
  std::string into;              // works on a copy there
  bool readOnly = false, dryRun = false;
  bool elsewhere = false;  // a run that broke off is taken back outside the folder of models, whoever wrote it
  std::string collect;

  // Surroundings.
  std::string config;
  std::vector<std::string> settings;     // "kvd_log_level=8"
  std::vector<std::string> creoOptions;  // "pro_format_dir=d:\\formats"
  std::vector<std::string> vaults;       // the first one is the active server
  std::string workspace, user;           // empty: the models' folder's name, and the user's
  bool checkOut = false;                 // the chosen rows, before the run
  std::vector<std::string> answers;      // "MATERIAL=steel"
  bool noPrograms = false, noWeb = false;

  // Output.
  std::string log, events;
  bool operations = false;
  int maxErrors = 20;               // lines shown; 0: all
  std::vector<std::string> accept;  // "sat,dwg": exports whose failures count as warnings

  // For the journal.
  std::string reason;
  std::vector<std::string> given;  // the options as they were given: "--save=all"
  std::string durable = "run";     // each, run, none: when the disk has what was written
  GrantOptions grants;             // and whether the run is confined to them

  [[nodiscard]] bool writesModels() const { return !dryRun && !readOnly; }
  // What looks, or promises to leave the models' folder alone, leaves nothing that could be taken back.
  [[nodiscard]] bool keepsJournal() const { return writesModels(); }
};

}  // namespace kelvane
