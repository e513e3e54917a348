#include "creo/ProProgram.h"

#include "headless/creo/program_file.h"
#include "headless/creo/solid_operation.h"
#include "headless/model/program.h"
#include "os/paths.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/pieces.h"

namespace creo {

using headless::Model;
using headless::onSolid;
using State = headless::Session::State;

ProError ProOutputFileWrite(ProMdl solid, const std::wstring& path, ProInputFileType type) {
  return onSolid("ProOutputFileWrite", solid, [&](State& state, Model& m) -> ProError {
    const bool hasProgram = m.type() == ProMdlType::part || m.type() == ProMdlType::assembly;
    if (!hasProgram || type != ProInputFileType::program) return ProBadInputs;
    const headless::HeldProgram program = headless::programText(m);
    if (program.fault) {
      state.showMessage(
          text::format(L"%s: program line %d: %s", m.name, static_cast<int>(program.fault.line), program.fault.reason));
      return ProGeneralError;
    }
    std::wstring content;
    for (const std::string& line : program.text) content += text::fromUtf8(line) + L'\n';
    const bool isWhole = !os::splitDevice(path).device.empty() || path.starts_with(L'\\') || path.starts_with(L'/');
    const std::wstring whole = isWhole ? path : os::joined(state.models.folders().working(), path);
    const auto error = os::writeText(whole, content, {.mark = true, .crlf = true});
    if (!error) return ProNoError;
    state.showMessage(text::format(L"%s can't be written: %s", path, text::fromUtf8(error.message())));
    return ProGeneralError;
  });
}

}  // namespace creo

namespace headless {

creo::ProError readProgram(Session::State& state, creo::ProMdl solid, const std::wstring& path,
                           const std::wstring& content) {
  const Model* model = state.models.find(solid);
  if (!model || model->type() == creo::ProMdlType::drawing) return creo::ProBadInputs;
  ProgramText lines;
  // The mark that a writer put at the start is no part of the first line.
  const std::wstring_view text = std::wstring_view(content).substr(content.starts_with(L'\xFEFF') ? 1 : 0);
  for (const std::wstring& line : text::lines(text)) lines.push_back(text::toUtf8(line));
  const ProgramFault fault = takeProgram(state.models, *model, lines);
  if (!fault) return creo::ProNoError;
  state.showMessage(text::format(L"%s:%d: %s", path, static_cast<int>(fault.line), fault.reason));
  return creo::ProGeneralError;
}

}  // namespace headless
