// How much of its models a run keeps in memory.
#pragma once

#include "headless/model/away.h"
#include "headless/model/flat_memory.h"
#include "headless/model/models.h"
#include "headless/session.h"
#include "headless/session/windows.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {

// Bytes of documents' files that stay when a model is done; their records take some five times as much. An
// assembly with all that it uses has room, so that parts that many use aren't read again for each. With more the memory
// of what goes lies in holes between what stays, and each model of a long run takes more of it.
inline std::size_t documentsKept = std::size_t{1} << 20;

// What stands in no window may go; nothing works on a model meanwhile.
inline void keepMemoryFlat(headless::Session& session) {
  headless::putAway(session.models(), [&session](creo::ProMdl model) { return session.windows().shows(model); });
}

// The row's model ("SHAFT.PRT") has its turn soon.
inline void readAhead(headless::Session& session, const ModelFileName& name) {
  headless::readAhead(session.models(), name.name, name.type);
}

}  // namespace kelvane
