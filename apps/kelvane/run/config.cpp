#include "kelvane/run/config.h"

#include <algorithm>

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/check/config_check.h"
#include "os/processes.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

// A run has its own folders, and needs the tool itself and not only its triggers.
constexpr const char* kOwnLines = "kvd_temp_path=t:\\\nkvd_start_trigger_without_kvd=0\nkvd_breakpoint=0\n";
constexpr const char* kOwnPackage = "kvd_kvz_path=p:\\\n";

// A last line without its line feed would not be evaluated.
std::string whole(std::string content) {
  if (!content.empty() && content.back() != '\n') content += '\n';
  return content;
}

std::string fileOf(const std::string& folder) { return folder + "/kvd_main.cfg"; }

// Each file says itself how it is written; joined, one would speak for the other.
std::string fileText(const std::string& folder, bool required) {
  const auto read = os::readText(systemPath(fileOf(folder)));
  if (!read && required) throw Fault("--config: " + fileOf(folder) + " can't be read: " + read.error.message());
  return whole(text::toUtf8(read.value));
}

std::string settingLine(const std::string& setting) {
  const std::size_t equals = setting.find('=');
  if (equals == setting.npos) throw Fault("--set " + setting + ": write KVD_KEY=VALUE");
  const std::string key = setting.substr(0, equals);
  if (!isConfigKey(text::fromUtf8(key))) throw Fault("--set: there is no key '" + key + "'" + nearestConfigKey(key));
  if (setting.find_first_of("=\r\n", equals + 1) != setting.npos) {
    throw Fault("--set " + key + ": a value holds no '=' and no line break");
  }
  return text::toUtf8(text::fromUtf8(setting)) + "\n";
}

}  // namespace

std::string configText(const RunOptions& options) {
  std::string text = fileText(installationFolder() + "/conf", false);
  if (!options.config.empty()) text += fileText(options.config, true);
  text += kOwnLines;
  if (!options.package.empty()) text += kOwnPackage;
  // Without a site's configuration a run is the same for every user.
  if (options.config.empty()) text += "kvd_no_user_cfg=1\n";
  for (const std::string& setting : options.settings) text += settingLine(setting);
  return text;
}

std::string userConfigText(const std::string& config) {
  int isLeftOut = 0;
  for (const std::wstring& line : text::lines(text::fromUtf8(config))) {
    const std::size_t sign = std::min(line.find(L'='), line.size());
    if (text::equalNoCase(line.substr(0, sign), L"kvd_no_user_cfg"))
      isLeftOut = text::parseInt(line.substr(std::min(sign + 1, line.size())));
  }
  const auto appdata = os::environment(L"appdata");
  if (isLeftOut != 0 || !appdata) return {};
  return text::toUtf8(os::readText(*appdata + L"\\OSTELO\\KVD\\conf\\kvd_user.cfg").value);
}

void tellConfigFaults(const RunOptions& options, Console& console) {
  for (const std::string& folder : {installationFolder() + "/conf", options.config}) {
    if (folder.empty()) continue;
    for (const ConfigFault& fault : configFaults(os::readText(systemPath(fileOf(folder))).value))
      console.trouble("warning: " + fileOf(folder) + ":" + std::to_string(fault.line) + ": " + fault.text);
  }
}

std::vector<std::pair<std::wstring, std::wstring>> creoOptions(const RunOptions& options) {
  std::vector<std::pair<std::wstring, std::wstring>> all;
  for (const std::string& option : options.creoOptions) {
    const std::size_t equals = option.find('=');
    if (equals == option.npos || equals == 0) throw Fault("--creo-option " + option + ": write NAME=VALUE");
    std::wstring name = text::fromUtf8(option.substr(0, equals));
    // Creo would put the second value of a search path behind the first.
    std::erase_if(all, [&name](const auto& entry) { return text::equalNoCase(entry.first, name); });
    all.emplace_back(std::move(name), text::fromUtf8(option.substr(equals + 1)));
  }
  return all;
}

}  // namespace kelvane
