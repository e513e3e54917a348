#include "kelvane/check/package_uses.h"

#include <algorithm>

#include "actions/task.h"
#include "kelvane/check/attribute_check.h"
#include "kelvane/check/text_check.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

// "d:\x", "\\server\x", in quotes or not.
bool isWholePath(std::wstring_view value) {
  if (value.starts_with(L'"')) value.remove_prefix(1);
  const auto isSeparator = [&](std::size_t at) {
    return at < value.size() && (value[at] == L'\\' || value[at] == L'/');
  };
  return (!os::splitDevice(value).device.empty() && isSeparator(2)) || value.starts_with(L"\\\\");
}

// Relative ones lie where Creo's working folder happens to be.
bool leavesPackage(std::wstring_view value) {
  if (value.starts_with(L'"')) value.remove_prefix(1);
  if (value.empty()) return false;
  if (!value.starts_with(kProjectDirectory)) return true;
  for (const std::wstring& part : text::split(os::withBackslashes(value), L'\\')) {
    if (part == L"..") return true;
  }
  return false;
}

std::string inQuotes(std::wstring_view value) { return "'" + text::toUtf8(value) + "'"; }

PackageUse outsidePath(const core::XmlAttr& attribute) {
  return {"path", inQuotes(attribute.name) + " leaves the package: " + inQuotes(attribute.value)};
}

// A parameter's number goes into another one without its unit. Only the model tells whether it has one.
void addNumbers(const core::XmlNode& task, const std::string& type, std::vector<PackageUse>& uses) {
  if (type != "editModelParameter" && type != "editMaterialParameter") return;
  const core::XmlAttr* value = core::attrFind(task.attributes, L"value");
  const core::XmlAttr* kind = core::attrFind(task.attributes, L"totype");
  if (!value || !kind || kind->value != L"2") return;
  for (const std::string& name : namedParameters(value->value))
    uses.push_back({"units", "'value': of a parameter with units " + name +
                                 " is the number in these units; what is written counts in the model's"});
}

// The list says feature or material, but a parameter with a unit can be made in the model alone.
void addOwners(const core::XmlNode& task, const std::string& type, std::vector<PackageUse>& uses) {
  const bool inFeature = type == "addKEParameter";
  if (!inFeature && type != "addMaterialParameter") return;
  eachAttribute(task, [&](const core::XmlAttr& attribute) {
    if (!attribute.name.starts_with(kUnit) || attribute.value.empty()) return;
    const core::XmlAttr* kind =
        core::attrFind(task.attributes, L"type_" + std::wstring(attribute.name.substr(kUnit.size())));
    if (kind && (kind->value == L"String" || kind->value == L"Boolean")) return;  // it isn't created at all
    uses.push_back({"units", inQuotes(attribute.name) +
                                 ": a parameter with a unit is created in the model, not in the " +
                                 (inFeature ? "feature" : "material")});
  });
}

// A code that doesn't say what its letters are, and whose text has some that readers take for others, or may have them.
void addCodeLetters(const core::XmlNode& node, const std::string& type, std::vector<PackageUse>& uses) {
  constexpr wchar_t kLastOfAscii = 0x7f;
  if (type != "setQRCode" && type != "createPDF417Barcode" && type != "createQRdotmatrix") return;
  const actions::Subject none;
  const actions::Task task(node, none);
  if (task.isTrue(L"eci")) return;
  for (const auto& line : task.numberedAll(L"value", text::parseInt(task.attribute(L"valuec")))) {
    const auto isBeyond = [](wchar_t c) { return c > kLastOfAscii; };
    const bool has = std::any_of(line.value.begin(), line.value.end(), isBeyond);
    if (!has && !hasVariables(line.value)) continue;
    return uses.push_back({"letters", "'value" + std::to_string(line.number) + (has ? "' has" : "' may have") +
                                          " letters beyond ASCII, which readers guess; eci=\"true\" tells them"});
  }
}

// The arguments of a program are told with it.
bool isToldWithAnother(const actions::Action& action, std::wstring_view name) {
  return std::any_of(action.attributes.begin(), action.attributes.end(),
                     [&](const core::Attribute& attribute) { return attribute.with == name; });
}
std::wstring withMore(const core::XmlNode& task, const core::XmlAttr& given, const core::Attribute& attribute) {
  std::wstring all(given.value);
  const core::XmlAttr* more = core::attrFind(task.attributes, attribute.with);
  if (more && !more->value.empty()) all.append(L" ").append(more->value);
  return all;
}

}  // namespace

bool isPath(core::Kind kind) {
  using enum core::Kind;
  return kind == file || kind == model || kind == folder || kind == written;
}

std::vector<PackageUse> usesOfAction(const core::XmlNode& task, const actions::Action& action) {
  std::vector<PackageUse> uses;
  const std::string type = text::toUtf8(action.key);
  addNumbers(task, type, uses);
  addOwners(task, type, uses);
  addCodeLetters(task, type, uses);
  eachAttribute(task, [&](const core::XmlAttr& given) {
    const core::Attribute* attribute = actions::findAttribute(action, given.name);
    if (isToldWithAnother(action, given.name)) return;
    if (attribute && attribute->kind == core::Kind::program)
      return uses.push_back({"program", "it starts the program " + inQuotes(withMore(task, given, *attribute))});
    if (attribute && attribute->kind == core::Kind::address)
      return uses.push_back({"address", "it asks the address " + inQuotes(given.value)});
    const bool isOfPackage = attribute && isPath(attribute->kind) && !attribute->folder.empty();
    if (isOfPackage ? leavesPackage(given.value) : isWholePath(given.value)) uses.push_back(outsidePath(given));
  });
  return uses;
}

std::vector<PackageUse> usesOfFilterItem(const core::XmlNode& item) {
  std::vector<PackageUse> uses;
  eachAttribute(item, [&](const core::XmlAttr& attribute) {
    if (isWholePath(attribute.value)) uses.push_back(outsidePath(attribute));
  });
  return uses;
}

}  // namespace kelvane
