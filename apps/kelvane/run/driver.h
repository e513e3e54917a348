// Drives the plug-in as a person does: opens the tool, chooses package, list and filter, opens a model, checks rows,
// presses start and waits.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "headless/session.h"
#include "kelvane/run/options.h"
#include "kelvane/run/place.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {

// Starts the plug-in. The site's triggers are left out. A Fault with the reason otherwise.
void startPlugin(headless::Session& session);

class RunDriver {
 public:
  RunDriver(headless::Session& session, const RunPlace& place) : session_(session), place_(place) {}

  // Starts the plug-in, opens the tool and chooses. That is done before any model is there, as choosers show other
  // lists on the way, whose filters must judge nothing. A Fault with the reason otherwise.
  void openTool();
  // The filter file that the configuration names and the package lacks, so that none judges; empty: all is well.
  [[nodiscard]] std::string missingFilter() const;
  // A start that can't be had.
  struct Unopened {
    std::string model;   // "SHAFT.PRT"
    std::string reason;  // what the session said; empty: nothing
  };
  // Opens the first of the starts that can be opened; it is the current model. Gives those before it.
  std::vector<Unopened> open(const std::vector<ModelFileName>& starts);
  // Opens it too, and fills the table once from each. Gives all that can't be had.
  std::vector<Unopened> fill(const std::vector<ModelFileName>& starts);

  struct Choice {
    std::vector<std::string> rows;  // those that will be worked, in the run's order: parts, assemblies, drawings
    int skipped = 0;                // wanted, but the list worked them before
    std::vector<std::pair<std::string, std::string>> left;  // those that won't be worked, and why
    std::string unmatched;  // what to say of a pattern that no row matches; empty: one does
  };
  // Sets the rows' check marks as the options say. finished: rows that the list has worked, whether their models tell
  // it or not.
  Choice choose(const RunOptions& options, const std::set<std::string>& finished);

  struct Refused {
    std::string row, reason;
    bool failed = false;  // the server couldn't tell, or write; otherwise somebody else has the model, say
  };
  // Checks out the models of the checked rows, as the tool's button does. Gives those that it couldn't.
  std::vector<Refused> checkOut();

  // Opens the model of a row and leaves the table as it is. A run of one model works it where the session stands, and a
  // person who wants that has opened it. What can't be opened is told by the run.
  void bringForward(const std::string& row);

  // Presses start and waits until everything is done.
  void start();

 private:
  void choosePackage();
  void addWithoutRow(const std::vector<std::string>& rows, Choice& choice) const;
  [[nodiscard]] Unopened unopened(const ModelFileName& model, std::size_t messages) const;
  void require(creo::ProError error, const std::string& what) const;
  bool isChecked(const std::string& button) const;

  headless::Session& session_;
  const RunPlace& place_;
};

}  // namespace kelvane
