// Models as files of other systems: solids as neutral solids, drawings as exchange drawings. A path that isn't whole is
// taken from the working folder; its folder must be there. An old file is replaced once the new one is whole.
#pragma once

#include <string_view>

#include "creo/ProTypes.h"

namespace creo {

// The format of a file of solids; of the numbers, iges alone is one that others see.
enum class ProIntfFormat : int { iges = 4, step = 5, sat = 6 };
// How an assembly becomes files: all in one without structure, with its structure, or a file for each part with one
// that holds them together.
enum class ProOutputAssemblyConfiguration : int { flatFile = 0, singleFile = 1, multiFiles = 2 };

// What the format can hold, to be asked before the writing, which fails otherwise; whether this session can write it is
// told by the writing.
Got<bool> ProOutputAssemblyConfigurationIsSupported(ProIntfFormat format, ProOutputAssemblyConfiguration configuration);

// What is written of a solid.
struct ProOutputBrepRepresentation {
  bool wireframe = false, surfaces = false, solids = false, quilts = false;
};
// Nothing is written at first; to be freed. The flags may be any: whether a format holds them is asked apart.
Got<ProOutputBrepRepresentation> ProOutputBrepRepresentationAlloc();
ProError ProOutputBrepRepresentationFlagsSet(ProOutputBrepRepresentation& representation, bool wireframe, bool surfaces,
                                             bool solids, bool quilts);
// None at all, or a mixture that the format can't hold, isn't supported.
Got<bool> ProOutputBrepRepresentationIsSupported(ProIntfFormat format,
                                                 const ProOutputBrepRepresentation& representation);
ProError ProOutputBrepRepresentationFree(ProOutputBrepRepresentation& representation);

// Which layers are written, and under which numbers; this system leaves them as the session has them: all.
struct ProOutputLayerOptions {};
Got<ProOutputLayerOptions> ProOutputLayerOptionsAlloc();
ProError ProOutputLayerOptionsFree(ProOutputLayerOptions& options);

// What is appended to the names of such files.
constexpr std::wstring_view kStepExtension = L".stp", kIgesExtension = L".igs", kSatExtension = L".sat";
// Writes a part or an assembly. path: without extension, the format's own is appended; the folder of a path that isn't
// whole is the working one. Several files lie side by side. ProInvalidType: another model; ProNoLicense: nothing of
// that format can be written; ProCantWrite: the file, the message area says why; ProGeneralError: the solid can't be
// written in that format.
ProError ProIntf3DFileWrite(ProMdl solid, ProIntfFormat format, const std::wstring& path,
                            ProOutputAssemblyConfiguration configuration,
                            const ProOutputBrepRepresentation& representation, const ProOutputLayerOptions& layers);
// The same by the profile that the format's option names ("export_profiles_step").
ProError ProIntf3DFileWriteWithDefaultProfile(ProMdl solid, ProIntfFormat format, const std::wstring& path);

// ---- drawings

enum class Pro2dFormat : int { dxf = 9, dwg = 10 };
// What of a drawing goes into the file: all sheets side by side, or the current one. Creo's numbers.
enum class Pro2dSheets : int { all = 0, currentAsModel = 1, currentAsSheet = 2 };
struct Pro2dExportdata {
  Pro2dSheets sheets = Pro2dSheets::currentAsModel;
};
Got<Pro2dExportdata> Pro2dExportdataAlloc();
ProError Pro2dExportdataSheetoptionSet(Pro2dExportdata& data, Pro2dSheets sheets);
// Writes the drawing. name: the file's, without extension, which the format gives; in the working folder unless it is a
// whole path. ProBadInputs for a name that can't be a file's; ProInvalidType: no drawing; ProNoLicense: nothing of that
// format can be written; ProCantWrite: the file, the message area says why.
ProError Pro2dExport(Pro2dFormat format, const std::wstring& name, ProMdl drawing, const Pro2dExportdata& data);
ProError Pro2dExportdataFree(Pro2dExportdata& data);

}  // namespace creo
