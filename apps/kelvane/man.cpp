// kelvane man: the manual's pages, made from the verbs' own rows.
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/version.h"
#include "kelvane/verb_table.h"

namespace kelvane {
namespace {

// A text as roff shows it: no sign is a command, and dashes stay dashes that can be copied.
std::string plain(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\\') {
      result += "\\e";
    } else if (c == '-') {
      result += "\\-";
    } else {
      if (result.empty() && (c == '.' || c == '\'')) result += "\\&";
      result += c;
    }
  }
  return result;
}
std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }
std::string slanted(std::string_view text) { return "\\fI" + plain(text) + "\\fR"; }

std::string head(const std::string& name, std::string_view what) {
  std::string title = name;
  for (char& c : title) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  return ".TH " + plain(title) + " 1 \"\" \"kelvane " + kVersion + "\" \"Kelvane User\"\n.SH NAME\n" + plain(name) +
         " \\- " + plain(what) + "\n";
}

// "FILE" slanted; words to choose from bold.
std::string valueOf(const OptionRow& row) {
  std::string result;
  for (const std::string& word : choices(row)) result.append(result.empty() ? "" : "|").append(bold(word));
  return result.empty() ? slanted(row.value) : result;
}

std::string synopsis(const VerbRow& verb, const std::vector<OptionRow>& rows) {
  std::string line = bold(std::string("kelvane ") + verb.name) + " [" + slanted("options") + "]";
  for (const OptionRow& row : rows) {
    if (!isArgument(row)) continue;
    const bool needed = std::holds_alternative<std::string*>(row.target);
    line += needed ? " " + valueOf(row) : " [" + valueOf(row) + (mayRepeat(row) ? " ..." : "") + "]";
  }
  return ".SH SYNOPSIS\n" + line + "\n";
}

std::string entry(const OptionRow& row) {
  std::string term;
  for (const std::string& name : names(row)) term.append(term.empty() ? "" : ", ").append(bold(name));
  if (isArgument(row)) {
    term = valueOf(row);
  } else if (takesValue(row)) {
    term += " " + valueOf(row);
  }
  return ".TP\n" + term + "\n" + plain(row.help) + (mayRepeat(row) && !isArgument(row) ? "; as often as wanted" : "") +
         "\n";
}

std::string page(const VerbRow& verb) {
  const std::unique_ptr<Verb> made = verb.make();
  Common common;
  std::vector<OptionRow> rows = made->options();
  std::string text = head(std::string("kelvane-") + verb.name, verb.help) + synopsis(verb, rows) + ".SH OPTIONS\n";
  for (const OptionRow& row : commonOptions(common)) rows.push_back(row);
  for (const OptionRow& row : rows) text += entry(row);
  return text + ".SH EXAMPLE\n.nf\n" + plain(verb.example) + "\n.fi\n.SH SEE ALSO\n.BR kelvane (1)\n";
}

std::string overview() {
  std::string text = head("kelvane", "runs prepared work on folders of CAD models") + ".SH SYNOPSIS\n" +
                     bold("kelvane") + " " + slanted("VERB") + " ...\n.SH DESCRIPTION\n" +
                     "Results go to standard output, progress and messages to standard error.\n.SH VERBS\n";
  for (const VerbRow& verb : verbRows()) text += ".TP\n" + bold(verb.name) + "\n" + plain(verb.help) + "\n";
  text +=
      ".SH EXIT STATUS\n.TP\n0\nfine, or yes\n.TP\n1\nerrors, differences, or no\n.TP\n2\ncouldn't; one line on "
      "standard "
      "error says why\n.TP\n130, 143\nafter Ctrl\\-C and a request to end\n"
      ".SH ENVIRONMENT\n.TP\n\\fBKELVANE_INSTALLATION\\fR\nthe folder of texts, dialogs and configuration, where it "
      "isn't the program's own\n.TP\n\\fBXDG_CACHE_HOME\\fR\nholds unpacked packages and logs of runs\n"
      ".TP\n\\fBNO_COLOR\\fR\nresults have no colours\n.SH SEE ALSO\n";
  for (const VerbRow& verb : verbRows()) {
    text += std::string(".BR kelvane\\-") + verb.name + " (1)" + (&verb == &verbRows().back() ? "\n" : " ,\n");
  }
  return text;
}

class Man : public Verb {
 public:
  std::vector<OptionRow> options() override { return {{"verb", "VERB", "the verb; without it the program", &verb_}}; }
  int run(Console& console) override {
    std::string text = verb_ ? page(chosen()) : overview();
    text.pop_back();  // the console ends the last line itself
    console.resultLines(text);
    return kFine;
  }

 private:
  [[nodiscard]] const VerbRow& chosen() const {
    std::vector<std::string> names;
    for (const VerbRow& verb : verbRows()) {
      if (*verb_ == verb.name) return verb;
      names.emplace_back(verb.name);
    }
    throw Fault("there is no verb '" + *verb_ + "'" + didYouMean(*verb_, names));
  }

  std::optional<std::string> verb_;
};

}  // namespace

std::unique_ptr<Verb> makeMan() { return std::make_unique<Man>(); }

}  // namespace kelvane
