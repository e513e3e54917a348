#include "headless/model/retrieve.h"

#include <unordered_set>

#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/one_version.h"
#include "headless/model/parameters.h"
#include "headless/store/faults.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::Got;
using creo::ProMdl;
using creo::ProMdlType;

namespace {

// One retrieval: what it brought in and still has to look through, and what it complained about.
class Retrieval {
 public:
  explicit Retrieval(Models& models) : models_(models) {}
  Got<ProMdl> bring(std::wstring_view name, ProMdlType type);
  // What the models use that came in.
  void bringUsed();

 private:
  // From the folders alone.
  Got<ProMdl> bringLocal(const ModelName& name, ProMdlType type);
  Got<ProMdl> bringInstance(const ModelName& name, ProMdlType type);
  Got<ProMdl> load(Folder& folder, const DocumentFile& file);

  Models& models_;
  std::vector<std::shared_ptr<ModelDocument>> loaded_;
  std::unordered_set<std::wstring> missing_;
};

void Retrieval::bringUsed() {
  for (std::size_t next = 0; next < loaded_.size();) {  // what is brought comes behind the others
    const std::shared_ptr<ModelDocument> user = loaded_[next++];
    const ModelRecord& record = user->record;
    for (const UsedModelRecord& used : user->type == ProMdlType::drawing ? record.models : record.components) {
      const std::wstring name = text::fromUtf8(used.name);
      const std::wstring key = modelKey(name, used.type);
      if (missing_.contains(key) || bring(name, used.type)) continue;
      missing_.insert(key);
      models_.message(text::format(L"%s.%s uses %s.%s, which can't be retrieved", user->name,
                                   std::wstring(creo::typeExtension(user->type)), text::upper(name),
                                   std::wstring(creo::typeExtension(used.type))));
    }
  }
}

Got<ProMdl> Retrieval::bring(std::wstring_view text, ProMdlType type) {
  if (type == ProMdlType::unused || text.empty()) return creo::ProBadInputs;
  const ModelName name = modelName(text);
  if (const auto there = models_.inMemory(name.name, type)) return there;
  const auto local = bringLocal(name, type);
  const bool mayFetch = local.error == creo::ProNotFound && name.generic.empty() && models_.host().fetch;
  return mayFetch && models_.host().fetch(name.name, type) ? bringLocal(name, type) : local;
}

Got<ProMdl> Retrieval::bringLocal(const ModelName& name, ProMdlType type) {
  if (name.generic.empty()) {
    for (Folder* folder : models_.folders().searched(type))
      if (const DocumentFile* file = folder->find(name.name, type)) return load(*folder, DocumentFile(*file));
  }
  return hasSheets(type) ? creo::ProNotFound : bringInstance(name, type);
}

Got<ProMdl> Retrieval::bringInstance(const ModelName& name, ProMdlType type) {
  std::wstring generic = name.generic;
  if (generic.empty()) {
    for (Folder* folder : models_.folders().searched(type)) {
      generic = folder->genericOf(name.name, type);
      if (!generic.empty()) break;
    }
    if (generic.empty() || generic == name.name) return creo::ProNotFound;
  }
  const auto model = bring(generic, type);
  if (!model) return model;
  const std::shared_ptr<ModelDocument> document = models_.find(model.value)->document;
  RowRecord* row = document->row(name.name);
  // An instance that has become a model of its own is still called by its generic in what uses it.
  if (!row) return name.generic.empty() ? Got<ProMdl>(creo::ProNotFound) : bringLocal({name.name, {}}, type);
  return retrieveInstance(models_, document, *row);
}

Got<ProMdl> Retrieval::load(Folder& folder, const DocumentFile& file) {
  const std::wstring path = folder.path() + file.fileName;
  auto read = models_.folders().readRecord(path);
  if (!read) {
    if (read.error == std::errc::no_such_file_or_directory) {  // somebody else removed it; is there another version?
      folder.forget();
      const DocumentFile* other = folder.find(file.name, file.type);
      if (!other) return creo::ProNotFound;
      if (other->fileName != file.fileName) return load(folder, DocumentFile(*other));
    }
    models_.message(ModelFolders::faultOf(path, read));
    models_.host().unreadable(path);
    return creo::ProGeneralError;
  }
  auto document = std::make_shared<ModelDocument>();
  document->record = std::move(read.record);
  document->textSize = read.size;
  document->name = file.name;
  document->type = file.type;
  document->version = file.version;
  document->folder = folder.path();
  document->fileStem = file.version > 0 ? file.fileName.substr(0, file.fileName.rfind(L'.')) : file.fileName;
  OneVersion::recall(*document);
  if (document->record.familyTable) linkRows(*document->record.familyTable, nullptr);
  if (models_.host().read) models_.host().read(*document);
  loaded_.push_back(document);
  return models_.add(std::move(document), nullptr, file.name).handle;
}

}  // namespace

Got<ProMdl> retrieveModel(Models& models, std::wstring_view name, ProMdlType type) {
  Retrieval retrieval(models);
  // Another program may have removed the version that lies away: then it is read as one that isn't there.
  const auto there = models.inMemory(name, type);
  const Model* present = there ? models.look(there.value) : nullptr;
  if (present && !models.bringBack(*present).empty()) models.remove(*present);
  const auto model = retrieval.bring(name, type);
  retrieval.bringUsed();
  return model;
}

Got<ProMdl> retrieveInstance(Models& models, const std::shared_ptr<ModelDocument>& document, RowRecord& row) {
  const std::wstring name = text::upper(text::fromUtf8(row.name));
  if (const auto there = instanceInMemory(models, *document, row)) return there;
  if (models.named(name, document->type)) {
    models.message(
        text::format(L"%s<%s> can't be built: another model of that name is in memory", name, document->name));
    return creo::ProGeneralError;
  }
  if (const std::wstring fault = rowFault(*document, row); !fault.empty()) {
    models.message(text::format(L"%s<%s> can't be built: %s", name, document->name, fault));
    return creo::ProGeneralError;
  }
  const Model& built = models.add(document, &row, name);
  const ProMdl handle = built.handle;
  for (const UsedModelRecord& component : replacedComponents(built)) {
    if (retrieveModel(models, text::fromUtf8(component.name), component.type)) continue;
    models.message(text::format(L"%s<%s> can't be built: its component %s can't be retrieved", name, document->name,
                                text::upper(text::fromUtf8(component.name))));
    models.remove(*models.find(handle));
    return creo::ProGeneralError;
  }
  return handle;
}

std::wstring rowFault(const ModelDocument& document, const RowRecord& row) {
  for (const RowRecord* level = &row; level; level = level->parent) {
    for (const auto& [name, value] : level->values) {
      if (!rowColumn(document, *level, creo::ProFamitemType::parameter, name).isColumn) continue;
      const ParameterRecord* parameter = findParameter(document, level->parent, name);
      if (!parameter) return text::format(L"'%s' is no parameter of the generic", text::fromUtf8(name));
      if (!fitsType(value, parameter->type))
        return text::format(L"the value of '%s' is of another type", text::fromUtf8(name));
    }
  }
  return {};
}

}  // namespace headless
