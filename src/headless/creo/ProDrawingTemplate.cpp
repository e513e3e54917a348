#include "creo/ProDrawing.h"
#include "headless/creo/operation.h"
#include "headless/model/create.h"

namespace creo {

Got<ProMdl> ProDrawingFromTmpltCreate(const std::wstring& name, const std::wstring& templateName, ProMdl model,
                                      unsigned /*options*/) {
  return headless::operation("ProDrawingFromTmpltCreate", [&](headless::Session::State& state) -> Got<ProMdl> {
    const auto drawing = headless::createDrawing(state.models, name, templateName, model);
    if (drawing) state.raise(ProNotifyType::modelCreated, drawing.value);
    return drawing;
  });
}

}  // namespace creo
