#include "kelvane/check/path_check.h"

#include <algorithm>
#include <optional>

#include "kelvane/check/package_uses.h"
#include "kelvane/check/table_check.h"
#include "kelvane/check/text_check.h"
#include "language/workbook.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::Attribute;
using core::Kind;

constexpr const char* kRule = "path-missing";

class Paths {
 public:
  Paths(const PackageSource& package, const core::XmlNode& task, const actions::Action& action)
      : package_(package), task_(task), action_(action) {}

  std::vector<AttributeFault> run() {
    eachAttribute(task_, [this](const core::XmlAttr& given) {
      const Attribute* attribute = actions::findAttribute(action_, given.name);
      if (!attribute || attribute->folder.empty()) return;
      if (attribute->kind == Kind::file || attribute->kind == Kind::model || attribute->kind == Kind::folder)
        check(given, *attribute);
    });
    return std::move(faults_);
  }

 private:
  void add(std::string_view rule, std::wstring_view attribute, std::string text) {
    faults_.push_back({rule, text::toUtf8(attribute), std::move(text)});
  }

  void check(const core::XmlAttr& given, const Attribute& attribute) {
    if (!given.value.starts_with(kProjectDirectory)) return;
    const std::wstring_view rest = given.value.substr(kProjectDirectory.size());
    if (hasVariables(rest)) return;
    std::string path = text::toUtf8(attribute.folder) + "/" + text::replaceAll(text::toUtf8(rest), "\\", "/");
    path = text::replaceAll(path, "//", "/");
    if (readsTable(text::toUtf8(action_.key)) && isFileMember(path)) return checkTable(path);
    const bool isFile = attribute.kind != Kind::folder;
    if (isFile ? !isFileOf(attribute, path) : !isFolder(path))
      add(kRule, given.name,
          "'" + text::toUtf8(given.name) + "': the package has no " + (isFile ? "file" : "folder") + " '" + path + "'");
    else if (action_.key == L"groupActions")
      checkTemplate(path);
  }
  // A workbook shows its cells only where it is converted.
  void checkTable(const std::string& member) {
    if (language::isWorkbook(text::fromUtf8(member))) return;
    const std::string place = "'" + member + "': ";
    const std::optional<std::string> bytes = readable(member);
    if (!bytes) return;
    for (const std::string& fault : tableFaults(task_, *bytes)) add("table", L"path", std::string(place).append(fault));
  }
  // Nothing: it can't be unpacked, which is told once for the member.
  [[nodiscard]] std::optional<std::string> readable(const std::string& member) const {
    try {
      return package_.read(member);
    } catch (const MemberFault&) {
      return std::nullopt;
    }
  }
  // A material may be named without its ending, a model without its version.
  bool isFileOf(const Attribute& attribute, const std::string& path) const {
    if (isFileMember(path) || (attribute.kind == Kind::model && isModelMember(path))) return true;
    return action_.key == L"addMaterial" && (isFileMember(path + ".mtl") || isFileMember(path + ".mat"));
  }
  bool isFileMember(const std::string& path) const {
    return anyMember([&](const std::string& member) { return member == text::lower(path); });
  }
  // Whatever its version.
  bool isModelMember(const std::string& path) const {
    const std::string lower = text::lower(path);
    return anyMember([&](const std::string& member) { return member == lower || member.starts_with(lower + "."); });
  }
  bool isFolder(std::string path) const {
    if (!path.ends_with('/')) path += '/';
    return anyMember([&](const std::string& member) { return member.starts_with(text::lower(path)); });
  }
  // The drawing that serves as template, whatever its version.
  void checkTemplate(std::string folder) {
    const core::XmlAttr* name = core::attrFind(task_.attributes, L"tmpName");
    if (!name || hasVariables(name->value)) return;
    if (!folder.ends_with('/')) folder += '/';
    const std::string file = folder + text::toUtf8(name->value) + ".drw";
    if (!isModelMember(file)) add(kRule, L"tmpName", "'tmpName': the package has no '" + file + "'");
  }
  template <class Test>
  [[nodiscard]] bool anyMember(Test test) const {
    const auto members = package_.members();
    return std::any_of(members.begin(), members.end(),
                       [&](const std::string& member) { return test(text::lower(member)); });
  }

  const PackageSource& package_;
  const core::XmlNode& task_;
  const actions::Action& action_;
  std::vector<AttributeFault> faults_;
};

}  // namespace

std::vector<AttributeFault> pathFaults(const PackageSource& package, const core::XmlNode& task,
                                       const actions::Action& action) {
  return Paths(package, task, action).run();
}

}  // namespace kelvane
