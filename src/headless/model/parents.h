// Parents and children: the features that a feature refers to, and those that refer to it.
#pragma once

#include <string>
#include <vector>

#include "headless/model/features.h"

namespace headless {

// The features with all that refers to them, by whatever way, each once.
std::vector<int> withChildren(const Model& solid, const std::vector<int>& features);
// The features that refer to one, in the order of the tree.
std::vector<int> childrenOf(const Model& solid, int feature);

// What the feature has lost of what it refers to, such as "refers to the feature RIB, which is suppressed". Empty:
// nothing.
std::wstring lostReference(const ModelFeature& feature);
// Has the feature all that it refers to, and that what it refers to in turn?
bool keepsParents(const ModelFeature& feature);

}  // namespace headless
