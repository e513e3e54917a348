// Macros and trail files: Creo's recorded steps. Each step that this session knows has its effect; any other is
// reported.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "headless/macros/step.h"

namespace headless {

// The steps of a text: split at ";" outside backquotes, trimmed, empty ones left out.
std::vector<std::wstring> macroSteps(std::wstring_view text);

class Macros {
 public:
  // Its steps come before all that waits: the macro that was loaded last runs first.
  void load(std::wstring_view text);
  [[nodiscard]] bool waiting() const { return !steps_.empty(); }
  // Runs one waiting step. Steps that wait behind a million others without a pause are dropped, with a line: a trail
  // file may open itself.
  void runStep(const MacroContext& context);
  // Runs the waiting steps that stand ready for a message dialog. The number of the button that they press; nothing
  // when none does.
  std::optional<int> answerMessageDialog(const std::vector<std::wstring>& buttons);
  [[nodiscard]] const std::vector<std::wstring>& ran() const { return ran_; }
  [[nodiscard]] const std::vector<std::wstring>& unknown() const { return unknown_; }
  // The tab that a drawing's control bar shows.
  [[nodiscard]] const std::wstring& pageControl() const { return pageControl_; }

 private:
  friend struct MacroRun;
  struct Waiting {
    std::wstring step;
    int depth = 0;  // 0: of a macro; 1: of a trail file that one opened; ...
  };
  void putOnTop(std::vector<Waiting> steps);
  std::deque<Waiting> steps_;
  int withoutPause_ = 0;  // steps that ran since nothing was waiting
  // The dialog that opens a trail file.
  struct TrailDialog {
    bool open = false;
    std::wstring path;
  } trailDialog_;
  std::vector<std::wstring> ran_, unknown_;
  std::unordered_set<std::wstring> reported_;
  std::wstring pageControl_ = L"page_Layout";
  DialogState dialogs_;
  std::wstring chosenRow_;  // of the parameters that a family table may take
};

}  // namespace headless
