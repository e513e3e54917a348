// Features that go for good.
#pragma once

#include <unordered_set>

#include "headless/model/model.h"

namespace headless {

// Takes what has gone out of layers and simplified representations; dimensions are no reference dimensions.
void dropReferences(ModelRecord& record, const std::unordered_set<int>& features,
                    const std::unordered_set<int>& dimensions);

// Takes features and components out of a solid, with what is theirs: dimensions, columns of the family table, places in
// layers and simplified representations, pieces of the body. Ids that no feature has are passed over.
void removeFeatures(const Model& solid, const std::unordered_set<int>& ids);

}  // namespace headless
