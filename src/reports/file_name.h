// What models and their files are called in reports.
#pragma once

#include <string>

#include "creo/ProMdl.h"

namespace reports {

// The name of an instance's immediate generic; empty for a model that is no instance.
std::wstring genericName(creo::ProMdl model);
// "BOLT_20<BOLT>.PRT" of an instance, else "BOLT.PRT".
std::wstring fileNameValue(creo::ProMdl model, const creo::ProMdlData& data);
// "d:\models\".
std::wstring folderOf(const creo::ProMdlData& data);
// The path of the stored file; empty where it can't be found.
std::wstring storedFile(const creo::ProMdlData& data);

}  // namespace reports
