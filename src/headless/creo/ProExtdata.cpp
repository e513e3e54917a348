#include "creo/ProExtdata.h"

#include "headless/creo/operation.h"
#include "headless/model/external_data.h"

namespace creo {

using headless::Model;
using headless::onModel;
using State = headless::Session::State;

ProError ProExtdataInit(ProMdl model) {
  return onModel("ProExtdataInit", model, [](State&, Model&) { return ProNoError; });
}

ProError ProExtdataLoadAll(ProMdl model) {
  return onModel("ProExtdataLoadAll", model, [](State&, Model&) { return ProNoError; });
}

Got<ProExtdataClass> ProExtdataClassRegister(ProMdl model, const std::wstring& name) {
  return onModel("ProExtdataClassRegister", model, [&](State&, Model& m) -> Got<ProExtdataClass> {
    if (const ProError error = headless::registerClass(m, name)) return error;
    return ProExtdataClass{name, m.handle};
  });
}

ProError ProExtdataSlotCreate(const ProExtdataClass& cls, const std::wstring& slot) {
  return onModel("ProExtdataSlotCreate", cls.model,
                 [&](State&, Model& m) { return headless::createSlot(m, cls.name, slot); });
}

Got<ProExtdataValue> ProExtdataSlotRead(const ProExtdataClass& cls, const std::wstring& slot) {
  return onModel("ProExtdataSlotRead", cls.model,
                 [&](State&, Model& m) { return headless::readSlot(m, cls.name, slot); });
}

ProError ProExtdataSlotWrite(const ProExtdataClass& cls, const std::wstring& slot, const ProExtdataValue& value,
                             std::size_t /*of streams alone*/) {
  return onModel("ProExtdataSlotWrite", cls.model,
                 [&](State&, Model& m) { return headless::writeSlot(m, cls.name, slot, value); });
}

}  // namespace creo
