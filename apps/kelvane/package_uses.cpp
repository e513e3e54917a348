#include "kelvane/package_uses.h"

#include <algorithm>

#include "engine/task.h"
#include "kelvane/text_check.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

// clang-format off
constexpr PathAttribute kPaths[] = {
    {"setWorkingDirectory", L"path",    "models",  PathTarget::folder},
    {"groupActions",        L"tmpPath", "models",  PathTarget::folder},
    {"runTrailfile",        L"tf",      "models",  PathTarget::file},
    {"exportStep",          L"config",  "models",  PathTarget::file},
    {"setDTL",              L"view",    "models",  PathTarget::file},
    {"addLayerFromTemplate", L"view",   "models",  PathTarget::model},
    {"openCSVReport",       L"file",    "reports", PathTarget::written},
    {"writeListReport",     L"file",    "reports", PathTarget::written},
    {"writeInformationPDF", L"folder",  "reports", PathTarget::written},
    {"writeInformationPDF", L"font",    "reports", PathTarget::file},
    {"reportFeatureParameter",     L"csvFileName", "reports", PathTarget::written},
    {"editModelParameterFromFile", L"path",        "reports", PathTarget::file},
    {"editParameterFromDictionary", L"path",       "reports", PathTarget::file},
    {"editModelDimensionFromFile", L"path",        "reports", PathTarget::file},
    {"editMaterialFromFile", L"path",    "reports", PathTarget::file},
    {"replaceMaterial",     L"path",    "materials", PathTarget::folder},
    {"addMaterial",         L"material", "materials", PathTarget::file},
    {"addSymbol",              L"sympath",  "models",  PathTarget::folder},
    {"addTable",               L"tablepath", "models", PathTarget::folder},
    {"replaceFormat",          L"path",     "models",  PathTarget::folder},
    {"addNote",                L"notepath", "models",  PathTarget::file},
    {"editModelNotesFromFile", L"path",     "reports", PathTarget::file},
    {"loadToleranceTable",     L"path",     "models",  PathTarget::file},
    {"setAppearance",          L"path",     "models",  PathTarget::file},
    {"runModelCheck",          L"config",   "models",  PathTarget::file},
    {"exportpdf",              L"profile",  "models",  PathTarget::file},
    {"exportpdf2d",            L"profile",  "models",  PathTarget::file},
};
// What leaves the process: the attribute that names it, and one that follows it.
struct OutsideAttribute {
  std::string_view action;
  std::wstring_view attribute, more;
  const char* kind;
  const char* text;
};
constexpr OutsideAttribute kOutside[] = {
    {"runMSDOScommand",        L"cmd",   L"args", "program", "it starts the program"},
    {"setUserVariableFromUrl", L"value", L"",     "address", "it asks the address"},
};
// clang-format on

template <class F>
void eachAttribute(const core::XmlNode& node, F f) {
  for (const core::XmlAttrBlock* block = node.attributes; block; block = block->next) {
    for (std::uint16_t i = 0; i < block->count; ++i) f(*block->items[i]);
  }
}

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
  const engine::Subject none;
  const engine::Task task(node, none);
  if (task.isTrue(L"eci")) return;
  for (const auto& line : task.numberedAll(L"value", text::parseInt(task.attribute(L"valuec")))) {
    const auto isBeyond = [](wchar_t c) { return c > kLastOfAscii; };
    const bool has = std::any_of(line.value.begin(), line.value.end(), isBeyond);
    if (!has && !hasVariables(line.value)) continue;
    return uses.push_back({"letters", "'value" + std::to_string(line.number) + (has ? "' has" : "' may have") +
                                          " letters beyond ASCII, which readers guess; eci=\"true\" tells them"});
  }
}

}  // namespace

const PathAttribute* pathAttribute(std::string_view action, std::wstring_view attribute) {
  const auto* found = std::find_if(std::begin(kPaths), std::end(kPaths), [&](const PathAttribute& row) {
    return row.action == action && row.attribute == attribute;
  });
  return found == std::end(kPaths) ? nullptr : found;
}

std::vector<PackageUse> usesOfAction(const core::XmlNode& task, const std::string& type) {
  std::vector<PackageUse> uses;
  addNumbers(task, type, uses);
  addOwners(task, type, uses);
  addCodeLetters(task, type, uses);
  eachAttribute(task, [&](const core::XmlAttr& attribute) {
    for (const OutsideAttribute& row : kOutside) {
      if (row.action != type) continue;
      if (row.more == attribute.name) return;  // told with the attribute that it follows
      if (row.attribute != attribute.name) continue;
      std::wstring asked(attribute.value);
      const core::XmlAttr* more = row.more.empty() ? nullptr : core::attrFind(task.attributes, row.more);
      if (more && !more->value.empty()) asked.append(L" ").append(more->value);
      return uses.push_back({row.kind, std::string(row.text) + " " + inQuotes(asked)});
    }
    const bool isPath = pathAttribute(type, attribute.name) != nullptr;
    if (isPath ? leavesPackage(attribute.value) : isWholePath(attribute.value)) uses.push_back(outsidePath(attribute));
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
