#include "headless/model/save.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "headless/model/bottom_up.h"
#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
#include "headless/store/given_numbers.h"
#include "os/surroundings.h"
#include "text/format.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;

namespace {

// Numbers in a row that are taken although no document shows it: folders, say. Then saving gives up.
constexpr int kMostTaken = 100;

DocumentFile fileOf(const ModelDocument& document, int version) {
  return {document.name, document.type, version, documentFileName(document, version)};
}

bool isLocked(const ModelDocument& document) { return document.record.readOnly || document.closed; }
// Nothing on disk says what it is now. A history that was written alone is none of it: who works a model keeps that.
bool isUnsaved(const ModelDocument& document) { return document.isContentModified() || document.saveFolder().empty(); }

// A version that another program wrote in the very moment of the session's own leaves no trace in the folder's time.
void lookBehind(Folder& folder, const ModelDocument& document, int version) {
  if (os::files().exists(folder.path() + documentFileName(document, version + 1))) folder.forget();
}

// Puts the bytes in place of what the session wrote last. Nothing: another program wrote a newer version meanwhile.
std::optional<std::error_code> replaceOwn(ModelFolders& folders, const ModelDocument& document,
                                          std::string_view bytes) {
  Folder& folder = folders.target(document);
  lookBehind(folder, document, document.writtenVersion);
  const DocumentFile* newest = folder.find(document.name, document.type);
  if (newest && newest->version > document.writtenVersion) return std::nullopt;
  return folders.store().replace(folder, fileOf(document, document.writtenVersion), bytes);
}

// The highest number of the document's files where its saves go, and the one that the session knows there.
int newestVersion(Models& models, const ModelDocument& document) {
  const DocumentFile* newest = models.folders().target(document).find(document.name, document.type);
  return std::max(document.savedVersion(), newest ? newest->version : 0);
}

void noteSaved(Models& models, ModelDocument& document, int version) {
  document.markSaved();
  for (LayerRecord& layer : document.record.layers) layer.unsaved.reset();  // what they showed for the time being
  if (document.record.familyTable)
    models.folders().target(document).enterInstances(fileOf(document, version), document.rowNames());
}

void tellSaved(const Models& models, const ModelDocument& document) {
  SavedDocument saved{document.name, document.type, document.savedVersion(), savedPath(document)};
  if (!document.moved.folder.empty() && !document.folder.empty()) {
    saved.readPath = document.folder + documentFileName(document, document.version);
    saved.readVersion = document.version;
  }
  models.host().saved(saved);
}

// These bytes as the document's next version. ProGeneralError: not written, with a line.
ProError writeNext(Models& models, ModelDocument& document, std::string_view bytes) {
  const bool isNew = document.saveFolder().empty();
  if (isNew) document.folder = models.folders().working();
  Folder& folder = models.folders().target(document);
  int newest = newestVersion(models, document);
  int version = GivenNumbers::next(folder.path(), document.name, document.type, newest);
  std::error_code error = models.folders().store().create(folder, fileOf(document, version), bytes);
  // Another program took the number meanwhile; the folder's list doesn't show it yet.
  for (int tries = 0; error == std::errc::file_exists && tries < kMostTaken; ++tries) {
    folder.forget();
    newest = newestVersion(models, document);
    version = std::max(newest, version) + 1;
    error = models.folders().store().create(folder, fileOf(document, version), bytes);
  }
  const std::wstring path = folder.path() + documentFileName(document, version);
  if (error) {
    if (isNew) document.folder.clear();
    models.message(cantWrite(path, error));
    return creo::ProGeneralError;
  }
  if (!isNew && newest > document.savedVersion())
    models.message(
        text::format(L"%s: another program wrote version %d meanwhile; its changes aren't in this one", path, newest));
  (document.moved.folder.empty() ? document.version : document.moved.version) = document.writtenVersion = version;
  return creo::ProNoError;
}

// The document as its next version. ProGeneralError: not written, with a line.
ProError write(Models& models, ModelDocument& document) {
  const auto bytes = models.documentText(document);
  if (!bytes) return bytes.error;
  std::optional<std::error_code> replaced;
  if (OneVersion::isWanted() && document.writtenVersion > 0)
    replaced = replaceOwn(models.folders(), document, bytes.value);
  if (replaced && *replaced) {
    models.message(cantWrite(document.saveFolder() + documentFileName(document, document.writtenVersion), *replaced));
    return creo::ProGeneralError;
  }
  if (!replaced)
    if (const ProError failed = writeNext(models, document, bytes.value)) return failed;
  noteSaved(models, document, document.writtenVersion);
  tellSaved(models, document);
  return creo::ProNoError;
}

// What is used comes first: whatever fails behind it, no document on disk lacks what it needs.
ProError saveBelow(Models& models, const Model& model, SaveObjects which) {
  ProError result = creo::ProNoError;
  const auto usedHandles = [&models](ProMdl current) {
    std::vector<ProMdl> used;
    for (const Model* below : models.usedBy(*models.look(current))) used.push_back(below->handle);
    return used;
  };
  std::unordered_set<const ModelDocument*> seen{model.document.get()};  // a generic and its instances share one
  for (const ProMdl handle : bottomUp(model.handle, usedHandles)) {
    ModelDocument& document = *models.look(handle)->document;
    if (!seen.insert(&document).second || (which != SaveObjects::all && !isUnsaved(document))) continue;
    if (const std::wstring fault = models.bringBack(*models.look(handle)); !fault.empty()) {
      models.message(fault);
      result = creo::ProGeneralError;
      continue;
    }
    if (!isLocked(document)) {
      if (const ProError failed = write(models, document); failed != creo::ProNoError) result = failed;
    } else if (isUnsaved(document)) {
      models.message(text::format(L"%s.%s isn't saved with %s.%s: it %s", document.name,
                                  std::wstring(creo::typeExtension(document.type)), model.name,
                                  std::wstring(creo::typeExtension(model.type())),
                                  std::wstring(document.record.readOnly ? L"is read-only" : L"isn't checked out")));
    }
  }
  return result;
}

}  // namespace

ProError saveModel(Models& models, ProMdl handle, SaveObjects which) {
  const Model* model = models.find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  const bool isLeftOut = which == SaveObjects::changed && !isUnsaved(document);
  if (isLocked(document) && !isLeftOut) {
    const std::wstring path = document.saveFolder() + documentFileName(document, newestVersion(models, document) + 1);
    models.message(document.record.readOnly ? cantWriteReadOnly(path) : cantWriteCheckedIn(path));
    return creo::ProGeneralError;
  }
  const ProError below = saveBelow(models, *model, which);
  const ProError own = isLeftOut ? creo::ProNoError : write(models, document);
  return own == creo::ProNoError ? below : own;
}

ProError saveReplacing(Models& models, ProMdl handle) {
  const Model* model = models.find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  if (document.writtenVersion == 0) return creo::ProNotFound;
  const auto bytes = models.documentText(document);
  if (!bytes) return bytes.error;
  const auto error = replaceOwn(models.folders(), document, bytes.value);
  if (!error) return write(models, document);
  if (*error) {
    models.message(cantWrite(document.saveFolder() + documentFileName(document, document.writtenVersion), *error));
    return creo::ProGeneralError;
  }
  noteSaved(models, document, document.writtenVersion);
  return creo::ProNoError;
}

ProError saveAlone(Models& models, ProMdl handle) {
  const Model* model = models.find(handle);
  return model ? write(models, *model->document) : creo::ProBadInputs;
}

Got<std::string> changeStored(Models& models, ModelDocument& document, creo::FunctionRef<void(ModelRecord&)> change) {
  if (document.saveFolder().empty()) return creo::ProNotFound;
  Folder& folder = models.folders().target(document);
  lookBehind(folder, document, document.savedVersion());
  const DocumentFile* newest = folder.find(document.name, document.type);
  if (!newest) return creo::ProNotFound;
  const std::wstring path = folder.path() + newest->fileName;
  if (newest->version > document.savedVersion()) {
    models.message(writtenMeanwhile(path, newest->version));
    return creo::ProGeneralError;
  }
  const auto stored = models.folders().read(path);
  ModelRecord record;
  const JsonFault fault = stored ? readDocument(stored.value, record) : JsonFault();
  if (!stored || fault) {
    models.message(stored ? cantRead(path, fault) : cantRead(path, stored.error));
    return creo::ProGeneralError;
  }
  change(record);
  std::string bytes = writeDocument(record);
  std::optional<std::error_code> replaced;
  if (document.writtenVersion > 0) replaced = replaceOwn(models.folders(), document, bytes);
  if (replaced && *replaced) {
    models.message(cantWrite(path, *replaced));
    return creo::ProGeneralError;
  }
  if (!replaced)
    if (const ProError failed = writeNext(models, document, bytes)) return failed;
  change(document.record);
  document.forgetValues();
  tellSaved(models, document);
  return bytes;
}

}  // namespace headless
