// Relations: lines that assign values to a model's parameters and dimensions.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
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
  std::size_t line = 0;  // of the last one that assigns it
};

// A set of relations. A line that ends in "\" goes on in the next one; "/*" makes the rest a comment. IF, ELSE and
// ENDIF choose: what isn't chosen must be readable, its values may be any, and a name for which exists("...") asks
// somewhere in the set may be missing. The lines between SOLVE and FOR are equations, which are read but not solved.
class Relations {
 public:
  // lookup: the names from outside; ofModel as of evaluate.
  explicit Relations(RelationLookup lookup, RelationCall ofModel = nullptr);
  Relations(const Relations&) = delete;
  Relations& operator=(const Relations&) = delete;
  // Once. Ends at the first fault.
  RelationFault run(const std::vector<std::string>& lines);
  // The last value of each name, in the order of the first one.
  [[nodiscard]] const std::vector<Assignment>& assignments() const { return assignments_; }
  // Of lines that surely ran: what wasn't worked out in them, in their order.
  struct Unworked {
    std::size_t line = 0;
    std::string name;
  };
  [[nodiscard]] const std::vector<Unworked>& unworked() const { return unworked_; }
  // Folded names that some line assigns, whether it was chosen or not.
  [[nodiscard]] const std::unordered_set<std::string>& announced() const { return announced_; }

 private:
  // An IF that is open. holds is nothing where the condition isn't worked out.
  struct Branch {
    std::size_t line = 0;
    std::optional<bool> holds;
    bool inElse = false;
  };
  std::wstring statement(std::string_view text);
  std::wstring solving(std::string_view text, std::string_view afterWord, bool isFor);
  std::wstring assignment(std::string_view text);
  void collectAssigned(std::string_view text);
  void collectGuarded(std::string_view text);
  void assign(std::string_view name, RelationValue value);
  // The fault of what a statement worked out; one of its values counts only where the statement surely runs, and so
  // does that it isn't worked out.
  [[nodiscard]] std::wstring counted(Evaluated evaluated);
  // Whether the statement runs: yes, no, or it isn't known.
  [[nodiscard]] std::optional<bool> runs() const;
  [[nodiscard]] Evaluated value(std::string_view expression) const {
    return evaluate(expression, known_, &guarded_, ofModel_);
  }

  RelationLookup outside_, known_;
  RelationCall ofModel_;
  std::vector<Branch> branches_;
  std::size_t line_ = 0;  // of the statement
  bool solves_ = false;
  std::vector<Assignment> assignments_;
  std::vector<Unworked> unworked_;
  std::unordered_map<std::string, std::size_t> places_;  // folded names
  std::unordered_set<std::string> announced_, guarded_;
};

}  // namespace headless
