#include "kelvane/check/package_mend.h"

#include <algorithm>
#include <iterator>

#include "kelvane/base/places.h"
#include "kelvane/check/document_mend.h"
#include "kelvane/check/line_changes.h"
#include "kelvane/check/package_check.h"
#include "kelvane/check/xml_faults.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

Ink inkOf(std::string_view line) {
  switch (line.front()) {
    case '-':
      return Ink::red;
    case '+':
      return Ink::green;
    case '@':
      return Ink::cyan;
    default:
      return Ink::plain;
  }
}

void show(const std::string& member, const std::string& before, const std::string& after, Console& console) {
  console.resultLines(console.inked(Ink::bold, "--- a/" + member + "\n+++ b/" + member));
  const bool isUtf8 = text::isUtf8(before);
  const auto readable = [isUtf8](const std::string& bytes) {
    return isUtf8 ? bytes : text::toUtf8(text::fromWindows1252(bytes));
  };
  for (const std::string& line : changedLines(readable(before), readable(after)))
    console.resultLines(console.inked(inkOf(line), line));
}

// What stands there is still what was read, and becomes the mended text in one step.
void write(const std::string& file, const std::string& before, const std::string& after) {
  const std::wstring path = systemPath(file);
  const auto now = os::files().read(path);
  if (!now) throw Fault(file + " can't be read: " + now.error.message());
  if (now.value != before) throw Fault(file + " isn't mended: another program wrote it meanwhile");
  if (const auto error = os::files().write(path, after)) throw Fault(file + " can't be written: " + error.message());
}

class PackageMend {
 public:
  PackageMend(const MendOrder& order, const PackageSource& package, Console& console)
      : order_(order), package_(package), console_(console) {}

  // found: in this document. What is left of it.
  std::vector<Finding> mend(const std::string& member, std::vector<Finding> found) {
    const auto isOfTheWhole = [](const Finding& finding) { return finding.rule == "member-unreadable"; };
    if (std::any_of(found.begin(), found.end(), isOfTheWhole)) return found;
    const std::string bytes = package_.read(member);
    if (isUtf16(bytes) && std::any_of(found.begin(), found.end(), order_.isMeant))
      console_.trouble(member + ": it is in UTF-16, where nothing is mended");
    if (std::none_of(found.begin(), found.end(), [](const Finding& entry) { return !entry.mend.empty(); }))
      return found;
    const auto check = [&](const std::string& mended) { return checkDocument(package_, member, mended); };
    MendedDocument mended = mendedDocument(bytes, check, order_.isMeant);
    if (mended.bytes != bytes) {
      if (order_.writes) write(order_.folder + "/" + member, bytes, mended.bytes);
      show(member, bytes, mended.bytes, console_);
    }
    return std::move(mended.left);
  }

 private:
  const MendOrder& order_;
  const PackageSource& package_;
  Console& console_;
};

}  // namespace

std::vector<Finding> mendPackage(const MendOrder& order, const PackageSource& package, std::vector<Finding> findings,
                                 Console& console) {
  PackageMend work(order, package, console);
  for (const std::string& member : documentsOf(package)) {
    const auto first = std::stable_partition(findings.begin(), findings.end(),
                                             [&](const Finding& item) { return item.file != member; });
    std::vector<Finding> found(std::make_move_iterator(first), std::make_move_iterator(findings.end()));
    findings.erase(first, findings.end());
    if (!found.empty()) found = work.mend(member, std::move(found));
    findings.insert(findings.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
  }
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.file < b.file; });
  return findings;
}

}  // namespace kelvane
