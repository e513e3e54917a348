#include "kelvane/check/windows_names.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>

#include "kelvane/base/escapes.h"
#include "kelvane/check/text_check.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace kelvane {
namespace {

using core::Kind;

// In UTF-16 units: the temp folder of a user stands before it, and a path has 259.
constexpr std::size_t kLongPath = 160;

// "CON", "COM1"; the digits may be raised ones.
bool isDevice(std::string_view name) {
  static const std::set<std::string_view> plain = {"con", "prn", "aux", "nul", "conin$", "conout$"};
  static const std::set<std::string_view> digits = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "¹", "²", "³"};
  const std::string lower = text::lower(name);
  if (plain.contains(lower)) return true;
  const bool isPort = lower.starts_with("com") || lower.starts_with("lpt");
  return isPort && digits.contains(std::string_view(lower).substr(3));
}

std::vector<std::string> partsOf(std::string_view path) {
  std::vector<std::string> parts(1);
  for (const char c : path) {
    if (c == '/' || c == '\\')
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

// A name between two signs may hold separators: they are none of the path's.
std::wstring withNamesWhole(std::wstring path) {
  for (const wchar_t sign : {L'%', L'\u00A7'}) {
    for (std::size_t first = path.find(sign), last = 0; first != path.npos; first = path.find(sign, last + 1)) {
      last = path.find(sign, first + 1);
      if (last == path.npos) break;
      std::replace_if(
          path.begin() + static_cast<std::ptrdiff_t>(first), path.begin() + static_cast<std::ptrdiff_t>(last),
          [](wchar_t c) { return c == L'/' || c == L'\\'; }, L'_');
    }
  }
  return path;
}

// Behind "\\?\" a path goes on as any other one; behind "\\.\" a device is meant, and nothing is taken for a file.
std::optional<std::wstring> filePath(std::wstring_view path) {
  const std::wstring begin = text::replaceAll(path.substr(0, 4), L"/", L"\\");
  if (begin == L"\\\\.\\") return std::nullopt;
  return std::wstring(begin == L"\\\\?\\" ? path.substr(begin.size()) : path);
}

bool isPath(Kind kind) {
  return kind == Kind::file || kind == Kind::model || kind == Kind::folder || kind == Kind::written;
}

Finding of(const std::string& member, std::string_view rule, std::string text) {
  Finding finding;
  finding.file = member;
  finding.rule = rule;
  finding.text = std::move(text);
  return finding;
}

}  // namespace

std::string windowsFault(std::string_view part) {
  const std::string shown = "'" + std::string(part) + "' ";
  std::string_view stem = part.substr(0, part.find('.'));
  while (stem.ends_with(' ')) stem.remove_suffix(1);
  if (isDevice(stem)) return shown + "is a device";
  if (part.find(':') != part.npos) return shown + "names a stream inside a file";
  const bool isUp = part.find_first_not_of('.') == part.npos;
  if (!isUp && (part.ends_with('.') || part.ends_with(' ')))
    return shown + "ends in a dot or a blank, which is dropped";
  return {};
}

std::vector<Finding> memberNameFindings(const PackageSource& package) {
  constexpr std::string_view kNever = "<>\"|?*";
  std::vector<Finding> findings;
  std::set<std::string> told;  // folders with their names, and those in them
  for (const std::string& member : package.members()) {
    if (withEscapes(member) != member)
      findings.push_back(of(member, "member-name-unseen", "its name holds what a terminal obeys or doesn't show"));
    if (text::units(text::fromUtf8(member)) > kLongPath)
      findings.push_back(
          of(member, "member-name-long", "its name has more than " + std::to_string(kLongPath) + " characters"));
    std::string before;
    for (const std::string& part : partsOf(member)) {
      before += "/" + part;
      std::string fault = windowsFault(part);
      if (fault.empty() && part.find_first_of(kNever) != part.npos)
        fault = "'" + part + "' holds one of " + std::string(kNever);
      if (!fault.empty() && told.insert(before).second)
        findings.push_back(of(member, "member-name", "Windows has no such file: " + fault));
    }
  }
  return findings;
}

std::vector<AttributeFault> pathNameFaults(const core::XmlNode& task, const actions::Action& action) {
  std::vector<AttributeFault> faults;
  eachAttribute(task, [&](const core::XmlAttr& given) {
    const core::Attribute* attribute = actions::findAttribute(action, given.name);
    if (!attribute || !isPath(attribute->kind) || given.value.find(L"://") != given.value.npos) return;
    const std::optional<std::wstring> file = filePath(given.value);
    if (!file || file->find(L"$$") != file->npos) return;  // a function may hold anything
    const std::vector<std::string> parts = partsOf(text::toUtf8(withNamesWhole(*file)));
    for (const std::string& part : parts) {
      const bool isDrive = &part == &parts.front() && part.size() == 2 && part[1] == ':';
      if (isDrive || hasVariables(text::fromUtf8(part))) continue;
      if (std::string fault = windowsFault(part); !fault.empty())
        faults.push_back({"path-name", text::toUtf8(given.name),
                          "'" + text::toUtf8(given.name) + "': Windows has no such file: " + fault});
    }
  });
  return faults;
}

}  // namespace kelvane
