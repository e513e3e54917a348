#include "creo/ProProductview.h"

#include "headless/creo/operation.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

Got<ProProductviewexportopts> ProProductviewexportoptsAlloc() {
  return operation("ProProductviewexportoptsAlloc",
                   [](State&) -> Got<ProProductviewexportopts> { return ProProductviewexportopts{}; });
}

ProError ProProductviewexportoptsFormatSet(ProProductviewexportopts& options, ProProductviewFormat format) {
  return operation("ProProductviewexportoptsFormatSet", [&](State&) -> ProError {
    options.format = format;
    return ProNoError;
  });
}

// No open library writes the viewer's formats.
ProError ProProductviewFormattedExport(ProMdl model, const std::wstring&, const ProProductviewexportopts&) {
  return onModel("ProProductviewFormattedExport", model, [](State&, Model&) -> ProError { return ProNoLicense; });
}

ProError ProProductviewexportoptsFree(ProProductviewexportopts& options) {
  return operation("ProProductviewexportoptsFree", [&](State&) -> ProError {
    options = {};
    return ProNoError;
  });
}

}  // namespace creo
