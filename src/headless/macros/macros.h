// Macros: Creo's recorded steps. Each step that this session knows has its effect; any other is reported.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace headless {

class Session;

// The steps of a text: split at ";" outside backquotes, trimmed, empty ones left out.
std::vector<std::wstring> macroSteps(std::wstring_view text);

class Macros {
 public:
  void load(std::wstring_view text);
  [[nodiscard]] bool waiting() const { return !steps_.empty(); }
  // Runs one waiting step.
  void runStep(Session& session);
  [[nodiscard]] const std::vector<std::wstring>& ran() const { return ran_; }
  [[nodiscard]] const std::vector<std::wstring>& unknown() const { return unknown_; }
  // The tab that a drawing's control bar shows.
  [[nodiscard]] const std::wstring& pageControl() const { return pageControl_; }

 private:
  friend struct MacroRun;
  std::deque<std::wstring> steps_;
  std::vector<std::wstring> ran_, unknown_;
  std::unordered_set<std::wstring> reported_;
  std::wstring pageControl_ = L"page_Layout";
  std::wstring chosenRow_;  // of the parameters that a family table may take
};

}  // namespace headless
