#include "creo/ProDrawing.h"
#include "headless/creo/operation.h"

namespace creo {

Got<ProMdl> ProDrawingFromTmpltCreate(const std::wstring& name, const std::wstring& templateName, ProMdl model,
                                      unsigned /*options*/) {
  return headless::operation("ProDrawingFromTmpltCreate", [&](headless::Session::State& state) -> Got<ProMdl> {
    const auto drawing = state.models.createDrawing(name, templateName, model);
    if (!drawing) return drawing;
    headless::Event created;
    created.notification.type = ProNotifyType::modelCreated;
    created.notification.model = drawing.value;
    created.notification.name = state.models.find(drawing.value)->name;
    created.notification.typeText = typeExtension(ProMdlType::drawing);
    state.events.queue(std::move(created));
    return drawing;
  });
}

}  // namespace creo
