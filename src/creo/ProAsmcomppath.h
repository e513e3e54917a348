// Places in assemblies: two occurrences of one model have two paths.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// The way from an assembly to a component: ids of component features, from the top down. Whether they are looked for
// before the path is used is the session's affair.
struct ProAsmcomppath {
  ProMdl assembly;
  std::vector<int> components;
};
// ProBadInputs: no such component in the assembly.
Got<ProAsmcomppath> ProAsmcomppathInit(ProMdl assembly, const std::vector<int>& components);
// The model at the end of a path. ProBadInputs: the assembly has gone; ProNotFound: a component on the way has, or its
// model isn't in memory.
Got<ProMdl> ProAsmcomppathMdlGet(const ProAsmcomppath& path);

}  // namespace creo
