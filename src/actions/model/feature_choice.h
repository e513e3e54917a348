// The features that an action works on.
#pragma once

#include <functional>
#include <string>

#include "actions/action.h"
#include "actions/task.h"
#include "creo/ProFeature.h"

namespace actions {

// Calls `work` with each feature of the model that `feat` chooses, and its name: "1" those of the type `feattype`, "2"
// the one with the id `featid`, "3" all, "4" the first whose name fits `featname`. Gives how many there were.
int visitChosenFeatures(const Task& task,
                        const std::function<void(const creo::ProFeature&, const std::wstring&)>& work);

// ---- what rows have in common

constexpr core::Attribute kWhichFeatures[] = {
    {.name = L"feat",
     .kind = core::Kind::word,
     .words = L"1|2|3|4",
     .need = core::Need::needed,
     .about = "which features: 1 those of feattype, 2 the one with featid, 3 all, 4 the first that fits featname"},
};
constexpr core::Attribute kChosenFeatures[] = {
    {.name = L"feattype", .kind = core::Kind::feature, .about = "a code of a feature type"},
    {.name = L"featid", .kind = core::Kind::integer, .about = "an id"},
    {.name = L"featname", .kind = core::Kind::pattern, .about = "a feature's name"},
};

}  // namespace actions
