#include "headless/model/relations.h"

#include "headless/store/names.h"

namespace headless {
namespace {

// A line without its comment and without blanks around it.
std::string_view statementOf(std::string_view line) {
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (quote != 0) {
      if (line[i] == quote) quote = 0;
    } else if (line[i] == '"' || line[i] == '\'') {
      quote = line[i];
    } else if (line.substr(i, 2) == "/*") {
      line = line.substr(0, i);
    }
  }
  skipBlanks(line);
  const auto last = line.find_last_not_of(" \t\r");
  return line.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

struct Statement {
  std::string text;
  std::size_t line = 0;
};
// Continued lines are put together; empty ones are left out.
std::vector<Statement> statementsOf(const std::vector<std::string>& lines) {
  std::vector<Statement> statements;
  bool continued = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string_view text = statementOf(lines[i]);
    if (!continued) statements.push_back({{}, i + 1});
    continued = text.ends_with('\\');
    if (continued) text.remove_suffix(1);
    statements.back().text.append(text);
    if (!continued && statements.back().text.empty()) statements.pop_back();
  }
  if (continued && statements.back().text.empty()) statements.pop_back();
  return statements;
}

// Where an equation's "=" stands; npos for none. Comparisons and texts are passed over.
std::size_t equalsAt(std::string_view text) {
  char quote = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '=') {
      const bool compares =
          (i > 0 && std::string_view("<>!~").find(text[i - 1]) != std::string_view::npos) || text.substr(i, 2) == "==";
      if (!compares) return i;
      if (text.substr(i, 2) == "==") ++i;
    }
  }
  return std::string_view::npos;
}

// The name that a statement assigns; empty for none. rest: what follows the "=".
std::string_view assignedName(std::string_view text, std::string_view& rest) {
  skipBlanks(text);
  if (text.starts_with('$')) text.remove_prefix(1);
  const std::string_view name = takeName(text);
  skipBlanks(text);
  if (name.empty() || !text.starts_with('=') || text.starts_with("==")) return {};
  rest = text.substr(1);
  return name;
}

}  // namespace

Relations::Relations(RelationLookup lookup, RelationCall ofModel)
    : outside_(std::move(lookup)), ofModel_(std::move(ofModel)) {
  known_ = [this](std::string_view name) -> std::optional<RelationValue> {
    const std::string key = folded(name);
    if (const auto place = places_.find(key); place != places_.end()) return assignments_[place->second].value;
    if (auto outside = outside_(name)) return outside;
    if (announced_.contains(key)) return std::optional<RelationValue>(std::in_place);
    return {};
  };
}

RelationFault Relations::run(const std::vector<std::string>& lines) {
  const std::vector<Statement> statements = statementsOf(lines);
  for (const Statement& entry : statements) {
    collectAssigned(entry.text);
    collectGuarded(entry.text);
  }
  for (const Statement& item : statements) {
    line_ = item.line;
    if (std::wstring reason = statement(item.text); !reason.empty()) return {item.line, std::move(reason)};
  }
  if (!branches_.empty()) return {branches_.back().line, L"IF without ENDIF"};
  if (solves_) return {statements.back().line, L"SOLVE without FOR"};
  return {};
}

// A name may be read before the line that assigns it, as long as some line does.
void Relations::collectAssigned(std::string_view text) {
  std::string_view rest;
  if (const std::string_view name = assignedName(text, rest); !name.empty()) announced_.insert(folded(name));
  const std::string_view word = takeName(text);
  if (!sameName(word, "FOR")) return;
  for (skipBlanks(text); !text.empty(); skipBlanks(text)) {
    const std::string_view name = takeName(text);
    if (name.empty())
      text.remove_prefix(1);
    else
      announced_.insert(folded(name));
  }
}

// The names in exists("NAME").
void Relations::collectGuarded(std::string_view text) {
  static const std::string word = folded("exists");
  const std::string all = folded(text);
  for (std::size_t at = all.find(word); at != std::string::npos; at = all.find(word, at + 1)) {
    std::string_view rest = std::string_view(all).substr(at + word.size());
    skipBlanks(rest);
    if (!rest.starts_with('(')) continue;
    rest.remove_prefix(1);
    skipBlanks(rest);
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) continue;
    const auto close = rest.find(rest.front(), 1);
    if (close != std::string_view::npos) guarded_.emplace(rest.substr(1, close - 1));
  }
}

std::wstring Relations::statement(std::string_view text) {
  std::string_view rest = text;
  const std::string_view word = takeName(rest);
  skipBlanks(rest);
  const bool bare = rest.empty();
  if (solves_ || (bare && sameName(word, "SOLVE"))) return solving(text, rest, sameName(word, "FOR"));
  if (sameName(word, "IF") && !rest.starts_with('=')) {
    Evaluated condition = value(rest);
    if (std::holds_alternative<std::string>(condition.value)) condition = {{}, L"a text is neither yes nor no", true};
    const auto holds = truth(condition.value);
    std::wstring fault = counted(std::move(condition));
    branches_.push_back({line_, holds, false});
    return fault;
  }
  if (bare && sameName(word, "ELSE")) {
    if (branches_.empty() || branches_.back().inElse) return L"ELSE without IF";
    branches_.back().inElse = true;
    if (auto& holds = branches_.back().holds) holds = !*holds;
    return {};
  }
  if (bare && sameName(word, "ENDIF")) {
    if (branches_.empty()) return L"ENDIF without IF";
    branches_.pop_back();
    return {};
  }
  return assignment(text);
}

std::wstring Relations::solving(std::string_view text, std::string_view afterWord, bool isFor) {
  if (!solves_) {
    solves_ = true;
    return {};
  }
  if (isFor) {
    solves_ = false;
    if (runs().value_or(false)) unworked_.push_back({line_, "SOLVE"});
    return afterWord.empty() ? L"FOR names nothing to solve for" : std::wstring();
  }
  const std::size_t equals = equalsAt(text);
  if (equals == std::string_view::npos) return L"it is no equation";
  for (const std::string_view side : {text.substr(0, equals), text.substr(equals + 1)})
    if (Evaluated read = value(side); !read.fault.empty() && !read.byValues) return std::move(read.fault);
  return {};
}

std::wstring Relations::assignment(std::string_view text) {
  std::string_view expression;
  const std::string_view name = assignedName(text, expression);
  if (name.empty()) {
    const std::size_t equals = equalsAt(text);
    if (equals == std::string_view::npos) return L"it assigns nothing";
    return equals == 0 ? L"it has no left side" : L"its left side is no name";
  }
  Evaluated evaluated = value(expression);
  const auto run = runs();
  if (run.value_or(true)) assign(name, run ? evaluated.value : RelationValue());
  return counted(std::move(evaluated));
}

void Relations::assign(std::string_view name, RelationValue value) {
  const auto [place, fresh] = places_.try_emplace(folded(name), assignments_.size());
  if (fresh) assignments_.emplace_back().name = name;
  assignments_[place->second].value = std::move(value);
  assignments_[place->second].line = line_;
}

std::wstring Relations::counted(Evaluated evaluated) {
  const bool surelyRuns = runs().value_or(false);
  if (evaluated.byValues && !surelyRuns) return {};
  if (surelyRuns && evaluated.value.index() == 0 && !evaluated.unworked.empty())
    unworked_.push_back({line_, std::move(evaluated.unworked)});
  return std::move(evaluated.fault);
}

std::optional<bool> Relations::runs() const {
  bool known = true;
  for (const Branch& branch : branches_) {
    if (branch.holds && !*branch.holds) return false;
    known = known && branch.holds;
  }
  return known ? std::optional<bool>(true) : std::nullopt;
}

}  // namespace headless
