// How much of its models a run keeps in memory.
#pragma once

#include "headless/model/away.h"
#include "headless/model/flat_memory.h"
#include "headless/model/models.h"
#include "headless/session.h"
#include "headless/session/windows.h"
#include "kelvane/show/model_folder.h"

namespace kelvane {

// Bytes of documents' files that stay when a model is done; their records take some five times as much. A few
// assemblies with all that they use have room, so that parts that many use aren't read again for each.
inline std::size_t documentsKept = std::size_t{4} << 20;

// What stands in no window may go; nothing works on a model meanwhile.
inline void keepMemoryFlat(headless::Session& session) {
  headless::putAway(session.models(), [&session](creo::ProMdl model) { return session.windows().shows(model); });
}

// The row's model ("SHAFT.PRT") has its turn soon.
inline void readAhead(headless::Session& session, const ModelFileName& name) {
  headless::readAhead(session.models(), name.name, name.type);
}

}  // namespace kelvane
