// Solids of the session as trees that go into files of other systems, and such trees as new models.
#pragma once

#include <string_view>

#include "headless/geometry/exchange.h"
#include "headless/model/bodies.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // model/models.h

// What a solid holds, without suppressed components and skeletons; a model that is used several times is one node.
// ProNotFound: it has no geometry; ProGeneralError: a body can't be built. The message area has a line for each.
creo::Got<geometry::ExchangeNodePtr> exchangeTree(const Models& models, Bodies& bodies, const Model& solid);

// Makes models of a tree that was read for this type; creo/ProIntfimport.h has the results.
creo::Got<creo::ProMdl> importTree(Models& models, const geometry::ExchangeRead& read, std::wstring_view name,
                                   creo::ProMdlType type);

}  // namespace headless
