#include "creo/ProDrawing.h"
#include "headless/creo/operation.h"

namespace creo {

Got<ProMdl> ProDrawingFromTmpltCreate(const std::wstring& name, const std::wstring& templateName, ProMdl model,
                                      unsigned /*options*/) {
  return headless::operation("ProDrawingFromTmpltCreate", [&](headless::Session::State& state) -> Got<ProMdl> {
    const auto drawing = state.models.createDrawing(name, templateName, model);
    if (drawing) state.raise(ProNotifyType::modelCreated, drawing.value);
    return drawing;
  });
}

}  // namespace creo
