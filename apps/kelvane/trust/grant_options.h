// What a person grants a package on the command line, and the rows of these options.
#pragma once

#include <string>
#include <vector>

#include "kelvane/base/verb.h"
#include "os/grants.h"

namespace kelvane {

struct GrantOptions {
  // Resources, one by one, as they were written.
  struct Given {
    std::vector<std::string> run, net, read, write, env;
    bool clipboard = false;
    [[nodiscard]] bool empty() const {
      return run.empty() && net.empty() && read.empty() && write.empty() && env.empty() && !clipboard;
    }
  };
  Given allow, deny;
  bool confine = false;
  bool requireTrust = false;  // and confined to what is kept for the package
};

// Paths become whole, as the folder of the process has them. A Fault for one that names nothing.
std::vector<os::Need> needsOf(const GrantOptions::Given& given);

// --allow-... and --deny-...
std::vector<OptionRow> grantRows(GrantOptions& options);
// --confine and those.
std::vector<OptionRow> confinementRows(GrantOptions& options);
// --require-trust, for verbs with one package.
OptionRow trustRow(GrantOptions& options);

// "--allow-read=/srv/templates", in quotes where a shell needs them.
std::string optionOf(const os::Need& need);
// All of them, with blanks between.
std::string optionsOf(const std::vector<os::Need>& needs);

}  // namespace kelvane
