// kelvane completion: what a shell needs to complete the program's words, made from the verbs' own rows.
#include <set>

#include "kelvane/verb_table.h"
#include "kelvane/vocabulary/rules.h"
#include "kelvane/vocabulary/words.h"

namespace kelvane {
namespace {

enum class Value { any, file, folder };

// What the value is, as the help shows it.
Value valueOf(const OptionRow& row) {
  static const std::set<std::string_view> kFolders = {"DIR", "DIR_A", "DIR_B", "NEWDIR", "OUTDIR", "VAULT"};
  static const std::set<std::string_view> kFiles = {"FILE", "FILE.csv", "PACKAGE"};
  if (kFolders.contains(row.value)) return Value::folder;
  return kFiles.contains(row.value) ? Value::file : Value::any;
}

std::string joined(const std::vector<std::string>& words) {
  std::string result;
  for (const std::string& word : words) result.append(result.empty() ? "" : " ").append(word);
  return result;
}

// The text with a backslash before each of these signs.
std::string escaped(std::string_view text, std::string_view signs) {
  std::string result;
  for (const char c : text) {
    if (signs.find(c) != signs.npos) result += '\\';
    result += c;
  }
  return result;
}

// A text inside single quotes of bash and zsh.
std::string inQuotes(std::string_view text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

// The rows of a verb, with those that every verb has.
struct Rows {
  explicit Rows(const VerbRow& verb) : made(verb.make()), all(made->options()) {
    for (const OptionRow& row : commonOptions(common)) all.push_back(row);
  }
  std::unique_ptr<Verb> made;
  Common common;
  std::vector<OptionRow> all;
};

std::vector<std::string> verbNames() {
  std::vector<std::string> result;
  for (const VerbRow& verb : verbRows()) result.emplace_back(verb.name);
  return result;
}

// The words that the value of a row can be: its own, or the keys that it stands for.
std::vector<std::string> wordsOf(const VerbRow& verb, const OptionRow& row) {
  if (row.value == std::string_view("RULE")) return ruleNames();
  if (row.value != std::string_view("KEY")) return choices(row);
  if (verb.name == std::string_view("actions")) return actionKeys();
  return verb.name == std::string_view("predicates") ? predicateKeys() : helpKeys();
}

// ---- bash: what it doesn't name is completed as a file.
std::string bashCases(const VerbRow& verb) {
  const Rows rows(verb);
  std::string values;
  std::vector<std::string> options{"-h"};
  for (const OptionRow& row : rows.all) {
    if (isArgument(row)) {
      if (const auto words = wordsOf(verb, row); !words.empty())
        options.insert(options.end(), words.begin(), words.end());
      continue;
    }
    std::string pattern;
    for (const std::string& name : names(row)) {
      options.push_back(name);
      pattern.append(pattern.empty() ? "" : "|").append("'").append(verb.name).append(" ").append(name).append("'");
    }
    const auto words = wordsOf(verb, row);
    if (!words.empty()) values += "    " + pattern + ") words='" + joined(words) + "' ;;\n";
    if (words.empty() && takesValue(row)) values += "    " + pattern + ") return ;;\n";
  }
  return values + "    '" + verb.name + " '*) words='" + joined(options) + "' ;;\n";
}
std::string bash() {
  std::string text =
      "_kelvane() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} words=\n"
      "  COMPREPLY=()\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
      "    words='" +
      joined(verbNames()) +
      "'\n"
      "  else\n"
      "    case \"${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD-1]}\" in\n";
  for (const VerbRow& verb : verbRows()) text += bashCases(verb);
  return text +
         "    esac\n"
         "  fi\n"
         "  COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
         "}\n"
         "complete -o default -F _kelvane kelvane\n";
}

// ---- zsh
std::string zshValue(const VerbRow& verb, const OptionRow& row) {
  const std::string name = ":" + escaped(row.value, "[]:\\");
  if (const auto words = wordsOf(verb, row); !words.empty()) return name + ":(" + joined(words) + ")";
  switch (valueOf(row)) {
    case Value::folder:
      return name + ":_files -/";
    case Value::file:
      return name + ":_files";
    default:
      return name + ": ";
  }
}
std::string zshSpecs(const VerbRow& verb, const OptionRow& row) {
  if (isArgument(row)) return "        " + inQuotes((mayRepeat(row) ? "*" : "") + zshValue(verb, row)) + " \\\n";
  std::string specs;
  for (const std::string& name : names(row)) {
    const std::string spec = (mayRepeat(row) ? "*" : "") + name + "[" + escaped(row.help, "[]\\") + "]";
    specs += "        " + inQuotes(spec + (takesValue(row) ? zshValue(verb, row) : "")) + " \\\n";
  }
  return specs;
}
std::string zsh() {
  std::string text = "#compdef kelvane\n_kelvane() {\n  local -a verbs\n  verbs=(\n";
  for (const VerbRow& verb : verbRows()) {
    text += "    " + inQuotes(std::string(verb.name) + ":" + escaped(verb.help, ":\\")) + "\n";
  }
  text += "  )\n  if (( CURRENT == 2 )); then\n    _describe verb verbs\n    return\n  fi\n";
  text += "  local verb=$words[2]\n  shift words\n  (( CURRENT-- ))\n  case $verb in\n";
  for (const VerbRow& verb : verbRows()) {
    text += std::string("    ") + verb.name + ")\n      _arguments \\\n";
    const Rows rows(verb);
    for (const OptionRow& row : rows.all) text += zshSpecs(verb, row);
    text += "        '-h[tells all options]' ;;\n";
  }
  return text +
         "  esac\n}\nif [ \"$funcstack[1]\" = _kelvane ]; then _kelvane \"$@\"; else compdef _kelvane kelvane; fi\n";
}

// ---- fish
std::string fishText(std::string_view text) { return "'" + escaped(text, "'\\") + "'"; }
std::string fishOption(const VerbRow& verb, const OptionRow& row) {
  std::string line = std::string("complete -c kelvane -n '__fish_seen_subcommand_from ") + verb.name + "'";
  const auto words = wordsOf(verb, row);
  if (isArgument(row)) return words.empty() ? "" : line + " -a " + fishText(joined(words)) + "\n";
  for (const std::string& name : names(row)) {
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (!words.empty()) line += " -x -a " + fishText(joined(words));
  if (words.empty() && takesValue(row)) {
    const Value value = valueOf(row);
    line += value == Value::folder ? " -x -a '(__fish_complete_directories)'" : value == Value::file ? " -r" : " -x";
  }
  return line + " -d " + fishText(row.help) + "\n";
}
std::string fish() {
  std::string text;
  for (const VerbRow& verb : verbRows()) {
    text += std::string("complete -c kelvane -f -n __fish_use_subcommand -a ") + verb.name + " -d " +
            fishText(verb.help) + "\n";
  }
  for (const VerbRow& verb : verbRows()) {
    const Rows rows(verb);
    for (const OptionRow& row : rows.all) text += fishOption(verb, row);
  }
  return text;
}

class Completion : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"shell", "bash|zsh|fish", "the shell that is to complete them", &shell_}};
  }
  int run(Console& console) override {
    std::string text = shell_ == "bash" ? bash() : shell_ == "zsh" ? zsh() : fish();
    text.pop_back();  // the console ends the last line itself
    console.resultLines(text);
    return kFine;
  }

 private:
  std::string shell_;
};

}  // namespace

std::unique_ptr<Verb> makeCompletion() { return std::make_unique<Completion>(); }

}  // namespace kelvane
