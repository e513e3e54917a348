#include "actions/whole_model.h"

#include "core/log.h"
#include "text/format.h"

namespace actions {

void unknownWord(std::wstring_view attribute, std::wstring_view value, std::wstring_view known) {
  core::logWrite(text::format(L"'%s' can't be '%s', but %s", attribute, value, known), core::kError);
}

}  // namespace actions
