// The text functions: $$sub$x$y$text$$ and its kin cut a piece out of a text, $$repl$a$b$text$$ replaces in it.
#include <algorithm>
#include <optional>

#include "core/log.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/substitution.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/units.h"

namespace language {
namespace {

constexpr std::wstring_view kSigns = L"$$";

// What a call came to.
enum class Ended {
  well,         // the scan goes on behind its closing signs
  badly,        // the call stays as plain text without its signs, and the whole result is marked as failed
  failedWhole,  // as well, but the whole result is marked as failed
  unusable,     // the whole substitution fails
};

// One call, read from behind its name.
struct Call {
  std::wstring_view rest;   // what isn't read yet
  std::wstring yield = {};  // what stands in the call's place

  bool fits(std::wstring_view argument) const {
    if (text::fits(argument, text::kTextSize)) return true;
    core::logWrite(text::format(L"An argument of a text function, or what it yields, is longer than %d characters",
                                static_cast<int>(text::kTextSize) - 1),
                   core::kError);
    return false;
  }
  // Up to the next sign or the end.
  std::wstring_view word() {
    const std::size_t end = std::min(rest.find(L'$'), rest.size());
    const std::wstring_view read = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return read;
  }
  // The same, "$!" standing for the sign itself.
  std::wstring escapedWord() {
    std::wstring read;
    while (!rest.empty()) {
      const wchar_t c = rest.front();
      rest.remove_prefix(1);
      if (c == L'$' && !rest.starts_with(L'!')) break;
      if (c == L'$') rest.remove_prefix(1);
      read += c;
    }
    return read;
  }
  // Up to two signs, a sign at the very end, or the end; signs in between belong to it.
  std::wstring_view text() {
    const std::size_t end = rest.find(kSigns);
    std::wstring_view read = rest.substr(0, end);
    rest.remove_prefix(end == rest.npos ? rest.size() : end + kSigns.size());
    if (end == rest.npos && read.ends_with(L'$')) read.remove_suffix(1);
    return read;
  }
};

Ended failed(std::wstring_view message) {
  core::logWrite(message, core::kError);
  return Ended::badly;
}

// ---- the functions that cut

// A position as it was written. A negative one reads as 0; nothing: it is out of range.
std::optional<std::size_t> position(std::wstring_view word) {
  const text::ParsedInt read = text::readInt(word);
  if (read.fault == text::NumberFault::outOfRange) return std::nullopt;
  if (read.fault == text::NumberFault::notANumber) return 0;
  return static_cast<std::size_t>(std::max(read.value, 0));
}

Ended yieldPiece(Call& call, std::wstring_view text, std::size_t from, std::size_t to) {
  core::logWrite(text::format(L"%d - %d - %s", from, to, text), core::kDebug);
  call.yield = text::slice(text, from, to);
  return Ended::well;
}

Ended sub(Call& call) {
  const std::wstring_view first = call.word(), second = call.word(), text = call.text();
  if (!call.fits(first) || !call.fits(second) || !call.fits(text)) return Ended::unusable;
  const auto from = position(first), to = position(second);
  if (!from) return failed(L"sub - Failure while build substring at x");
  if (!to) return failed(L"sub - Failure while build substring at y");
  if (*from >= *to) return failed(L"sub - Failure x can't be higher or equal to y");
  return yieldPiece(call, text, *from, *to);
}

// Functions of one number. body: (number, length of the text, text).
template <class Body>
Ended withOneNumber(Call& call, std::wstring_view outOfRange, Body body) {
  const std::wstring_view word = call.word(), text = call.text();
  if (!call.fits(word) || !call.fits(text)) return Ended::unusable;
  const auto number = position(word);
  if (!number) return failed(outOfRange);
  return body(*number, text::units(text), text);
}

Ended pre(Call& call) {
  return withOneNumber(
      call, L"pre - Failure while build substring at x",
      [&](std::size_t x, std::size_t, std::wstring_view text) { return yieldPiece(call, text, 0, x); });
}

Ended pree(Call& call) {
  return withOneNumber(call, L"pree - Failure while build substring at x",
                       [&](std::size_t x, std::size_t length, std::wstring_view text) {
                         if (x > length)
                           core::logWrite(L"pree - The length of x would be smaller 0 so its put like 0",
                                          core::kWarning);
                         return yieldPiece(call, text, 0, length - std::min(x, length));
                       });
}

Ended poste(Call& call) {
  return withOneNumber(call, L"poste - Failure while build substring at x",
                       [&](std::size_t x, std::size_t length, std::wstring_view text) {
                         if (x > length)
                           core::logWrite(L"poste - The length of x would be smaller 0 so its put like 0",
                                          core::kWarning);
                         return yieldPiece(call, text, length - std::min(x, length), length);
                       });
}

Ended posts(Call& call) {
  return withOneNumber(call, L"posts - Failure while build substring at x",
                       [&](std::size_t x, std::size_t length, std::wstring_view text) {
                         if (x <= length) return yieldPiece(call, text, x, length);
                         core::logWrite(
                             L"posts - The length of the String is not long enought for this starting position",
                             core::kWarning);
                         return Ended::failedWhole;
                       });
}

// ---- the function that replaces

Ended repl(Call& call) {
  const std::wstring pattern = call.escapedWord(), replacement = call.escapedWord();
  const std::wstring_view text = call.text();
  if (!call.fits(pattern) || !call.fits(replacement) || !call.fits(text)) return Ended::unusable;
  if (pattern.empty()) return failed(L"repl - Failure a can't be an empty string");
  core::logWrite(text::format(L"%s - %s - %s", pattern, replacement, text), core::kDebug);
  const GivenUp givenUp;
  call.yield = patternReplace(text, pattern, replacement);
  if (givenUp.any()) return Ended::failedWhole;
  return call.fits(call.yield) ? Ended::well : Ended::unusable;
}

struct Function {
  std::wstring_view opening;
  Ended (*run)(Call& call);
};
constexpr Function kFunctions[] = {
    {L"sub$", &sub}, {L"pre$", &pre}, {L"pree$", &pree}, {L"poste$", &poste}, {L"posts$", &posts}, {L"repl$", &repl},
};

const Function* functionAt(std::wstring_view text) {
  for (const Function& row : kFunctions)
    if (text.starts_with(row.opening)) return &row;
  return nullptr;
}

}  // namespace

bool functionPass(Substitution& substitution) {
  std::wstring_view rest = substitution.text;
  // A pattern between slashes keeps the sign of its end.
  if (rest.starts_with(L'/') && rest.ends_with(L'/')) return true;
  std::wstring out;
  out.reserve(rest.size());
  for (;;) {
    const std::size_t signs = rest.find(kSigns);
    out += rest.substr(0, signs);
    if (signs == rest.npos) break;
    rest.remove_prefix(signs + kSigns.size());
    const Function* function = functionAt(rest);
    if (!function) continue;
    Call call{.rest = rest.substr(function->opening.size())};
    const Ended ended = function->run(call);
    if (ended == Ended::unusable) return false;
    if (ended != Ended::well) substitution.status = 1;
    if (ended == Ended::badly) continue;
    out += call.yield;
    rest = call.rest;
  }
  substitution.setText(std::move(out));
  return true;
}

}  // namespace language
