// External data: an application's own data inside a model, in classes of named slots.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

enum class ProExtdataType : int { integer = 1, text = 3 };
struct ProExtdataValue {
  ProExtdataType type = ProExtdataType::integer;
  int integer = 0;
  std::wstring text;
};
// A class of a model, addressed by name.
struct ProExtdataClass {
  std::wstring name;
  ProMdl model;
};

ProError ProExtdataInit(ProMdl model);
ProError ProExtdataLoadAll(ProMdl model);
// ProBadInputs: the class exists (address it by name and model).
Got<ProExtdataClass> ProExtdataClassRegister(ProMdl model, const std::wstring& name);
// ProBadInputs: the slot exists.
ProError ProExtdataSlotCreate(const ProExtdataClass& cls, const std::wstring& slot);
// ProNotFound: no such slot, or nothing was written to it.
Got<ProExtdataValue> ProExtdataSlotRead(const ProExtdataClass& cls, const std::wstring& slot);
// ProNotFound: no such slot. Texts keep at most `size` characters, the closing zero included.
ProError ProExtdataSlotWrite(const ProExtdataClass& cls, const std::wstring& slot, const ProExtdataValue& value,
                             std::size_t size);

}  // namespace creo
