#include "trace/refused.h"

#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "trace/entered.h"

namespace trace {

std::wstring refusalOf(const os::Asked& asked) {
  const bool isPath = asked.need.permission == os::Permission::read || asked.need.permission == os::Permission::write;
  const std::size_t blank = asked.what.find(L' ');
  if (!isPath || blank == asked.what.npos) return asked.what;
  return asked.what.substr(0, blank + 1) + os::mounts().system(text::toUtf8(asked.what.substr(blank + 1)));
}

void tellRefused(const os::Asked& asked, void (*tell)(const os::Asked&)) {
  Tape* const tape = Tape::current();
  if (!tape || tape->plays()) return tell(asked);
  Line line;
  line.word("refused");
  line.text(refusalOf(asked));
  line.text(asked.what);
  line.text(asked.reason);
  enteredOn(*tape, line, [&] { tell(asked); });
}

os::Asked readRefused(Reading& arguments) {
  os::Asked asked;
  (void)arguments.text();  // of other folders
  asked.what = arguments.text();
  asked.reason = arguments.text();
  return asked;
}

bool isRefused(Player& player, const os::Asked& asked) {
  Line line;
  line.word("+");
  line.word("refused");
  line.text(refusalOf(asked));
  return player.callIfNext(line.str());
}

}  // namespace trace
