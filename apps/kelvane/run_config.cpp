#include "kelvane/run_config.h"

#include "core/config.h"
#include "kelvane/fault.h"
#include "kelvane/nearest.h"
#include "kelvane/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

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

std::string fileText(const std::string& folder, bool required) {
  const std::string path = folder + "/kvd_main.cfg";
  const auto read = os::files().read(systemPath(path));
  if (!read && required) throw Fault("--config: " + path + " can't be read: " + read.error.message());
  return whole(read.value);
}

std::vector<std::string> knownKeys() {
  std::vector<std::string> keys;
  for (const core::ConfigKey& key : core::configKeys()) keys.push_back(text::toUtf8(key.name));
  return keys;
}

bool isKnown(const std::string& name) {
  const std::wstring wide = text::fromUtf8(name);
  for (const core::ConfigKey& key : core::configKeys()) {
    if (text::equalNoCase(key.name, wide) || (!key.shortName.empty() && text::equalNoCase(key.shortName, wide))) {
      return true;
    }
  }
  return false;
}

std::string settingLine(const std::string& setting) {
  const std::size_t equals = setting.find('=');
  if (equals == setting.npos) throw Fault("--set " + setting + ": write KVD_KEY=VALUE");
  const std::string key = setting.substr(0, equals);
  if (!isKnown(key)) throw Fault("--set: there is no key '" + key + "'" + didYouMean(key, knownKeys()));
  if (setting.find_first_of("=\r\n", equals + 1) != setting.npos) {
    throw Fault("--set " + key + ": a value holds no '=' and no line break");
  }
  return setting + "\n";
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

std::vector<std::pair<std::wstring, std::wstring>> creoOptions(const RunOptions& options) {
  std::vector<std::pair<std::wstring, std::wstring>> all;
  for (const std::string& option : options.creoOptions) {
    const std::size_t equals = option.find('=');
    if (equals == option.npos || equals == 0) throw Fault("--creo-option " + option + ": write NAME=VALUE");
    std::wstring name = text::fromUtf8(option.substr(0, equals));
    // Creo would put the second value of a search path behind the first.
    std::erase_if(all, [&name](const auto& one) { return text::equalNoCase(one.first, name); });
    all.emplace_back(std::move(name), text::fromUtf8(option.substr(equals + 1)));
  }
  return all;
}

}  // namespace kelvane
