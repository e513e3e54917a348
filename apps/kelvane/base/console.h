// Where a verb writes: results on standard output, everything else on standard error; and where it reads. Control
// characters in what is written are shown as escapes.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace kelvane {

enum class Ink { plain, bold, dim, red, green, yellow, cyan };

class Console {
 public:
  Console(std::ostream& out, std::ostream& err, std::istream* in = nullptr) : out_(out), err_(err), in_(in) {}

  // The next line of standard input; false at its end.
  bool read(std::string& line) { return in_ && std::getline(*in_, line); }

  // A line of the result.
  void result(std::string_view line);
  // A result of several lines, without the last one's end.
  void resultLines(std::string_view text);
  // JSON that is written already, without its last line's end.
  void resultJson(std::string_view text);
  // The bytes of a file, as they are.
  void resultBytes(std::string_view bytes);
  // A line for the person who waits; left out when quiet.
  void note(std::string_view line);
  // A line about trouble; never left out.
  void trouble(std::string_view line);
  // A line on a terminal's standard error that the next one replaces.
  void passing(std::string_view line);
  void flush();
  // Results that couldn't be written; known behind a flush.
  [[nodiscard]] bool lostResults() const { return !out_; }

  // The text with its colour, for a line that is written here; or as it is where results have no colours.
  [[nodiscard]] std::string inked(Ink ink, std::string_view text) const;

  // "auto": where standard output is a terminal and NO_COLOR isn't set. The program says what is a terminal.
  void colours(const std::string& when, bool outIsTerminal);
  void beQuiet(bool quiet) { quiet_ = quiet; }
  void errIsTerminal(bool is) { errIsTerminal_ = is; }
  void inIsTerminal(bool is) { inIsTerminal_ = is; }
  [[nodiscard]] bool quiet() const { return quiet_; }
  // True where passing lines make sense.
  [[nodiscard]] bool live() const { return errIsTerminal_ && !quiet_; }
  // True where a person sees a question and it is a person who answers.
  [[nodiscard]] bool canAsk() const { return live() && inIsTerminal_; }

 private:
  std::ostream& clearedErr();
  std::ostream& out_;
  std::ostream& err_;
  std::istream* in_;
  bool colours_ = false, quiet_ = false, errIsTerminal_ = false, inIsTerminal_ = false, passing_ = false;
};

}  // namespace kelvane
