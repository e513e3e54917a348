// Drives the plug-in as a person does: opens a model and the tool, chooses package, list and filter, checks rows,
// presses start and waits.
#pragma once

#include <string>
#include <vector>

#include "headless/session/session.h"
#include "kelvane/model_folder.h"
#include "kelvane/run_options.h"
#include "kelvane/run_place.h"

namespace kelvane {

class RunDriver {
 public:
  RunDriver(headless::Session& session, const RunPlace& place) : session_(session), place_(place) {}

  // Loads the plug-in and opens the tool on the first start that can be opened. A Fault with the reason otherwise.
  void openTool(const std::vector<ModelFileName>& starts);
  // The filter file that the configuration names and the package lacks, so that none judges; empty: all is well.
  [[nodiscard]] std::string missingFilter() const;
  // Fills the table from each start.
  void fill(const std::vector<ModelFileName>& starts);

  struct Choice {
    std::vector<std::string> rows;  // those that will be worked, in the run's order: parts, assemblies, drawings
    int skipped = 0;                // wanted, but the list worked them before
  };
  // Sets the rows' check marks as the options say.
  Choice choose(const RunOptions& options);

  // Checks out the models of the checked rows, as the tool's button does.
  void checkOut();

  // Presses start and waits until everything is done.
  void start();

 private:
  void choosePackage();
  void require(creo::ProError error, const std::string& what) const;
  bool isChecked(const std::string& button) const;

  headless::Session& session_;
  const RunPlace& place_;
};

}  // namespace kelvane
