// Components of an assembly: where they stand, and what drives those that are flexible. ProBadInputs of all: the
// feature is no component; ProNotFound: it has gone.
#pragma once

#include "creo/ProFeature.h"
#include "creo/ProTransform.h"

namespace creo {

// Does it stand where it was put, without references to others?
Got<bool> ProAsmcompIsPackaged(const ProFeature& component);
// Its axes and origin in the assembly's coordinates; of one that references hold, where it was before them.
// ProGeneralError: a number of it can't be worked out, the message area says why.
Got<ProTransform> ProAsmcompPositionGet(const ProFeature& component);
// Puts its origin elsewhere; its axes stay. It moves when the component is regenerated. Creo refuses a read-only
// assembly. ProGeneralError: references hold it; ProBadInputs also: a number isn't finite or is over 1e9.
ProError ProAsmcompOriginSet(const ProFeature& component, const ProVector& origin);

// The parameter of a flexible component that gives a varied item its value from now on. ProNotFound also: the component
// doesn't vary the item; ProBadInputs also: it has no such parameter. It can't be deleted while it drives.
ProError ProVariantfeatDriverSet(const ProFeature& component, const ProModelitem& item, const std::wstring& parameter);

}  // namespace creo
