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

// Before all else, once a model.
ProError ProExtdataInit(ProMdl model);
// The data doesn't come with the model: this brings all of it, once, where each reading would bring its own piece.
ProError ProExtdataLoadAll(ProMdl model);
// ProBadInputs: the class exists (address it by name and model). ProGeneralError: the name is too long; class and slot
// have 30 characters together.
Got<ProExtdataClass> ProExtdataClassRegister(ProMdl model, const std::wstring& name);
// ProBadInputs: the slot exists. ProGeneralError: the name begins with a digit or is too long (see above), or the model
// has no place for another slot. ProNotFound: no such class.
ProError ProExtdataSlotCreate(const ProExtdataClass& cls, const std::wstring& slot);
// ProNotFound: no such slot, or nothing was written to it.
Got<ProExtdataValue> ProExtdataSlotRead(const ProExtdataClass& cls, const std::wstring& slot);
// Kept when the model is saved. size: counts for streams alone, so whoever writes a text cuts it before. ProNotFound:
// no such slot.
ProError ProExtdataSlotWrite(const ProExtdataClass& cls, const std::wstring& slot, const ProExtdataValue& value,
                             std::size_t size);

}  // namespace creo
