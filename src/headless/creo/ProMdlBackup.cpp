#include "creo/ProMdlBackup.h"

#include "headless/creo/operation.h"
#include "headless/model/one_version.h"
#include "headless/store/faults.h"
#include "headless/store/given_numbers.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/numbers.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

namespace {

constexpr int kMostTries = 1000;

// Later saves go to that folder, which has the document as that version. One that was never saved still comes from
// nowhere.
void moveSaves(headless::ModelDocument& document, const std::wstring& folder, int version) {
  headless::handOut(document);
  document.moved = {folder, version};
}

}  // namespace

Got<std::wstring> ProMdlnameBackup(ProMdl model, const std::wstring& folder) {
  return onModel("ProMdlnameBackup", model, [&](State& state, Model& m) -> Got<std::wstring> {
    const std::wstring target = folder.empty() ? state.models.folders().working() : os::asFolder(folder);
    if (!os::files().isFolder(target)) return ProNotFound;
    headless::Folder& there = state.models.folders().store().folder(target);
    const headless::DocumentFile* newest = there.find(m.document->name, m.type());
    int version = headless::GivenNumbers::next(target, m.document->name, m.type(), newest ? newest->version : 0);
    const auto text = state.models.documentText(m.handle);
    if (!text) return text.error;
    // Someone else may have taken a name meanwhile; a dry run has taken names that the folder doesn't show.
    std::wstring path;
    std::error_code error;
    for (int tries = 0; tries < kMostTries; ++tries, ++version) {
      path = target + headless::documentFileName(*m.document, version);
      error = os::files().create(path, text.value);
      if (error != std::errc::file_exists) break;
    }
    if (!error) {
      state.models.folders().store().wrote(
          there, {m.document->name, m.type(), version, headless::documentFileName(*m.document, version)}, text.value);
      moveSaves(*m.document, there.path(), version);
      return path;
    }
    state.showMessage(headless::cantWrite(path, error));
    return ProCantWrite;
  });
}

}  // namespace creo
