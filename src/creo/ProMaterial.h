// Materials of parts.
#pragma once

#include "creo/ProModelitem.h"

namespace creo {

struct ProMaterial {
  ProMdl owner;
  std::wstring name;
};

// The part's current material; an instance's is the one that its row of the family table names in the column
// PTC_MATERIAL_NAME, where there is one. ProNotFound: none is set; ProBadInputs: no part.
Got<ProMaterial> ProMaterialCurrentGet(ProMdl part);
// The name alone. The same codes.
Got<std::wstring> ProPartMaterialNameGet(ProMdl part);
// Names of the materials that the part holds. ProNotFound: none; ProBadInputs: no part.
Got<std::vector<std::wstring>> ProPartMaterialsGet(ProMdl part);

// Makes a material of the part the current one. Density and appearance follow; a part of sheet metal regenerates,
// unless the option material_update_smt_bend_table says otherwise. An instance takes it for itself, in that column.
// Creo refuses a read-only part. ProNotFound: the part holds none of that name; ProGeneralError: an instance without
// such a column; ProBadInputs: no part.
ProError ProMaterialCurrentSet(const ProMaterial& material);
// Reads a material from a file of the folders that the option pro_material_dir names, without one of the working
// folder. name: without an ending; of "STEEL" the file STEEL.mtl is looked for before STEEL.mat. The part gets the
// material; one of that name that it holds becomes what the file says. ProNotFound: no such file; ProGeneralError: the
// file can't be read or says no material, the message area has the reason, and nothing has changed; ProBadInputs: no
// part, or no name of a file.
ProError ProMaterialfileRead(ProMdl part, const std::wstring& name);
// Without the current material the part has none, and its parameter PTC_MATERIAL_NAME is empty. ProNotFound: it holds
// none of that name; ProBadInputs: no part.
ProError ProMaterialDelete(const ProMaterial& material);

// The density of the current material, where none is told that of the part itself, in the part's system of units.
// ProNotFound: neither is stated; ProBadInputs: no part.
Got<double> ProPartDensityGet(ProMdl part);

}  // namespace creo
