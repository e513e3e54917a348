// The inside of the template engine: one call's text on its way through the passes. The order of the passes is the
// grammar: what a pass writes is seen by those behind it and by none before it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "language/number_with_units.h"

namespace language {

// A value that holds its own token would be replaced for ever; no sensible text comes near this number.
constexpr int kMostReplacements = 10000;
// Units that all replacements of a call may write: a text of the largest room, written anew for each of hundreds of
// names. More would hold the run up for seconds.
constexpr std::size_t kMostWritten = 100'000'000;
// Stands for a "%" that mustn't open a name; no text has this noncharacter. It becomes one behind the pass
// of the parameters, before the text functions read it.
constexpr wchar_t kClosedPercent = L'\uFDD0';

// Case-sensitive replace-all; the source is read up to dstSize - 1 units, the rest is left out, and
// so is what the result has more.
std::wstring replaceAllText(std::wstring_view source, std::wstring_view find, std::wstring_view replacement,
                            std::size_t dstSize);

class Substitution {
 public:
  // capacity: room of the text on its way in UTF-16 units, its zero included.
  Substitution(std::wstring_view input, creo::ProMdl model, std::size_t capacity);

  std::wstring text;
  const creo::ProMdl model;
  int status = 0;  // 1 after a failed text function, whose text is delivered all the same
  std::vector<NumberWithUnits> numbers;
  bool outgrown = false;  // the text was longer than its room once: it was cut, and is no result

  [[nodiscard]] bool holds(std::wstring_view token) const { return text.find(token) != text.npos; }
  // Room of the text on its way in UTF-16 units, its zero included.
  [[nodiscard]] std::size_t capacity() const { return capacity_; }
  // Every occurrence of the token. False, with its line in the log, when the call has replaced too often, or a value
  // that comes back in itself has outgrown the room.
  [[nodiscard]] bool replace(std::wstring_view token, std::wstring_view value);
  // Makes another text the call's.
  void setText(std::wstring replaced);
  // The index of the sign that closes the name opened at an index. None (npos) when no sign stands there, a second one
  // follows it at once, or a blank or the text's end comes before the closing one.
  [[nodiscard]] std::size_t closingSign(std::size_t open, wchar_t sign) const;
  // The name between two signs, if it is short enough; else empty, with its line in the log.
  [[nodiscard]] std::wstring nameBetween(std::size_t open, std::size_t close) const;

 private:
  [[nodiscard]] bool comesBack(std::wstring_view token, std::wstring_view value);

  std::size_t capacity_;
  int replacements_ = 0;
  std::size_t written_ = 0;             // units
  std::vector<std::wstring> expanded_;  // tokens whose value held their sign
};

// Passes in their order. False: a failure that was logged ends the call without a result.
bool counterPass(Substitution& call);      // @number@
bool environmentPass(Substitution& call);  // §NAME§
bool clockPass(Substitution& call);        // @date@ ...
bool sessionPass(Substitution& call);      // @curworkdir@ ...
bool modelPass(Substitution& call);        // @mdln@ ...; needs a model
bool parameterPass(Substitution& call);    // %NAME%, %user:NAME%, %b64:FILE%; needs a model
bool functionPass(Substitution& call);     // $$sub$1$2$text$$ ...; needs a model

// The part of the model pass that concerns drawings: @sheetno@ ...; the model is one.
bool drawingTokens(Substitution& call);

}  // namespace language
