// External data of a model; an instance's lies in its row. Names of classes and slots are compared case-blind.
#pragma once

#include "creo/ProExtdata.h"
#include "headless/model/model.h"

namespace headless {

// The results are those of the operations in creo/ProExtdata.h. ProNotFound also for a class that isn't there.
creo::ProError registerClass(Model& model, const std::wstring& name);
creo::ProError createSlot(Model& model, const std::wstring& name, const std::wstring& slot);
creo::Got<creo::ProExtdataValue> readSlot(Model& model, const std::wstring& name, const std::wstring& slot);
creo::ProError writeSlot(Model& model, const std::wstring& name, const std::wstring& slot,
                         const creo::ProExtdataValue& value);

}  // namespace headless
