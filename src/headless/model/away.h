// Documents out of memory while their models stay there. Whoever lists models, counts who uses one or holds a handle
// sees no difference; who asks a model anything has its document read again from the version that it was read from or
// saved as. So a run over any number of models needs the memory of a few, and comes to the same results.
#pragma once

#include <string>
#include <string_view>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// Nothing happens in the two where no FlatMemory lives.
// Puts documents away, those that came first first, until the files of the others hold no more than may stay; nothing
// where fewer than half as many bytes have come since the last time. Call it between operations, since who works on a
// model holds its document. No notification and no line. What stays: a model that `stays` names, and a document
// - with changes that no file has, or whose file isn't there, as behind a rename in memory,
// - of another folder than the session's own, or whose saves a backup has moved,
// - that shows what no file says: a representation, the status of a layer, the former model of a drawing's texts,
// - of a family table with instances in memory, whose rows they are, of a format, and of a PDM workspace, out of which
//   the server may take files.
void putAway(Models& models, creo::FunctionRef<bool(creo::ProMdl)> stays);
// The model will be asked for soon: where its document isn't in memory a second thread reads it meanwhile.
void readAhead(Models& models, std::wstring_view name, creo::ProMdlType type);

// False: the document is away, and names no such model.
bool maySpeakOf(const Model& model, const std::wstring& name, creo::ProMdlType type);

}  // namespace headless
