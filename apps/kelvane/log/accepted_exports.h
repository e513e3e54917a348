// Exports that no open library writes, where the user knows that and goes on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kelvane/log/lines.h"

namespace kelvane {

// "sat, dwg, productview, pdf3d".
std::string acceptableExports();

class AcceptedExports {
 public:
  AcceptedExports() = default;
  // Each of them some formats, as "sat,dwg"; case is no difference. A Fault for one that isn't among them.
  explicit AcceptedExports(const std::vector<std::string>& written);
  // Whether the error line is that of such an export.
  [[nodiscard]] bool takes(const LogLine& line) const;

 private:
  // Of an action's line: "Export sat - work now on A.PRT - Failure occured while export to sat".
  struct Line {
    std::wstring title, failure;
  };
  std::vector<Line> lines_;
};

}  // namespace kelvane
