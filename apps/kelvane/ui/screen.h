// The person before the session: takes what is pressed in the pages, tells the pages what changes, and answers the
// session's questions by theirs. All of it on the session's thread; a run is followed from inside its operations.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "headless/proui/ui.h"
#include "headless/session.h"
#include "kelvane/ui/feed.h"
#include "kelvane/ui/inbox.h"
#include "kelvane/ui/picture.h"
#include "kelvane/ui/written.h"
#include "os/interrupt.h"

namespace kelvane::view {

class Screen : public headless::SessionObserver {
 public:
  // language: of the page's own words, "en" or "de".
  Screen(headless::Session& session, Inbox& inbox, Feed& feed, Written& written, std::string language);
  ~Screen() override;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  // Does what is pressed until a signal ends the program.
  void live();
  // Tells the pages what is new.
  void tell();
  // Runs before each command of the menu.
  std::function<void()> beforeCommand;

  // Any thread: the run that goes on ends behind the model that it works on.
  void stopRun() { stop_ = true; }

  void message(const std::wstring& text) override;
  void saved(const headless::SavedDocument& document) override;
  void renamed(const headless::RenamedDocument& model) override;
  void progress(int value, int maximum) override;
  void operation(std::string_view name, int result, long long nanoseconds) override;

 private:
  // What an action is to the question that is open.
  // Not meant for it; an answer that it can't take; all that it waits for; a press in its dialog.
  enum class Bearing { none, wrong, answer, press };
  using Judge = std::function<Bearing(const Action&)>;

  void work(const Action& action);
  // Empty, or why nothing was done.
  std::string carryOut(const Action& action);
  std::string carryOutAlone(const Action& action);
  // Takes actions until `over`, as a question blocks all that isn't its own.
  void block(json question, const Judge& judge, const std::function<bool()>& over);
  int answer(const headless::Question& question);
  std::optional<std::wstring> answerFile(const headless::FileQuestion& question);
  json picture();
  void tellSometimes();
  [[nodiscard]] bool isStopAsked() const;
  void noteOperation(std::string_view name);

  headless::Session& session_;
  Inbox& inbox_;
  Feed& feed_;
  Written& written_;
  Revisions revisions_;
  json told_;                 // the picture that the pages have
  std::size_t messages_ = 0;  // that were told
  Clock::time_point last_ = Clock::now();
  milliseconds pause_{0};  // until the next telling within an operation
  bool changed_ = true;
  int working_ = 0;         // actions and questions that are being done, one inside another
  std::vector<json> open_;  // questions, the innermost last
  std::vector<Judge> judges_;
  json notice_;
  std::uint64_t worked_ = 0;
  // What was pressed before it was meant for what stood there before a run or a question, and is dropped.
  Clock::time_point barrier_{};
  bool ran_ = false;         // the action that is being done has run a list
  bool keepsFiles_ = false;  // what is written now is a result
  std::string language_;
  std::atomic<bool> stop_ = false;
  os::InterruptSource stopQuestion_;
};

}  // namespace kelvane::view
