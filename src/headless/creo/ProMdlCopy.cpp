#include "creo/ProMdlCopy.h"

#include "headless/creo/operation.h"
#include "headless/model/create.h"
#include "headless/model/rename.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

ProError ProMdlRename(ProMdl model, const std::wstring& name) {
  return onModel("ProMdlRename", model,
                 [&](State& state, Model& m) { return headless::renameModel(state.models, m.handle, name); });
}

ProError ProMdlnameRename(ProMdl model, const std::wstring& name, ProRenamed& renamed) {
  return onModel("ProMdlnameRename", model,
                 [&](State& state, Model& m) { return headless::renameOnDisk(state.models, m.handle, name, renamed); });
}

Got<bool> ProMdlnameIsTaken(ProMdl model, const std::wstring& name) {
  return onModel("ProMdlnameIsTaken", model, [&](State& state, Model& m) -> Got<bool> {
    return headless::isNameTaken(state.models, m, text::upper(name), true);
  });
}

Got<bool> ProMdlnameIsTaken(const std::wstring& name, ProMdlType type) {
  return headless::operation(
      "ProMdlnameIsTaken", [&](State& state) -> Got<bool> { return headless::isNameKnown(state.models, name, type); });
}

Got<ProMdl> ProMdlCopy(ProMdl model, const std::wstring& name) {
  return onModel("ProMdlCopy", model,
                 [&](State& state, Model& m) { return headless::copyModel(state.models, m.handle, name); });
}

ProError ProMdlCommonnameSet(ProMdl model, const std::wstring& name) {
  return onModel("ProMdlCommonnameSet", model, [&](State& state, Model& m) -> ProError {
    if (m.row) return ProBadInputs;
    const auto allowed = state.configuration.values(L"let_proe_rename_pdm_objects");
    if (m.document->inWorkspace && (allowed.empty() || !text::equalNoCase(allowed.front(), L"yes"))) {
      state.showMessage(m.name + L'.' + typeExtension(m.type()) +
                        L": the common name belongs to the server; let_proe_rename_pdm_objects doesn't allow a change");
      return ProGeneralError;
    }
    std::string wanted = text::toUtf8(name);
    if (m.document->record.commonName == wanted) return ProNoError;
    m.document->record.commonName = std::move(wanted);
    m.document->touch(nullptr);
    return ProNoError;
  });
}

}  // namespace creo
