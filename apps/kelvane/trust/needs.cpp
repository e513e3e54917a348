#include "kelvane/trust/needs.h"

#include <algorithm>
#include <functional>
#include <set>

#include "actions/dispatch.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "documents/predicate_table.h"
#include "kelvane/check/attribute_check.h"
#include "kelvane/check/list_names.h"
#include "kelvane/check/package_check.h"
#include "kelvane/check/package_uses.h"
#include "kelvane/check/table_check.h"
#include "kelvane/check/text_check.h"
#include "language/pattern_kind.h"
#include "language/workbook.h"
#include "os/confine.h"
#include "os/paths.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::Kind;
using core::XmlAttr;
using core::XmlNode;
using os::Permission;

constexpr wchar_t kSectionSign = L'\u00A7';
// Letters of a run's own places: models, packages, temp folder, installation.
constexpr std::wstring_view kOwnLetters = L"dpti";

std::wstring valueOf(const XmlNode& node, std::wstring_view name) {
  const XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? std::wstring(found->value) : std::wstring();
}

// With the variables of the environment that are set.
std::wstring withEnvironment(std::wstring value) {
  for (std::size_t at = value.find(kSectionSign); at != value.npos; at = value.find(kSectionSign, at + 1)) {
    const std::size_t end = value.find(kSectionSign, at + 1);
    if (end == value.npos) break;
    const auto known = os::environment(value.substr(at + 1, end - at - 1));
    if (known && !known->empty()) value.replace(at, end - at + 1, *known);
  }
  return value;
}

// Where the first value begins that only the run knows.
std::size_t firstVariable(std::wstring_view value) {
  return std::min(value.find_first_of(std::wstring(L"%@") + kSectionSign), value.find(L"$$"));
}

bool isWhole(std::wstring_view path) {
  return path.starts_with(L'\\') || (!os::splitDevice(path).device.empty() && path.substr(2).starts_with(L'\\'));
}

// Does an attribute of that kind give one? What texts are compared with is none: "/^42/" is an expression.
bool givesWholePath(const XmlAttr& given, Kind kind) {
  const bool isExpression = language::kindOf(given.value) == language::PatternKind::expression;
  if (kind == Kind::pattern || (!isPath(kind) && isExpression)) return false;
  return isWhole(os::withBackslashes(withEnvironment(std::wstring(given.value))));
}

// The folder that a grant names for a path, in the machine's form. Nothing: it is one of a run's own places; an empty
// one: only the run tells, or it is the root, which nobody grants for the sake of one file.
std::optional<std::wstring> placeToGrant(std::wstring path, bool isFolder, bool isWrite) {
  if (path.starts_with(L'"')) path.erase(0, 1);
  path = os::withBackslashes(withEnvironment(path));
  if (path.starts_with(kProjectDirectory)) {
    const auto parts = text::split(path, L'\\');
    if (std::find(parts.begin(), parts.end(), L"..") == parts.end()) return std::nullopt;
    return L"";
  }
  const std::size_t variable = firstVariable(path);
  if (variable != path.npos) path.resize(variable);
  if (variable == 0) return L"";
  if (!isWhole(path)) return std::nullopt;  // it goes on from the working folder
  const std::wstring device = text::lower(os::splitDevice(path).device);
  const std::wstring_view own = isWrite ? L"dt" : kOwnLetters;
  if (!device.empty() && own.find(device) != own.npos) return std::nullopt;
  const bool isItself = isFolder && variable == path.npos;
  const std::wstring folder = isItself ? path : os::folderOf(path);
  std::wstring place = text::fromUtf8(os::mounts().machine(L"z:" + os::splitDevice(folder).path));
  return place == L"/" ? std::wstring() : std::move(place);
}

// The forms "%b64:FILE%" and "%b64uc:FILE%" of a text, their files.
std::vector<std::wstring> embeddedFiles(std::wstring_view value) {
  std::vector<std::wstring> files;
  const std::wstring lower = text::lower(std::wstring(value));
  for (const std::wstring_view form : {L"%b64:", L"%b64uc:", L"%user:b64:"}) {
    for (std::size_t at = lower.find(form); at != lower.npos; at = lower.find(form, at + 1)) {
      const std::size_t begin = at + form.size();
      const std::size_t end = value.find(L'%', begin);
      if (end != value.npos) files.emplace_back(value.substr(begin, end - begin));
    }
  }
  return files;
}

class Reader {
 public:
  Reader(std::string member, std::vector<PackageNeed>& needs) : member_(std::move(member)), needs_(needs) {}

  void readList(const core::XmlDocument& document) {
    document_ = &document;
    const documents::ActionList list = documents::actionList(document);
    readSection(list.head, 'H');
    readSection(list.body, 'B');
    readSection(list.foot, 'F');
    place_ = "list filter";
    if (list.filter) readItems(*list.filter);
  }
  void readFilter(const core::XmlDocument& document) {
    document_ = &document;
    readItems(*document.root());
  }

 private:
  void add(const XmlNode& at, std::optional<Permission> permission, std::wstring resource, std::string text) {
    needs_.push_back({member_, document_->lineOf(at), place_, std::move(text), permission, std::move(resource)});
  }
  void addPlace(const XmlNode& at, const XmlAttr& given, std::wstring_view path, Permission permission,
                bool isFolder = false) {
    if (worksElsewhere_ && isRelative(path)) return add(at, permission, {}, shown(given));
    const auto place = placeToGrant(std::wstring(path), isFolder, permission == Permission::write);
    if (place) add(at, permission, *place, shown(given));
  }
  // A name that counts from the working folder.
  static bool isRelative(std::wstring_view path) {
    const std::wstring known = os::withBackslashes(withEnvironment(std::wstring(path)));
    return !known.empty() && !isWhole(known) && firstVariable(known) != 0;
  }
  static std::string shown(const XmlAttr& given) {
    return "'" + text::toUtf8(given.name) + "': '" + text::toUtf8(given.value) + "'";
  }

  void readSection(const XmlNode* section, char letter) {
    if (!section) return;
    int number = -1;
    core::xmlEachChild(*section, [&](const XmlNode& task) {
      place_ = letter + std::to_string(++number);
      readTask(task);
    });
  }

  void readTask(const XmlNode& task) {
    if (isSwitchedOff(task)) return;
    if (const actions::Action* action = actions::findAction(valueOf(task, L"type"))) readAction(task, *action);
    const std::string outer = place_;
    core::xmlEachChild(task, [&](const XmlNode& child) {
      if (child.name != L"subtasks") return readItems(child);
      int number = -1;
      core::xmlEachChild(child, [&](const XmlNode& inner) {
        place_ = outer + " - G" + std::to_string(++number);
        readTask(inner);
      });
      place_ = outer;
    });
  }

  // Whatever holds them.
  void readItems(const XmlNode& node) {
    const documents::Predicate* const predicate = documents::findPredicate(valueOf(node, L"type"));
    eachAttribute(node, [&](const XmlAttr& given) {
      readTemplates(node, given);
      const bool isOption = node.name == L"option" && given.name.starts_with(L"value_");
      if (isOption) {
        if (isWhole(os::withBackslashes(withEnvironment(std::wstring(given.value)))))
          addPlace(node, given, given.value, Permission::read, true);
        return;
      }
      if (!predicate) return;
      const core::Attribute* const row = core::findAttribute(predicate->attributes, given.name);
      if (givesWholePath(given, row ? row->kind : Kind::text)) addPlace(node, given, given.value, Permission::read);
    });
    core::xmlEachChild(node, [this](const XmlNode& child) { readItems(child); });
  }

  void readAction(const XmlNode& task, const actions::Action& action) {
    using actions::Touched;
    bool startsProgram = false, plays = false;
    eachAttribute(task, [&](const XmlAttr& given) {
      readTemplates(task, given);
      const core::Attribute* row = actions::findAttribute(action, given.name);
      const Kind kind = row ? row->kind : Kind::text;
      startsProgram = startsProgram || kind == Kind::program;
      plays = plays || (kind == Kind::macro && !given.value.empty());
      readAttribute(task, given, row, action);
    });
    const actions::Effects& effects = action.effects;
    if (action.key == L"setWorkingDirectory")
      worksElsewhere_ = worksElsewhere_ || leadsElsewhere(valueOf(task, L"path"));
    if (holds(effects.changes, Touched::surroundings)) addVariable(task);
    const bool hasMacros = std::any_of(action.attributes.begin(), action.attributes.end(),
                                       [](const core::Attribute& row) { return row.kind == Kind::macro; });
    const bool mayPlay = holds(effects.changes, Touched::programs) && !addOpening(task, action);
    if (plays || (mayPlay && !startsProgram && !hasMacros))
      add(task, Permission::run, std::wstring(os::kMacros), "it plays steps that it brings along");
    if (holds(effects.changes, Touched::server)) add(task, std::nullopt, {}, "it acts on the server");
  }

  // True for an action that starts the system's program for what it wrote, and no other: that takes no steps from a
  // list.
  bool addOpening(const XmlNode& task, const actions::Action& action) {
    constexpr std::wstring_view kOpenings[] = {L"openAfterCreation", L"oaw"};
    bool mayOpen = false;
    for (const std::wstring_view name : kOpenings) {
      if (!actions::findAttribute(action, name)) continue;
      mayOpen = true;
      if (valueOf(task, name) == L"true")
        add(task, Permission::run, std::wstring(os::kSystemOpener),
            "'" + text::toUtf8(name) + "': it opens what it wrote");
    }
    return mayOpen;
  }

  void readAttribute(const XmlNode& task, const XmlAttr& given, const core::Attribute* row,
                     const actions::Action& action) {
    using enum Kind;
    const Kind kind = row ? row->kind : text;
    if (kind == program) return addProgram(task, given, *row);
    if (kind == address) return addAddress(task, given);
    if (isPath(kind)) {
      // What is written is a file, but for these.
      const bool isFolder = kind == folder || (kind == written && (given.name == L"folder" || given.name == L"path"));
      addPlace(task, given, given.value, kind == written ? Permission::write : Permission::read, isFolder);
      // A report that goes on where it ended is read before.
      const bool goesOn =
          holds(action.effects.changes, actions::Touched::reports) && valueOf(task, L"overwrite") != L"true";
      if (kind == written && !isFolder && goesOn) addPlace(task, given, given.value, Permission::read);
      if (kind == file && language::isWorkbook(given.value) && readsTable(text::toUtf8(action.key)))
        add(task, Permission::run, L"xls2csv.vbs", "it converts the workbook " + shown(given));
      return;
    }
    const bool isTold =
        holds(action.effects.changes, actions::Touched::surroundings) || kind == relation || kind == macro;
    if (isTold || !givesWholePath(given, kind)) return;
    const bool writes = holds(action.effects.changes, actions::Touched::files | actions::Touched::reports);
    addPlace(task, given, given.value, writes ? Permission::write : Permission::read);
  }

  // What any text of a list can ask for.
  void readTemplates(const XmlNode& at, const XmlAttr& given) {
    if (text::lower(std::wstring(given.value)).find(L"@clipboard@") != given.value.npos)
      add(at, Permission::clipboard, {}, shown(given));
    for (const std::wstring& file : embeddedFiles(given.value)) addPlace(at, given, file, Permission::read);
  }

  void addProgram(const XmlNode& task, const XmlAttr& given, const core::Attribute& row) {
    std::wstring line(given.value);
    if (const std::wstring more = valueOf(task, row.with); !more.empty()) line.append(L" ").append(more);
    const os::PlainCommand command = os::plainCommand(os::withBackslashes(withEnvironment(line)));
    std::wstring name = command.program;
    if (name.starts_with(kProjectDirectory)) name = os::nameOf(name);
    const bool isKnown = firstVariable(name) == name.npos;
    const bool isPathName = isKnown && name.find(L'\\') != name.npos;
    // Only the run tells where its own letters, and relative names, lead.
    const std::wstring device = text::lower(os::splitDevice(name).device);
    const bool isOpen =
        isPathName && (!isWhole(name) || (!device.empty() && kOwnLetters.find(device) != kOwnLetters.npos));
    if (isPathName && !isOpen) name = text::fromUtf8(os::mounts().machine(name));
    add(task, Permission::run, isKnown && !isOpen ? name : std::wstring(),
        "it starts '" + text::toUtf8(line) + "'" +
            (command.isPlain ? "" : ", which a confined run refuses: it isn't one program with its arguments"));
  }

  void addAddress(const XmlNode& task, const XmlAttr& given) {
    const std::wstring host = os::hostOf(text::toUtf8(withEnvironment(std::wstring(given.value))));
    const bool isKnown = firstVariable(host) == host.npos;
    if (!given.value.empty()) add(task, Permission::net, isKnown ? host : std::wstring(), shown(given));
  }

  void addVariable(const XmlNode& task) {
    const std::wstring name = valueOf(task, L"name");
    const bool isKnown = firstVariable(name) == name.npos;
    add(task, Permission::env, isKnown ? name : std::wstring(), "it sets '" + text::toUtf8(name) + "'");
  }

  // Not one of the run's own places, or only the run tells.
  static bool leadsElsewhere(const std::wstring& folder) { return placeToGrant(folder, true, true).has_value(); }

  bool worksElsewhere_ = false;  // the working folder is one that the list chose
  std::string member_, place_;
  const core::XmlDocument* document_ = nullptr;
  std::vector<PackageNeed>& needs_;
};

}  // namespace

std::vector<PackageNeed> needsOf(const PackageSource& package) {
  std::vector<PackageNeed> needs;
  for (const std::string& member : documentsOf(package)) {
    std::string bytes;
    try {
      bytes = package.read(member);
    } catch (const MemberFault&) {
      continue;
    }
    const auto loaded = core::xmlParse(bytes);
    if (!loaded) continue;
    Reader reader(member, needs);
    if (member.starts_with("actionlists/"))
      reader.readList(*loaded.value);
    else
      reader.readFilter(*loaded.value);
  }
  return needs;
}

std::vector<os::Need> grantsFor(const std::vector<PackageNeed>& needs) {
  std::set<os::Need> grants;
  for (const PackageNeed& need : needs)
    if (need.permission && need.isKnown()) grants.insert({*need.permission, need.resource});
  return {grants.begin(), grants.end()};
}

std::vector<os::Need> lackingOf(const PackageSource& package, const os::Grants& granted) {
  std::vector<os::Need> lacking = grantsFor(needsOf(package));
  std::erase_if(lacking, [&](const os::Need& need) { return granted.covers(need); });
  return lacking;
}

}  // namespace kelvane
