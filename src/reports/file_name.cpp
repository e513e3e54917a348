#include "reports/file_name.h"

#include "creo/ProFamtable.h"
#include "os/surroundings.h"
#include "text/format.h"

namespace reports {

std::wstring genericName(creo::ProMdl model) {
  const auto generic = creo::ProFaminstanceGenericGet(model, true);
  if (generic) return creo::ProMdlNameGet(generic.value).value;
  // An immediate generic that isn't in memory has its name all the same.
  return generic.error == creo::ProNotFound ? std::wstring()
                                            : creo::ProFaminstanceImmediategenericinfoGet(model).value.name;
}

std::wstring fileNameValue(creo::ProMdl model, const creo::ProMdlData& data) {
  const std::wstring generic = genericName(model);
  return data.name + (generic.empty() ? L"" : L"<" + generic + L">") + L"." + data.type;
}

std::wstring folderOf(const creo::ProMdlData& data) {
  const bool wantsColon = !data.device.empty() && !data.device.ends_with(L':');
  return data.device + (wantsColon ? L":" : L"") + data.path;
}

std::wstring storedFile(const creo::ProMdlData& data) {
  std::wstring file = folderOf(data) + data.name + L"." + data.type;
  // A file without a number has version 0 here, 1 in Creo.
  if (data.version <= 1 && os::files().exists(file)) return file;
  std::wstring numbered = file + text::format(L".%d", data.version);
  return os::files().exists(numbered) ? numbered : std::wstring();
}

}  // namespace reports
