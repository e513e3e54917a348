#include "core/dialogs.h"

#include "creo/ProUI.h"

namespace core {

creo::ProError createDialog(const std::string& dialog, const std::string& resource) {
  const creo::ProError created = creo::ProUIDialogCreate(dialog, resource);
  if (created == creo::ProNoError || creo::ProUIDialogDestroy(dialog) != creo::ProNoError) return created;
  return creo::ProUIDialogCreate(dialog, resource);
}

}  // namespace core
