#include "core/log.h"

#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "core/log_silence.h"
#include "core/log_view.h"
#include "core/messages.h"
#include "core/state.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/units.h"

namespace core {
namespace {

// States of the log's file; any other value is the error of the last opening.
constexpr int kLogOpen = 0;
constexpr int kLogClosed = 1;
constexpr int kLogToRender = 50;  // closed, or still open, but to be rendered

constexpr int kDeepestIndent = 11;
constexpr int kMostLogNames = 16384;
// A line's end as in every text file of the system.
constexpr std::wstring_view kLineEnd = L"\n";

// What the log knows beside the settings.
struct Log {
  std::unique_ptr<os::Appender> file;
  int state = kLogClosed;
  std::wstring groupPrefix;
  int groupDepth = 0;
  int actionCounter = 0;
  LogCounts counts;
  int begun = 0;
  int silences = 0;
};

Log& log() {
  static Log record;
  return record;
}

std::wstring_view indent(int depth) {
  static const std::wstring blanks(2 * kDeepestIndent, L' ');
  return std::wstring_view(blanks).substr(0, static_cast<std::size_t>(2 * depth));
}

// What some program takes for the end of a line, or a terminal for a command.
bool isControl(wchar_t c) {
  return (c < 0x20 && c != L'\t') || (c >= 0x7F && c < 0xA0) || c == L'\u2028' || c == L'\u2029';
}

// One event is one line: control characters inside a text become blanks, and what is too long is cut.
std::wstring oneLine(std::wstring line) {
  for (wchar_t& c : line) {
    if (isControl(c)) c = L' ';
  }
  line.resize(text::cut(line, text::kLogLineSize - 1).size());
  return line += kLineEnd;
}

std::wstring formatted(std::wstring_view text, int level) {
  const PluginState& state = pluginState();
  switch (level) {
    case kWarning:
    case kFilterNote:
      return text::format(L"%d(WAR) %c%d %s%s - %s - %s", level, state.section, state.actionIndex, log().groupPrefix,
                          state.currentAction, state.currentModelText, text);
    case kError:
      return text::format(L"%d(ERR) %c%d %s%s - %s - %s", level, state.section, state.actionIndex, log().groupPrefix,
                          state.currentAction, state.currentModelText, text);
    case kDebug:
      return text::format(L"%d(DBG) %s", level, text);
    case kNormal:
    case kTitle:
      return text::format(L"%d %s", level, text);
    default:
      return L"MESSAGE TYPE NOT SUPPORTED";
  }
}

std::wstring userName() { return os::environment(L"username").value_or(L"nouser"); }

// The first name of this second under which no file stands.
std::wstring newLogName() {
  const std::wstring user = userName();
  const std::int64_t now = os::clock().seconds();
  std::wstring name;
  for (int i = 0; i < kMostLogNames; ++i) {
    name = i == 0 ? text::format(L"%skvd_log - %s - %lld.txt", pluginState().tempPath, user, now)
                  : text::format(L"%skvd_log - %s - %lld_%i.txt", pluginState().tempPath, user, now, i);
    if (!os::files().exists(name)) break;
  }
  return name;
}

void openFile() {
  PluginState& state = pluginState();
  if (state.forEveryRunNewLogFile == 1) state.logFile = newLogName();
  auto opened = os::files().append(state.logFile);
  ++log().begun;
  log().state = opened.error.value();
  log().file = opened ? std::move(opened.value) : nullptr;
}

// Closes the file. False: there is nothing to show.
bool closeForView() {
  if (log().state != kLogOpen && log().state != kLogToRender) return false;
  log().file.reset();
  log().state = kLogClosed;
  return true;
}

void count(int level) {
  if (level == kError) ++log().counts.errors;
  if (level == kWarning || level == kFilterNote) ++log().counts.warnings;
}

}  // namespace

void logWrite(std::wstring_view text, int level) {
  PluginState& state = pluginState();
  if (log().silences > 0 || (level == kDebug && state.noDebugInLogFile == 1)) return;
  count(level);
  const std::wstring line = oneLine(formatted(text, level));
  if (state.logToTextArea == 1) {
    logToTextArea(line, level);
    return;
  }
  if (log().state != kLogOpen || !log().file) openFile();
  std::error_code failure;
  if (log().file) failure = log().file->write(os::encoded(line, os::TextForm{.crlf = true}));
  if (log().state != kLogOpen || failure) {
    creoLog(text::format(L"<KVD> Can't open log file: %d", failure ? failure.value() : log().state));
    creoLog(state.logFile);
    creoLog(line.substr(0, line.size() - 1));
  }
}

void logIndented(std::wstring_view text, int level, int depth) {
  PluginState& state = pluginState();
  if (level == kDebug && state.noDebugInLogFile == 1) return;  // not even put together
  if (level != kTitle) ++depth;
  int total = depth + log().groupDepth;
  if (total > kDeepestIndent) {
    creoLog(L"<KVD> DEEEP FAILURE IN PROGRAM :D");
    total = kDeepestIndent;
  }
  if (total < 0) total = 0;
  if (level == kNormal && depth == 1) {
    state.currentAction = text::cut(text, text::kTextSize - 1);
    logWrite(text::format(L"%s%c%d %s%s", indent(total), state.section, state.actionIndex, log().groupPrefix, text),
             level);
  } else {
    logWrite(text::format(L"%s%s%s", indent(total), log().groupPrefix, text), level);
  }
}

void logMsgId(Message message, int level, int depth) { logIndented(msgText(message), level, depth); }
void logMsgPlain(Message message, int level) { logWrite(msgText(message), level); }

LogSilence::LogSilence() { ++log().silences; }
LogSilence::~LogSilence() { --log().silences; }
LogSound::LogSound() : silences_(std::exchange(log().silences, 0)) {}
LogSound::~LogSound() { log().silences = silences_; }

void logEnterGroup(std::wstring_view prefix) {
  log().groupPrefix.append(prefix);
  ++log().groupDepth;
}

void logLeaveGroup(std::wstring_view prefix) {
  std::wstring& whole = log().groupPrefix;
  whole.resize(whole.size() - std::min(whole.size(), prefix.size()));
  if (log().groupDepth > 0) --log().groupDepth;
}

void countAction() { ++log().actionCounter; }
int actionCount() { return log().actionCounter; }

void logReopenForRendering() { log().state = kLogToRender; }

void logRender() {
  if (closeForView()) renderLogView();
}

void logClearView() { clearLogArea(); }

void logCloseFile() {
  if (closeForView()) emptyLogTree();
}

LogCounts logCounts() { return log().counts; }
int logsBegun() { return log().begun; }

void logReset() {
  log() = Log();
  logForgetView();
}

}  // namespace core
