// The log: one text line an event, in a file that the view of the main dialog is rebuilt from; and, much smaller,
// lines in Creo's message area.
#pragma once

#include <string>
#include <string_view>

#include "core/creo_log.h"
#include "core/log_levels.h"

namespace core {

enum class Message : int;  // core/messages.h

// Formats the line by its level and writes it; the first line after a close opens (and names) the file. Warnings and
// errors carry section, action number, group prefix, running action and running model. Lines are cut at 520 characters.
void logWrite(std::wstring_view text, int level);
// With the indent of depth; at level 0 and depth 0 the line is an action's title and becomes the running action.
void logIndented(std::wstring_view text, int level, int depth);
void logMsgId(Message message, int level, int depth);
void logMsgPlain(Message message, int level);

// The prefix stands before the text of every line until it is left.
void logEnterGroup(std::wstring_view prefix);
void logLeaveGroup(std::wstring_view prefix);
// Enters a group for as long as it lives.
class LogGroup {
 public:
  explicit LogGroup(std::wstring prefix) : prefix_(std::move(prefix)) { logEnterGroup(prefix_); }
  ~LogGroup() { logLeaveGroup(prefix_); }
  LogGroup(const LogGroup&) = delete;
  LogGroup& operator=(const LogGroup&) = delete;

 private:
  std::wstring prefix_;
};

// Every action calls it once its filter has passed.
void countAction();
int actionCount();

// Rebuilds the view from the file, which it closes; the next line opens one again. During a trigger's run it only
// closes.
void logRender();
// Marks the closed file as to be rendered.
void logReopenForRendering();
void logClearView();
// Closes the file and empties the tree.
void logCloseFile();

// What a run leaves in numbers, since the last reset: lines of each level that went to the file.
struct LogCounts {
  int errors = 0, warnings = 0;
};
LogCounts logCounts();
// How many times the file was opened, since the last reset: another number is another run's log.
int logsBegun();

// All of the log's own state as at the start of the process; for the teardown.
void logReset();

}  // namespace core
