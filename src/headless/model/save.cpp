// Saving models: a document as its next version, and the documents of what a model uses before its own.
#include <algorithm>
#include <optional>
#include <unordered_set>

#include "headless/model/bottom_up.h"
#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
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
bool isUnsaved(const ModelDocument& document) { return document.isContentModified() || document.folder.empty(); }

// Puts the bytes in place of what the session wrote last. Nothing: another program wrote a newer version meanwhile.
std::optional<std::error_code> replaceOwn(Store& store, const ModelDocument& document, std::string_view bytes) {
  Folder& folder = store.folder(document.folder);
  // A version that another program wrote in the very moment of the session's own leaves no trace in the folder's time.
  if (os::files().exists(document.folder + documentFileName(document, document.writtenVersion + 1))) folder.forget();
  const DocumentFile* newest = folder.find(document.name, document.type);
  if (newest && newest->version > document.writtenVersion) return std::nullopt;
  return store.replace(folder, fileOf(document, document.writtenVersion), bytes);
}

}  // namespace

ProError Models::save(ProMdl handle, SaveObjects which) {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  const bool isLeftOut = which == SaveObjects::changed && !isUnsaved(document);
  if (isLocked(document) && !isLeftOut) {
    const std::wstring path = document.folder + documentFileName(document, newestVersion(document) + 1);
    message(document.record.readOnly ? cantWriteReadOnly(path) : cantWriteCheckedIn(path));
    return creo::ProGeneralError;
  }
  const ProError below = saveBelow(*model, which);
  const ProError own = isLeftOut ? creo::ProNoError : write(document);
  return own == creo::ProNoError ? below : own;
}

// What is used comes first: whatever fails behind it, no document on disk lacks what it needs.
ProError Models::saveBelow(const Model& model, SaveObjects which) {
  ProError result = creo::ProNoError;
  const auto usedHandles = [this](ProMdl one) {
    std::vector<ProMdl> used;
    for (const Model* below : usedBy(*find(one))) used.push_back(below->handle);
    return used;
  };
  std::unordered_set<const ModelDocument*> seen{model.document.get()};  // a generic and its instances share one
  for (const ProMdl handle : bottomUp(model.handle, usedHandles)) {
    ModelDocument& document = *find(handle)->document;
    if (!seen.insert(&document).second || (which != SaveObjects::all && !isUnsaved(document))) continue;
    if (!isLocked(document)) {
      if (const ProError failed = write(document); failed != creo::ProNoError) result = failed;
    } else if (isUnsaved(document)) {
      message(text::format(L"%s.%s isn't saved with %s.%s: it %s", document.name,
                           std::wstring(creo::typeExtension(document.type)), model.name,
                           std::wstring(creo::typeExtension(model.type())),
                           std::wstring(document.record.readOnly ? L"is read-only" : L"isn't checked out")));
    }
  }
  return result;
}

Got<std::string> Models::textOf(const ModelDocument& document) const {
  std::string bytes = writeDocument(document.record);
  if (!bytes.empty()) return bytes;
  message(document.name + L" can't be written: it holds a number that isn't finite");
  return creo::ProGeneralError;
}

ProError Models::write(ModelDocument& document) {
  const auto bytes = textOf(document);
  if (!bytes) return bytes.error;
  if (OneVersion::isWanted() && document.writtenVersion > 0) {
    const std::wstring path = document.folder + documentFileName(document, document.writtenVersion);
    const auto error = replaceOwn(store_, document, bytes.value);
    if (error && *error) {
      message(cantWrite(path, *error));
      return creo::ProGeneralError;
    }
    if (error) {
      noteSaved(document, document.writtenVersion);
      host_.saved({document.name, document.type, document.version, path});
      return creo::ProNoError;
    }
  }
  const bool isNew = document.folder.empty();
  if (isNew) document.folder = working_;
  Folder& folder = store_.folder(document.folder);
  int newest = newestVersion(document), version = newest + 1;
  std::error_code error = store_.create(folder, fileOf(document, version), bytes.value);
  // Another program took the number meanwhile; the folder's list doesn't show it yet.
  for (int tries = 0; error == std::errc::file_exists && tries < kMostTaken; ++tries) {
    folder.forget();
    newest = newestVersion(document);
    version = std::max(newest, version) + 1;
    error = store_.create(folder, fileOf(document, version), bytes.value);
  }
  const std::wstring path = document.folder + documentFileName(document, version);
  if (error) {
    if (isNew) document.folder.clear();
    message(cantWrite(path, error));
    return creo::ProGeneralError;
  }
  if (!isNew && newest > document.version)
    message(
        text::format(L"%s: another program wrote version %d meanwhile; its changes aren't in this one", path, newest));
  document.version = document.writtenVersion = version;
  noteSaved(document, version);
  host_.saved({document.name, document.type, version, path});
  return creo::ProNoError;
}

ProError Models::saveReplacing(ProMdl handle) {
  const Model* model = find(handle);
  if (!model) return creo::ProBadInputs;
  ModelDocument& document = *model->document;
  if (document.writtenVersion == 0) return creo::ProNotFound;
  const auto bytes = textOf(document);
  if (!bytes) return bytes.error;
  const auto error = replaceOwn(store_, document, bytes.value);
  if (!error) return write(document);
  if (*error) {
    message(cantWrite(document.folder + documentFileName(document, document.writtenVersion), *error));
    return creo::ProGeneralError;
  }
  noteSaved(document, document.writtenVersion);
  return creo::ProNoError;
}

int Models::newestVersion(const ModelDocument& document) {
  const DocumentFile* newest = store_.folder(document.folder).find(document.name, document.type);
  return std::max(document.version, newest ? newest->version : 0);
}

void Models::noteSaved(ModelDocument& document, int version) {
  document.markSaved();
  if (document.record.familyTable)
    store_.folder(document.folder).enterInstances(fileOf(document, version), document.rowNames());
}

}  // namespace headless
