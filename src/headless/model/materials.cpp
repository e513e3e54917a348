#include "headless/model/materials.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/parameters.h"
#include "headless/store/material_file.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::ProError;

namespace {

std::vector<MaterialRecord>::iterator materialNamed(ModelRecord& record, std::string_view name) {
  return std::find_if(record.materials.begin(), record.materials.end(),
                      [name](const MaterialRecord& material) { return sameName(material.name, name); });
}

// Where the name's file is; empty: nowhere.
std::wstring materialPath(const Models& models, std::vector<std::wstring> folders, const std::wstring& name) {
  if (folders.empty()) folders.emplace_back();
  for (const std::wstring& folder : folders) {
    const bool isWhole =
        !os::splitDevice(folder).device.empty() || folder.starts_with(L'\\') || folder.starts_with(L'/');
    const std::wstring start = isWhole ? folder : os::joined(models.folders().working(), folder);
    for (const std::wstring_view ending : {kMaterialEnding, kPlainMaterialEnding}) {
      std::wstring path = os::joined(start, name + std::wstring(ending));
      if (os::files().exists(path)) return path;
    }
  }
  return {};
}

bool sameParameter(const ParameterRecord& a, const ParameterRecord& b) {
  return a.type == b.type && a.value == b.value && a.units == b.units;
}

// The material's parameters become those that were read; what the model keeps beside their values stays. False: they
// were the same already.
bool takeParameters(ParameterList& present, ParameterList&& read) {
  bool changed = present.list.size() != read.list.size();
  for (std::size_t i = 0; i < read.list.size(); ++i) {
    ParameterRecord& record = read.list[i];
    const auto nameAt = [&](std::size_t at) -> std::string_view { return present.list[at].name; };
    const std::size_t at = present.index.find(record.name, present.list.size(), nameAt);
    if (at == NameIndex::kNone) {
      changed = true;
      continue;
    }
    ParameterRecord& before = present.list[at];
    changed = changed || at != i || !sameParameter(before, record);
    record.name = before.name;
    record.description = before.description;
    record.designated = before.designated;
    record.extra = std::move(before.extra);
  }
  if (changed || !read.list.empty()) present = std::move(read);
  present.index.drop();
  return changed;
}

// Where the part has the parameter that its table's column stands for, it says the same as the part.
void makeCurrent(ModelDocument& document, const std::string& name) {
  document.record.material = name;
  ParameterRecord* parameter = findParameter(document, nullptr, kMaterialColumn);
  if (parameter && parameter->type == creo::ProParamvalueType::string) parameter->value = name;
}

}  // namespace

ProError setCurrentMaterial(Model& part, const std::wstring& name) {
  ModelDocument& document = *part.document;
  const auto found = materialNamed(document.record, text::toUtf8(name));
  if (found == document.record.materials.end()) return creo::ProNotFound;
  constexpr auto kParameter = creo::ProFamitemType::parameter;
  if (part.row) {
    if (!hasColumn(document, part.row, kParameter, kMaterialColumn)) return creo::ProGeneralError;
    setRowValue(document, *part.row, kParameter, kMaterialColumn, found->name);
  } else {
    makeCurrent(document, found->name);
  }
  document.touch(part.row);
  return creo::ProNoError;
}

ProError deleteMaterial(Model& part, const std::wstring& name) {
  ModelRecord& record = part.document->record;
  const auto found = materialNamed(record, text::toUtf8(name));
  if (found == record.materials.end()) return creo::ProNotFound;
  if (sameName(record.material, found->name)) makeCurrent(*part.document, {});
  record.materials.erase(found);
  part.document->touch(nullptr);
  return creo::ProNoError;
}

ProError readMaterialFile(const Models& models, std::vector<std::wstring> folders, Model& part,
                          const std::wstring& name) {
  if (name.empty() || name.find_first_of(L"/\\:") != name.npos) return creo::ProBadInputs;
  const std::wstring path = materialPath(models, std::move(folders), name);
  if (path.empty()) return creo::ProNotFound;
  const auto fail = [&](const std::wstring& reason) {
    models.message(path + reason);
    return creo::ProGeneralError;
  };
  if (os::files().isFolder(path)) return fail(L" is a folder");
  const auto content = os::readText(path);
  if (!content) return fail(L" can't be read: " + text::fromUtf8(content.error.message()));
  ParameterList parameters;
  if (const auto fault = readMaterial(content.value, *materialKind(path), parameters))
    return fail(text::format(L":%d: %s", fault.line, fault.reason));

  ModelRecord& record = part.document->record;
  const std::string wanted = text::toUtf8(name);
  const auto present = materialNamed(record, wanted);
  if (present == record.materials.end()) {
    MaterialRecord& fresh = record.materials.emplace_back();
    fresh.name = wanted;
    fresh.parameters = std::move(parameters);
    part.document->touch(nullptr);
  } else if (takeParameters(present->parameters, std::move(parameters))) {
    part.document->touch(nullptr);
  }
  return creo::ProNoError;
}

}  // namespace headless
