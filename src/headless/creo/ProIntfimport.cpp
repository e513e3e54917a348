// Files of other systems as models.
#include "creo/ProIntfimport.h"

#include "headless/creo/operation.h"
#include "headless/exports/exchange_tree.h"
#include "headless/exports/export_file.h"
#include "os/surroundings.h"

namespace creo {

using State = headless::Session::State;
using headless::geometry::ExchangeFormat;

Got<ProMdl> ProIntfimportModelWithOptionsCreate(const std::wstring& path, ProIntfType fileType, ProMdlType type,
                                                const std::wstring& name) {
  return headless::operation("ProIntfimportModelWithOptionsCreate", [&](State& state) -> Got<ProMdl> {
    if (type != ProMdlType::part && type != ProMdlType::assembly) return ProInvalidType;
    const std::wstring whole = headless::exportPath(state, path);
    if (!os::files().exists(whole) || os::files().isFolder(whole)) return ProNotFound;
    const auto format = fileType == ProIntfType::iges ? ExchangeFormat::iges : ExchangeFormat::step;
    const auto read = headless::geometry::readExchange(whole, format);
    if (read.root) return headless::importTree(state.models, read, name, type);
    state.showMessage(whole + L": " + read.fault);
    return ProGeneralError;
  });
}

}  // namespace creo
