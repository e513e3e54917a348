#include "reports/sheet/unread.h"

#include <algorithm>

#include "core/log.h"
#include "text/format.h"

namespace reports::sheet {

void Unread::note(creo::ProError code, std::wstring_view what) {
  if (code == creo::ProNoError) return;
  const auto known = std::find_if(kinds_.begin(), kinds_.end(), [&](const Kind& kind) { return kind.what == what; });
  if (known == kinds_.end())
    kinds_.push_back({what, code, 1});
  else
    ++known->count;
}

void Unread::tell() const {
  for (const Kind& kind : kinds_) {
    const std::wstring often = kind.count > 1 ? text::format(L", %d times", kind.count) : L"";
    core::logWrite(text::format(L"The sheet lacks what can't be read: %s (error %d%s)", kind.what,
                                static_cast<int>(kind.first), often),
                   core::kWarning);
  }
}

}  // namespace reports::sheet
