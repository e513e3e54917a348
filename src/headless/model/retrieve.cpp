// Bringing models into memory: the document itself, then, without recursion, whatever it uses.
#include <algorithm>

#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProMdl;
using creo::ProMdlType;

std::vector<Folder*> Models::searched() {
  std::vector<Folder*> folders{&store_.folder(working_)};
  if (Folder* home = &store_.folder(home_); home != folders.front()) folders.push_back(home);
  return folders;
}

Got<ProMdl> Models::retrieve(std::wstring_view name, ProMdlType type) {
  Retrieval retrieval;
  const auto model = bring(name, type, retrieval);
  bringUsed(retrieval);
  return model;
}

void Models::bringUsed(Retrieval& retrieval) {
  for (std::size_t i = 0; i < retrieval.loaded.size(); ++i) {
    const std::shared_ptr<ModelDocument> user = retrieval.loaded[i];
    const ModelRecord& record = user->record;
    for (const UsedModelRecord& used : user->type == ProMdlType::drawing ? record.models : record.components) {
      const std::wstring name = text::fromUtf8(used.name);
      const std::wstring key = modelKey(name, used.type);
      if (retrieval.missing.contains(key) || bring(name, used.type, retrieval)) continue;
      retrieval.missing.insert(key);
      message(text::format(L"%s.%s uses %s.%s, which can't be retrieved", user->name,
                           std::wstring(creo::typeExtension(user->type)), text::upper(name),
                           std::wstring(creo::typeExtension(used.type))));
    }
  }
}

Got<ProMdl> Models::bring(std::wstring_view text, ProMdlType type, Retrieval& retrieval) {
  if (type == ProMdlType::unused || text.empty()) return creo::ProBadInputs;
  const ModelName name = modelName(text);
  if (const auto there = inMemory(name.name, type)) return there;
  const auto local = bringLocal(name, type, retrieval);
  const bool mayFetch = local.error == creo::ProNotFound && name.generic.empty() && host_.fetch;
  return mayFetch && host_.fetch(name.name, type) ? bringLocal(name, type, retrieval) : local;
}

Got<ProMdl> Models::bringLocal(const ModelName& name, ProMdlType type, Retrieval& retrieval) {
  if (name.generic.empty()) {
    for (Folder* folder : searched())
      if (const DocumentFile* file = folder->find(name.name, type))
        return load(*folder, DocumentFile(*file), retrieval);
  }
  return hasSheets(type) ? creo::ProNotFound : bringInstance(name, type, retrieval);
}

Got<ProMdl> Models::bringInstance(const ModelName& name, ProMdlType type, Retrieval& retrieval) {
  std::wstring generic = name.generic;
  if (generic.empty()) {
    for (Folder* folder : searched()) {
      generic = folder->genericOf(name.name, type);
      if (!generic.empty()) break;
    }
    if (generic.empty() || generic == name.name) return creo::ProNotFound;
  }
  const auto model = bring(generic, type, retrieval);
  if (!model) return model;
  const std::shared_ptr<ModelDocument> document = find(model.value)->document;
  RowRecord* row = document->row(name.name);
  // An instance that has become a model of its own is still called by its generic in what uses it.
  if (!row) return name.generic.empty() ? Got<ProMdl>(creo::ProNotFound) : bringLocal({name.name, {}}, type, retrieval);
  return instance(document, *row);
}

Got<ProMdl> Models::load(Folder& folder, const DocumentFile& file, Retrieval& retrieval) {
  const std::wstring path = folder.path() + file.fileName;
  const auto bytes = store_.read(path);
  if (!bytes) {
    if (bytes.error == std::errc::no_such_file_or_directory) {  // somebody else removed it; is there another version?
      folder.forget();
      const DocumentFile* other = folder.find(file.name, file.type);
      if (!other) return creo::ProNotFound;
      if (other->fileName != file.fileName) return load(folder, DocumentFile(*other), retrieval);
    }
    message(cantRead(path, bytes.error));
    host_.unreadable(path);
    return creo::ProGeneralError;
  }
  auto document = std::make_shared<ModelDocument>();
  if (const JsonFault fault = readDocument(bytes.value, document->record)) {
    message(cantRead(path, fault));
    host_.unreadable(path);
    return creo::ProGeneralError;
  }
  document->name = file.name;
  document->type = file.type;
  document->version = file.version;
  document->folder = folder.path();
  document->fileStem = file.version > 0 ? file.fileName.substr(0, file.fileName.rfind(L'.')) : file.fileName;
  OneVersion::recall(*document);
  if (document->record.familyTable) linkRows(*document->record.familyTable, nullptr);
  if (host_.read) host_.read(*document);
  retrieval.loaded.push_back(document);
  return add(std::move(document), nullptr, file.name).handle;
}

Got<ProMdl> Models::instance(const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  const std::wstring name = text::upper(text::fromUtf8(row.name));
  if (const auto there = instanceInMemory(*document, row)) return there;
  if (byKey_.contains(modelKey(name, document->type))) {
    message(text::format(L"%s<%s> can't be built: another model of that name is in memory", name, document->name));
    return creo::ProGeneralError;
  }
  if (const std::wstring fault = rowFault(*document, row); !fault.empty()) {
    message(text::format(L"%s<%s> can't be built: %s", name, document->name, fault));
    return creo::ProGeneralError;
  }
  const Model& built = add(document, &row, name);
  const ProMdl handle = built.handle;
  for (const UsedModelRecord& component : replacedComponents(built)) {
    if (retrieve(text::fromUtf8(component.name), component.type)) continue;
    message(text::format(L"%s<%s> can't be built: its component %s can't be retrieved", name, document->name,
                         text::upper(text::fromUtf8(component.name))));
    remove(*find(handle));
    return creo::ProGeneralError;
  }
  return handle;
}

}  // namespace headless
