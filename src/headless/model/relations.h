// Relations: lines that assign values to a model's parameters and dimensions.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "headless/model/expression.h"

namespace headless {

struct RelationFault {
  std::size_t line = 0;  // from 1; of a continued line the first
  std::wstring reason;
  explicit operator bool() const { return !reason.empty(); }
};
struct Assignment {
  std::string name;
  RelationValue value;
};

// A line that ends in "\" goes on in the next one; "/*" makes the rest a comment. IF, ELSE and ENDIF choose; the lines
// between SOLVE and FOR are equations, which are read but not solved.
class Relations {
 public:
  // lookup: the model's names.
  explicit Relations(RelationLookup lookup);
  Relations(const Relations&) = delete;
  Relations& operator=(const Relations&) = delete;
  // What an earlier set assigned is known to the next one. Ends at the first fault.
  RelationFault run(const std::vector<std::string>& lines);
  // The last value of each name, in the order of the first one.
  [[nodiscard]] const std::vector<Assignment>& assignments() const { return assignments_; }

  // The value of a name: what was assigned last, or the model's.
  [[nodiscard]] std::optional<RelationValue> known(std::string_view name) const { return known_(name); }
  void assign(std::string_view name, const RelationValue& value);

 private:
  // An IF that is open. holds is nothing where the condition isn't worked out.
  struct Branch {
    std::size_t line = 0;
    std::optional<bool> holds;
    bool inElse = false;
  };
  std::wstring statement(std::string_view text, std::size_t line);
  std::wstring solving(std::string_view text, std::string_view afterWord, bool isFor);
  std::wstring assignment(std::string_view text);
  void collectAssigned(std::string_view text);
  // Whether the statement runs: yes, no, or it isn't known.
  [[nodiscard]] std::optional<bool> runs() const;
  [[nodiscard]] Evaluated value(std::string_view expression) const { return evaluate(expression, known_); }

  RelationLookup model_, known_;
  std::vector<Branch> branches_;
  bool solves_ = false;
  std::vector<Assignment> assignments_;
  std::unordered_map<std::string, std::size_t> places_;  // folded names
  std::unordered_map<std::string, bool> announced_;      // folded names that some line assigns
};

}  // namespace headless
