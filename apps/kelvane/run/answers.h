// Answers to a list's questions where no person is there: those of the command line, else the start values.
#pragma once

#include <string>
#include <vector>

#include "headless/proui/ui.h"
#include "headless/session.h"
#include "kelvane/base/console.h"
#include "kelvane/run/questions.h"

namespace kelvane {

struct Answer {
  std::wstring variable;  // its case is no difference
  std::wstring value;     // a path in the system's form
};
// given: each "NAME=VALUE"; of a name that is given twice the last value counts. A Fault for a name that isn't asked
// for, a value that can't be chosen, and a question that has neither an answer nor a start value.
std::vector<Answer> answersTo(const std::vector<ListQuestion>& questions, const std::vector<std::string>& given);

// Answers the questions of a session for as long as it lives.
class Answerer {
 public:
  Answerer(headless::Session& session, const std::vector<Answer>& answers, Console& console);
  ~Answerer();
  Answerer(const Answerer&) = delete;
  Answerer& operator=(const Answerer&) = delete;
  // A question could not be answered and was cancelled; a line has told it.
  [[nodiscard]] bool troubled() const { return troubled_; }

 private:
  [[nodiscard]] const std::wstring* answer() const;
  void press(const headless::Question& question);
  // Sets the input of the dialog; false where the value can't be set.
  bool fill(const std::wstring* value);
  bool choose(const std::wstring* value);
  bool check(const std::wstring& value);
  std::optional<std::wstring> path(const headless::FileQuestion& question);
  void trouble(const std::wstring& fault);

  headless::Session& session_;
  const std::vector<Answer>& answers_;
  Console& console_;
  bool troubled_ = false;
};

}  // namespace kelvane
