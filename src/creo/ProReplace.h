// Models that others use, replaced and taken away.
#pragma once

#include "creo/ProMdl.h"

namespace creo {

// All components of an assembly that are the model `from`, which needn't be in memory, become `to` and stand where they
// stood; the assembly needs a regeneration. Columns of its family table that are called by them follow. ProNotFound:
// there is no such component; ProInvalidType: `to` is the assembly itself or uses it; ProBadInputs: the model is no
// assembly or an instance, or `to` is no solid; ProGeneralError: `to` can't take the place without new constraints, as
// it may be where both are of no common family table and no interchange assembly in memory has both.
ProError ProAsmcompsReplace(ProMdl assembly, const ProDependency& from, ProMdl to);
// The drawing shows `to` in place of `from`, which are of one family table: views, the current model, the number in
// texts. Shown dimensions stay where `to` has one of that id. ProNotFound: it has no model `from`; ProExists: `to` is
// one of its models; ProBadInputs: the model is no drawing, or `to` is no solid; ProGeneralError: they are of no common
// family table.
ProError ProDrawingSolidReplace(ProMdl drawing, const ProDependency& from, ProMdl to);

// What in a drawing refers to one of its models.
enum class ProDrawingModelUse { none, view, text };
// text: no view shows the model, but a table's repeat region or a numbered text ("&model_name:2") refers to it.
// ProNotFound, here and below: the drawing has no such model, in memory or not.
Got<ProDrawingModelUse> ProDrawingModelUseGet(ProMdl drawing, const ProDependency& model);
// Takes a model from the drawing, with the dimensions that it shows of it; regions and texts with the numbers of later
// models follow. ProExists: something refers to it.
ProError ProDrawingModelDelete(ProMdl drawing, const ProDependency& model);

}  // namespace creo
