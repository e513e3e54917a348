#include "headless/model/rename.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/follow_rename.h"
#include "headless/model/models.h"
#include "headless/model/new_document.h"
#include "headless/model/one_version.h"
#include "headless/model/save.h"
#include "headless/model/stand_alone.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/units.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;

bool isNameTaken(Models& models, const Model& model, const std::wstring& name, bool byInstances) {
  if (models.named(name, model.type()) || model.document->row(name)) return true;
  std::vector<Folder*> folders = models.folders().searched(model.type());
  if (!model.document->folder.empty()) folders.push_back(&models.folders().of(*model.document));
  if (!model.document->moved.folder.empty()) folders.push_back(&models.folders().target(*model.document));
  return std::any_of(folders.begin(), folders.end(), [&](Folder* folder) {
    return folder->find(name, model.type()) || (byInstances && !folder->genericOf(name, model.type()).empty());
  });
}

ProError renameModel(Models& models, ProMdl handle, std::wstring_view wanted) {
  Model* model = models.find(handle);
  if (!model) return creo::ProBadInputs;
  if (model->row ? wanted.empty() || text::units(wanted) > text::kLongestModelName : !text::isModelName(wanted))
    return creo::ProBadInputs;
  const std::wstring now = text::upper(wanted), before = model->name;
  if (now == before) return creo::ProNoError;
  ModelDocument& document = *model->document;
  if (model->row) {
    if (models.named(now, model->type()) || document.row(now)) return creo::ProExists;
    if (model->row->locked) return refuseLocked(models, document, *model->row);
    models.change(*model, [&] {
      models.setName(*model, now);
      document.renameRow(*model->row, text::toUtf8(now));
    });
    return creo::ProNoError;
  }
  if (isNameTaken(models, *model, now, false)) return creo::ProExists;
  models.setName(*model, now);
  document.version = document.moved.version = document.writtenVersion = 0;
  document.touch(nullptr);
  if (models.host().read)
    models.host().read(document);  // the workspace may know the new name, and no longer the old one
  followRename(models, {before, now, model->type()});
  return creo::ProNoError;
}

Got<ProMdl> copyModel(Models& models, ProMdl handle, std::wstring_view wanted) {
  const Model* model = models.find(handle);
  if (!model || !text::isModelName(wanted)) return creo::ProBadInputs;
  const std::wstring name = text::upper(wanted);
  if (models.named(name, model->type()) || model->document->row(name)) return creo::ProExists;
  if (!model->row) handOut(*model->document);
  const ProMdl copy = models.add(standAlone(*model, wanted, false), nullptr, name).handle;
  const ProError saved = saveAlone(models, copy);
  if (saved == creo::ProNoError) return copy;
  models.remove(*models.find(copy));
  return saved;
}

}  // namespace headless
