// Lists and filters, as the check of a package looks at them.
#include <algorithm>

#include "fuzz/target.h"
#include "kelvane/check/package_check.h"

namespace {

// A package that holds the input alone.
class OneMember : public kelvane::PackageSource {
 public:
  OneMember(std::string name, std::string bytes) : name_(std::move(name)), bytes_(std::move(bytes)) {}
  [[nodiscard]] std::vector<std::string> members() const override { return {name_}; }
  [[nodiscard]] bool has(const std::string& member) const override { return member == name_; }
  [[nodiscard]] std::string read(const std::string& /*member*/) const override { return bytes_; }
  [[nodiscard]] bool isExecutable(const std::string& /*member*/) const override { return false; }

 private:
  std::string name_, bytes_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(fuzz::bytesOf(data, size));
  const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
  for (const char* name : {"actionlists/a.xml", "filters/a.xml"}) {
    const OneMember package(name, bytes);
    for (const kelvane::Finding& finding : kelvane::checkDocument(package, name, bytes)) {
      fuzz::holds(finding.line <= lines, "a finding stands in a line that is there");
      fuzz::holds(!finding.text.empty(), "a finding says something");
      for (const kelvane::Edit& edit : finding.mend)
        fuzz::holds(edit.piece.at <= bytes.size() && edit.piece.size <= bytes.size() - edit.piece.at,
                    "what is mended is there");
    }
  }
  return 0;
}
