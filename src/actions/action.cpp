#include "actions/action.h"

namespace actions {
namespace {

// The attributes that the dispatch and the filter read.
constexpr Attribute kCommon[] = {
    {.name = L"type", .need = Need::needed, .about = "the action's key"},
    {.name = L"version", .need = Need::needed, .about = "the form of the action that the list was written for"},
    {.name = L"forPRT", .kind = Kind::flag, .words = L"true", .about = "the action works on parts"},
    {.name = L"forASM", .kind = Kind::flag, .words = L"true", .about = "the action works on assemblies"},
    {.name = L"forDRW", .kind = Kind::flag, .words = L"true", .about = "the action works on drawings"},
    {.name = L"forEF", .kind = Kind::flag, .words = L"true", .about = "the filter inside the task decides too"},
    {.name = L"deak", .kind = Kind::flag, .words = L"false", .about = "anything but false switches the action off"},
};

}  // namespace

bool isFilterTest(Test test) {
  return test == Test::filter || test == Test::filterUnlessForAll || test == Test::filterWithModel ||
         test == Test::noFilter;
}

std::span<const Attribute> commonAttributes() { return kCommon; }

const Attribute* findAttribute(const Action& action, std::wstring_view name) {
  const Attribute* own = core::findAttribute(action.attributes, name);
  return own ? own : core::findAttribute(kCommon, name);
}

}  // namespace actions
