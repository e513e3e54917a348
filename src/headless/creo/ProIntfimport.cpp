// Files of other systems as models.
#include "creo/ProIntfimport.h"

#include "headless/creo/operation.h"
#include "headless/exports/exchange_tree.h"
#include "headless/exports/export_file.h"
#include "os/surroundings.h"
#include "text/letters.h"

namespace creo {

using State = headless::Session::State;
using headless::geometry::ExchangeFormat;
using headless::geometry::ImportAs;

Got<ProMdl> ProIntfimportModelWithOptionsCreate(const std::wstring& path, ProIntfType fileType, ProMdlType type,
                                                const std::wstring& name) {
  return headless::operation("ProIntfimportModelWithOptionsCreate", [&](State& state) -> Got<ProMdl> {
    if (type != ProMdlType::part && type != ProMdlType::assembly) return ProInvalidType;
    if (!headless::isWholePath(path) || !text::isModelName(name)) return ProBadInputs;
    const std::wstring whole = headless::exportPath(state.models, path);
    if (!os::files().exists(whole) || os::files().isFolder(whole)) return ProNotFound;
    const auto format = fileType == ProIntfType::iges ? ExchangeFormat::iges : ExchangeFormat::step;
    const auto as = type == ProMdlType::part ? ImportAs::part : ImportAs::assembly;
    const auto read = headless::geometry::readExchange(whole, format, as);
    const std::wstring about = L"import of " + whole + L": ";
    for (const std::wstring& warning : read.warnings)
      state.showMessage(std::wstring(L"warning: ").append(about).append(warning));
    if (!read.root) state.showMessage(about + read.fault);
    if (!read.root) return ProGeneralError;
    return headless::importTree(state.models, read, name, type);
  });
}

}  // namespace creo
