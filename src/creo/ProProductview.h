// Models as files of the product viewer.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

enum class ProProductviewFormat : int { ed = 0, edz = 1, pvs = 2 };
struct ProProductviewexportopts {
  ProProductviewFormat format = ProProductviewFormat::ed;
};
Got<ProProductviewexportopts> ProProductviewexportoptsAlloc();
ProError ProProductviewexportoptsFormatSet(ProProductviewexportopts& options, ProProductviewFormat format);
// Writes the model and what it is made of, as one file or several side by side. A drawing is displayed in a window.
// path: the folder, and a name of at most 31 characters. ProNoLicense: nothing of that format can be written;
// ProCantWrite.
ProError ProProductviewFormattedExport(ProMdl model, const std::wstring& path, const ProProductviewexportopts& options);
ProError ProProductviewexportoptsFree(ProProductviewexportopts& options);

}  // namespace creo
