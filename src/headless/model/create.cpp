#include "headless/model/create.h"

#include "headless/model/accuracy.h"
#include "headless/model/models.h"
#include "headless/model/new_document.h"
#include "headless/store/faults.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using creo::ProMdlType;

namespace {

// As a drawing's document names a model; an instance is found by its generic's.
std::wstring nameInDocument(const Model& model) {
  return model.row ? model.name + L'<' + model.document->name + L'>' : model.name;
}

// What a drawing on disk holds as template. ProNotFound: no such drawing; ProGeneralError, with a line: it can't be
// read.
ProError readTemplate(Models& models, std::wstring_view name, ModelRecord& into) {
  for (Folder* folder : models.folders().searched(ProMdlType::drawing)) {
    const DocumentFile* file = folder->find(name, ProMdlType::drawing);
    if (!file) continue;
    const std::wstring path = folder->path() + file->fileName;
    const auto bytes = models.folders().read(path);
    const JsonFault fault = bytes ? readDocument(bytes.value, into) : JsonFault();
    if (bytes && !fault) return creo::ProNoError;
    models.message(bytes ? cantRead(path, fault) : cantRead(path, bytes.error));
    return creo::ProGeneralError;
  }
  return creo::ProNotFound;
}

}  // namespace

bool isFileName(std::wstring_view name) {
  if (name.empty() || name.find_first_of(L"\\/:*?\"<>|.") != name.npos) return false;
  for (const wchar_t c : name)
    if (c < L' ') return false;
  return true;
}

std::shared_ptr<ModelDocument> newDocument(std::wstring_view name, ProMdlType type) {
  auto document = std::make_shared<ModelDocument>();
  document->name = text::upper(name);
  document->type = type;
  document->fileStem = text::lower(name) + L"." + text::lower(creo::typeExtension(type));
  document->touch(nullptr);
  return document;
}

Got<ProMdl> createModel(Models& models, std::wstring_view name, ProMdlType type) {
  auto document = newDocument(name, type);
  if (type == ProMdlType::part || type == ProMdlType::assembly) stateAccuracyOfTemplates(document->record);
  return createModel(models, std::move(document));
}

Got<ProMdl> createModel(Models& models, std::shared_ptr<ModelDocument> document) {
  const std::wstring& name = document->name;
  const ProMdlType type = document->type;
  if (!isFileName(name) || type == ProMdlType::unused) return creo::ProBadInputs;
  if (isNameKnown(models, name, type)) return creo::ProExists;
  std::wstring upper = document->name;
  return models.add(std::move(document), nullptr, std::move(upper)).handle;
}

bool isNameKnown(Models& models, std::wstring_view name, ProMdlType type) {
  return models.inMemory(name, type) || models.folders().has(name, type);
}

Got<ProMdl> createDrawing(Models& models, std::wstring_view name, std::wstring_view templateName, ProMdl handle) {
  const Model* solid = models.find(handle);
  if (!solid || (solid->type() != ProMdlType::part && solid->type() != ProMdlType::assembly)) return creo::ProBadInputs;
  if (!text::isModelName(name)) return creo::ProBadInputs;
  if (models.inMemory(name, ProMdlType::drawing)) return creo::ProExists;
  ModelRecord source;
  if (const ProError error = readTemplate(models, templateName, source)) return error;

  auto document = newDocument(name, ProMdlType::drawing);
  ModelRecord& record = document->record;
  record.units = std::move(source.units);
  record.parameters = std::move(source.parameters);
  record.sheets = std::move(source.sheets);
  record.tables = std::move(source.tables);
  record.symbolDefinitions = std::move(source.symbolDefinitions);
  record.symbols = std::move(source.symbols);
  UsedModelRecord& shown = record.models.emplace_back();
  shown.name = text::toUtf8(nameInDocument(*solid));
  shown.type = solid->type();
  std::wstring upper = document->name;
  return models.add(std::move(document), nullptr, std::move(upper)).handle;
}

}  // namespace headless
