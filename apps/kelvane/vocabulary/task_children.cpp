#include "kelvane/vocabulary/task_children.h"

#include <algorithm>

namespace kelvane {
namespace {

using What = TaskChildren::What;

constexpr TaskChildren kChildren[] = {
    {.key = L"groupActions",
     .what = What::tasks,
     .element = "subtasks",
     .isNeeded = true,
     .about = "the tasks of the group",
     .example =
         R"(<subtasks><task type="saveModel" version="3" forPRT="true" forASM="true" forDRW="true"/></subtasks>)"},
    {.key = L"reportUniversal",
     .what = What::lastFilter,
     .element = "reportFilter",
     .isNeeded = true,
     .about = "the filter whose answer is reported, with switches and items as a task's",
     .example = R"(<reportFilter forPRT="true" forASM="true" forDRW="true" forEF="false"/>)"},
    {.key = L"editSimpRep",
     .what = What::filters,
     .element = "insideFilter",
     .isNeeded = false,
     .about = "filters that a component's model must pass, with switches and items as a task's",
     .example = {}},
    {.key = L"setConfigOption",
     .what = What::options,
     .element = "option",
     .isNeeded = false,
     .about = "one for each option: that of number N has the attributes name_N and value_N",
     .example = R"(<option name_0="mass_property_calculate" value_0="automatic"/>)"},
    {.key = L"saveConfigOptions",
     .what = What::options,
     .element = "option",
     .isNeeded = false,
     .about = "one for each option: that of number N has the attribute name_N",
     .example = R"(<option name_0="mass_property_calculate"/>)"},
};

}  // namespace

const TaskChildren* childrenOf(std::wstring_view key) {
  const auto* found = std::find_if(std::begin(kChildren), std::end(kChildren),
                                   [key](const TaskChildren& row) { return row.key == key; });
  return found == std::end(kChildren) ? nullptr : found;
}

}  // namespace kelvane
