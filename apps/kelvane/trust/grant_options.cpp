#include "kelvane/trust/grant_options.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>

#include "kelvane/base/fault.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using os::Permission;

std::wstring resourceOf(Permission permission, const std::string& given) {
  if (given.find_first_not_of(' ') == given.npos)
    throw Fault("--allow-" + text::toUtf8(os::wordOf(permission)) + " and its --deny name something");
  const bool isPath = permission == Permission::read || permission == Permission::write ||
                      (permission == Permission::run && given.find('/') != given.npos);
  if (isPath) {
    std::string path = machinePath(fs::absolute(nativePath(given)).lexically_normal());
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return text::fromUtf8(path);
  }
  if (permission == Permission::net && !os::isServer(text::fromUtf8(given)))
    throw Fault("--allow-net and --deny-net " + given +
                ": write the server's name alone, an address of IPv6 in brackets, with :PORT for one port");
  return permission == Permission::net ? text::lower(text::fromUtf8(given)) : text::fromUtf8(given);
}

std::string inQuotes(const std::string& text) {
  constexpr std::string_view kPlain = "_./=+:,-@%";
  const bool isPlain = std::all_of(text.begin(), text.end(), [&](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || kPlain.find(c) != kPlain.npos;
  });
  if (isPlain) return text;
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

}  // namespace

std::vector<os::Need> needsOf(const GrantOptions::Given& given) {
  std::vector<os::Need> needs;
  const auto add = [&needs](Permission permission, const std::vector<std::string>& names) {
    for (const std::string& name : names) needs.push_back({permission, resourceOf(permission, name)});
  };
  add(Permission::run, given.run);
  add(Permission::net, given.net);
  add(Permission::read, given.read);
  add(Permission::write, given.write);
  add(Permission::env, given.env);
  if (given.clipboard) needs.push_back({Permission::clipboard, {}});
  return needs;
}

std::vector<OptionRow> grantRows(GrantOptions& o) {
  return {
      {"--allow-run", "NAME", "a program that may be started; what it does isn't confined any further", &o.allow.run},
      {"--allow-net", "HOST", "a server that may be asked, HOST:PORT for one port of it", &o.allow.net},
      {"--allow-read", "DIR", "a folder or file that may be read", &o.allow.read},
      {"--allow-write", "DIR", "a folder or file that may be written", &o.allow.write},
      {"--allow-env", "NAME", "a variable of the environment that may be set", &o.allow.env},
      {"--allow-clipboard", "", "the clipboard may be read", &o.allow.clipboard},
      {"--deny-run", "NAME", "a program that may not, whatever is allowed; so the following ones", &o.deny.run},
      {"--deny-net", "HOST", "a server", &o.deny.net},
      {"--deny-read", "DIR", "a folder or file", &o.deny.read},
      {"--deny-write", "DIR", "a folder or file", &o.deny.write},
      {"--deny-env", "NAME", "a variable", &o.deny.env},
      {"--deny-clipboard", "", "the clipboard", &o.deny.clipboard},
  };
}

std::vector<OptionRow> confinementRows(GrantOptions& o) {
  std::vector<OptionRow> rows = {
      {"--confine", "", "holds lists to their package, the models and the temp folder, and to what is granted",
       &o.confine}};
  for (const OptionRow& row : grantRows(o)) rows.push_back(row);
  return rows;
}

OptionRow trustRow(GrantOptions& o) {
  return {"--require-trust", "",
          "confines, and refuses a package that needs more than 'kelvane trust', options and configuration grant",
          &o.requireTrust};
}

std::string optionOf(const os::Need& need) { return "--" + inQuotes(text::toUtf8(os::grantText(need))); }

std::string optionsOf(const std::vector<os::Need>& needs) {
  std::string all;
  for (const os::Need& need : needs) all += (all.empty() ? "" : " ") + optionOf(need);
  return all;
}

}  // namespace kelvane
