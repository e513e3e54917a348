#include "kelvane/check/config_check.h"

#include <algorithm>

#include "core/config.h"
#include "core/log.h"
#include "kelvane/base/nearest.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

constexpr std::wstring_view kStart = L"kvd_";

bool isWordSign(wchar_t c) { return c < 128 && text::isName(std::wstring(L"a") + c); }

std::string inQuotes(std::wstring_view word) { return "'" + text::toUtf8(word) + "'"; }

// "kvd_log_level 8", "kvd_log_level: 8": a word or two are no sentence about a key.
std::string faultWithoutSign(std::wstring_view line) {
  const auto end = std::find_if_not(line.begin(), line.end(), &isWordSign);
  const std::wstring_view word = line.substr(0, static_cast<std::size_t>(end - line.begin()));
  const std::wstring_view rest = text::trimmed(line.substr(word.size()));
  const std::wstring_view value = rest.starts_with(L':') ? text::trimmed(rest.substr(1)) : rest;
  const bool isRemark = value.find_first_of(L" \t") != value.npos;
  const bool isKey = text::startsWithNoCase(word, kStart) && isConfigKey(word);
  return isKey && !isRemark ? "the key " + inQuotes(word) + " has no '=' behind it" : std::string();
}

// Keys that know a few values alone: the dialog has four levels.
std::string faultOfValue(std::wstring_view key, std::wstring_view value) {
  const std::wstring_view given = text::trimmed(value);
  if (text::equalNoCase(key, L"kvd_confine") && !given.empty() && given != L"0" && given != L"1")
    return inQuotes(key) + ": '" + text::toUtf8(given) + "' is neither 0 nor 1 and counts as 1";
  const bool isLevel = text::equalNoCase(key, L"kvd_log_level") || text::equalNoCase(key, L"loglevel");
  const int level = isLevel ? text::parseInt(value) : core::kNormal;
  if (level == core::kNormal || level == core::kWarning || level == core::kError || level == core::kDebug) return {};
  return inQuotes(key) + ": " + std::to_string(level) + " is none of 0, 1, 2 and 8 and counts as 0";
}

std::string faultOf(std::wstring_view line) {
  const std::size_t sign = line.find(L'=');
  if (sign == line.npos) return faultWithoutSign(text::trimmed(line));
  const std::wstring_view written = line.substr(0, sign), key = text::trimmed(written);
  if (isConfigKey(written)) return faultOfValue(written, line.substr(sign + 1));
  if (key.empty() || !std::all_of(key.begin(), key.end(), &isWordSign)) return {};
  if (isConfigKey(key)) return "blanks beside the key " + inQuotes(key) + " are taken as a part of it";
  const std::string meant = nearestConfigKey(text::toUtf8(key));
  if (meant.empty() && !text::startsWithNoCase(key, kStart)) return {};
  return "there is no key " + inQuotes(key) + meant;
}

std::vector<std::string> names() {
  std::vector<std::string> all;
  for (const core::ConfigKey& key : core::configKeys()) all.push_back(text::toUtf8(key.name));
  return all;
}

}  // namespace

bool isConfigKey(std::wstring_view name) {
  return std::any_of(core::configKeys().begin(), core::configKeys().end(), [name](const core::ConfigKey& key) {
    return text::equalNoCase(key.name, name) || (!key.shortName.empty() && text::equalNoCase(key.shortName, name));
  });
}

std::string nearestConfigKey(const std::string& wrong) { return didYouMean(wrong, names()); }

std::vector<ConfigFault> configFaults(std::wstring_view content) {
  std::vector<ConfigFault> faults;
  std::size_t number = 0;
  for (const std::wstring& line : text::lines(content)) {
    ++number;
    if (std::string fault = faultOf(line); !fault.empty()) faults.push_back({number, std::move(fault)});
  }
  return faults;
}

}  // namespace kelvane
