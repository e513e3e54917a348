#include "language/expressions.h"

// Matching works on the bytes of UTF-8, on every system.
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <array>
#include <new>

#include "language/lasting_syntax.h"
#include "language/pattern_kind.h"
#include "os/freed.h"
#include "text/encoding.h"

namespace language {
namespace {

bool isSecondUmlautByte(char c) { return c == '\x84' || c == '\x96' || c == '\x9C'; }

// Steps that a match may take: the library's own default, so that what a plain call decides is decided likewise. In a
// long text a single step can go over the whole of it, so that fewer are allowed.
constexpr std::size_t kMostSteps = 10'000'000;
constexpr std::size_t kMostStepsTimesLength = 20'000'000'000;
// Machine code doesn't count the steps back in repeats of single characters, nor those from one alternative to the
// next. It is used where these can't be more than this, each repeat and the start taking any place in the text;
// elsewhere the interpreter counts all of them.
constexpr std::size_t kMostUncountedSteps = 10'000'000;
// Of matches that belong together: the interpreter doesn't tell how many steps it took, so that each gets few at first
// and twice as many each time it asks for more. A call costs as much as going over so many bytes.
constexpr std::size_t kFirstSteps = 16;
constexpr std::size_t kCallBytes = 100;
// Of machine code, which counts where a group is repeated; such a step may hide as many others as a run without.
constexpr std::size_t kCountedSteps = 100;
// Of looking whether a start refuses already, which is only a short cut.
constexpr std::size_t kStepsOfRefusal = 1024;
// Of the interpreter, which keeps its way back on the heap; machine code has a stack of its own.
constexpr std::uint32_t kMostHeap = 64 * 1024;  // KB
constexpr std::uint32_t kMostDepth = 1'000'000;
constexpr std::size_t kFirstJitStack = 32 * 1024;
constexpr std::size_t kLargestJitStack = 16 * 1024 * 1024;
constexpr std::uint32_t kGroups = 81;  // the whole match is the first
constexpr std::uint32_t kMostNesting = 250;

using CompileContext = std::unique_ptr<pcre2_compile_context, os::Freed<pcre2_compile_context_free>>;

// Line ends are fixed here, as each build of the library has its own default; "\K" may stand in assertions, as ever.
pcre2_compile_context* howToCompile() {
  static const CompileContext context = [] {
    CompileContext made(pcre2_compile_context_create(nullptr));
    if (!made) throw std::bad_alloc();
    pcre2_set_newline(made.get(), PCRE2_NEWLINE_LF);
    pcre2_set_bsr(made.get(), PCRE2_BSR_UNICODE);
    pcre2_set_parens_nest_limit(made.get(), kMostNesting);
    pcre2_set_compile_extra_options(made.get(), PCRE2_EXTRA_ALLOW_LOOKAROUND_BSK);
    return made;
  }();
  return context.get();
}

// What matches need beside their expression.
struct Matching {
  std::unique_ptr<pcre2_match_context, os::Freed<pcre2_match_context_free>> limits{pcre2_match_context_create(nullptr)};
  std::unique_ptr<pcre2_match_data, os::Freed<pcre2_match_data_free>> groups{pcre2_match_data_create(kGroups, nullptr)};
  std::unique_ptr<pcre2_jit_stack, os::Freed<pcre2_jit_stack_free>> jitStack{
      pcre2_jit_stack_create(kFirstJitStack, kLargestJitStack, nullptr)};

  Matching() {
    if (!limits || !groups) throw std::bad_alloc();
    pcre2_set_heap_limit(limits.get(), kMostHeap);
    pcre2_set_depth_limit(limits.get(), kMostDepth);
    if (jitStack) pcre2_jit_stack_assign(limits.get(), nullptr, jitStack.get());
  }
};

Matching& matching() {
  static Matching kept;
  return kept;
}

bool refersBack(std::string_view expression) {
  for (std::size_t at = expression.find('\\'); at != expression.npos; at = expression.find('\\', at + 2))
    if (expression.substr(at + 1).find_first_of("123456789gk") == 0) return true;
  return expression.find("(?P=") != std::string_view::npos;
}

text::Result<CompiledCode> compile(std::string_view expression) {
  const std::string lasting = inLastingSyntax(expression);
  // The library's short cuts at the start expect too long a text of a group that refers to itself.
  const std::uint32_t options = refersBack(lasting) ? PCRE2_NO_START_OPTIMIZE : 0;
  int error = 0;
  PCRE2_SIZE place = 0;
  CompiledCode code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(lasting.data()), lasting.size(), options, &error, &place,
                                  howToCompile()));
  if (code) {
    pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE);  // what it can't do is interpreted
    return code;
  }
  std::array<PCRE2_UCHAR, 256> reason{};
  pcre2_get_error_message(error, reason.data(), reason.size());
  return text::Fault{text::fromUtf8(reinterpret_cast<const char*>(reason.data()))};
}

bool callsGroups(std::string_view expression) {
  for (std::size_t at = expression.find("(?"); at != expression.npos; at = expression.find("(?", at + 1)) {
    const std::string_view rest = expression.substr(at + 2);
    if (rest.starts_with('-') ? rest.find_first_of("0123456789") == 1 : rest.find_first_of("0123456789+R&P") == 0)
      return true;
  }
  return expression.find("\\g") != expression.npos;
}

// Repeats of single characters.
std::size_t countRepeats(std::string_view expression) {
  std::size_t count = 0;
  for (std::size_t i = 1; i < expression.size(); ++i)
    if (std::string_view("*+?{").find(expression[i]) != std::string_view::npos && expression[i - 1] != ')') ++count;
  return count;
}

PCRE2_SPTR bytesOf(std::string_view text) { return reinterpret_cast<PCRE2_SPTR>(text.data() ? text.data() : ""); }

std::size_t stepsFor(std::string_view text) { return std::min(kMostSteps, kMostStepsTimesLength / (text.size() + 1)); }

pcre2_match_context* limitedTo(std::size_t steps) {
  pcre2_match_context* limits = matching().limits.get();
  pcre2_set_match_limit(limits, static_cast<std::uint32_t>(steps));
  return limits;
}

int interpreted(const pcre2_code* code, std::string_view text, std::uint32_t options, std::size_t steps) {
  // The way back in a long text takes much memory, which goes with the data of its match.
  constexpr std::size_t kLongText = 4096;
  std::unique_ptr<pcre2_match_data, os::Freed<pcre2_match_data_free>> own;
  if (text.size() > kLongText) {
    own.reset(pcre2_match_data_create(kGroups, nullptr));
    if (!own) return PCRE2_ERROR_NOMEMORY;
  }
  pcre2_match_data* groups = own ? own.get() : matching().groups.get();
  return pcre2_match(code, bytesOf(text), text.size(), 0, options | PCRE2_NO_JIT, groups, limitedTo(steps));
}

Answer answerOf(int result) {
  if (result > 0) return Answer::match;
  return result == 0 || result == PCRE2_ERROR_NOMATCH ? Answer::none : Answer::unfinished;
}

}  // namespace

bool Effort::take(std::size_t steps, std::size_t bytes) {
  work_ = std::max<std::int64_t>(-1, work_ - static_cast<std::int64_t>(steps * (bytes + kCallBytes)));
  return !givenUp();
}

bool Effort::takeUncounted(std::size_t steps) {
  const auto wanted = static_cast<std::int64_t>(steps);
  if (uncounted_ < wanted) return false;
  uncounted_ -= wanted;
  return true;
}

void FreeCode::operator()(pcre2_real_code_8* code) const { pcre2_code_free(code); }

Expression::Expression(std::string_view expression)
    : repeats_(countRepeats(expression)),
      alternatives_(static_cast<std::size_t>(std::count(expression.begin(), expression.end(), '|'))),
      // What stands in a group that is repeated by a number, or called from elsewhere, is there more often than
      // written.
      hidesSteps_(expression.find("){") != expression.npos || callsGroups(expression)),
      repeatsGroups_(expression.find(")*") != expression.npos || expression.find(")+") != expression.npos),
      code_(compile(expression)) {
  std::uint32_t options = 0;
  isUtf_ = compiled() && pcre2_pattern_info(code_.value.get(), PCRE2_INFO_ALLOPTIONS, &options) == 0 &&
           (options & PCRE2_UTF) != 0;
}

// How many these can be at most; none where that is too many, or where machine code isn't to be used at all.
std::optional<std::size_t> Expression::uncountedSteps(std::size_t length) const {
  // The fast call doesn't check what is UTF.
  if (hidesSteps_ || isUtf_ || !matching().jitStack) return std::nullopt;
  std::size_t steps = length + 1;
  for (std::size_t i = repeats_; i > 0 && steps <= kMostUncountedSteps; --i) steps *= length + 1;
  for (std::size_t i = alternatives_; i > 0 && steps <= kMostUncountedSteps; --i) steps *= 2;
  return steps <= kMostUncountedSteps ? std::optional(steps) : std::nullopt;
}

// BADOPTION: there is no machine code, or it needs more room than it has.
int Expression::inMachineCode(std::string_view text, std::size_t steps) const {
  const int result =
      pcre2_jit_match(code_.value.get(), bytesOf(text), text.size(), 0, 0, matching().groups.get(), limitedTo(steps));
  return result == PCRE2_ERROR_JIT_STACKLIMIT ? PCRE2_ERROR_JIT_BADOPTION : result;
}

int Expression::execute(std::string_view text) const {
  const std::size_t steps = stepsFor(text);
  if (uncountedSteps(text.size())) {
    const int result = inMachineCode(text, steps);
    if (result != PCRE2_ERROR_JIT_BADOPTION) return result;
  }
  return interpreted(code_.value.get(), text, 0, steps);
}

int Expression::counted(std::string_view text, std::uint32_t options, std::size_t mostSteps, Effort& effort) const {
  for (std::size_t steps = std::min(kFirstSteps, mostSteps); effort.take(steps, text.size()); steps *= 2) {
    const int result = interpreted(code_.value.get(), text, options, std::min(steps, mostSteps));
    if (result != PCRE2_ERROR_MATCHLIMIT || steps >= mostSteps) return result;
  }
  return PCRE2_ERROR_MATCHLIMIT;
}

Answer Expression::match(std::string_view text) const { return answerOf(execute(text)); }

Answer Expression::match(std::string_view text, Effort& effort) const {
  if (effort.givenUp()) return Answer::unfinished;
  const auto uncounted = uncountedSteps(text.size());
  if (uncounted && effort.takeUncounted(*uncounted * (repeatsGroups_ ? kCountedSteps : 1))) {
    const int result =
        effort.take(kFirstSteps, text.size()) ? inMachineCode(text, kCountedSteps) : PCRE2_ERROR_MATCHLIMIT;
    if (result != PCRE2_ERROR_JIT_BADOPTION && result != PCRE2_ERROR_MATCHLIMIT) return answerOf(result);
  }
  const Answer answer = answerOf(counted(text, 0, stepsFor(text), effort));
  if (answer == Answer::unfinished) effort.giveUp();
  return answer;
}

bool Expression::anchored() const {
  std::uint32_t options = 0;
  return pcre2_pattern_info(code_.value.get(), PCRE2_INFO_ALLOPTIONS, &options) == 0 && (options & PCRE2_ANCHORED) != 0;
}

bool Expression::refusesAllThatStartWith(std::string_view text, Effort& effort) const {
  // With this option the library stops as soon as it looks at the text's end; "no match" then was found without its
  // help, and more text changes nothing. Only an end at the place where the match starts is looked at unnoticed.
  return text.size() >= 2 && counted(text, PCRE2_PARTIAL_HARD, kStepsOfRefusal, effort) == PCRE2_ERROR_NOMATCH;
}

char foldedByte(char c, char before) {
  const bool capital = (c >= 'A' && c <= 'Z') || (before == '\xC3' && isSecondUmlautByte(c));
  return capital ? static_cast<char>(c + ('a' - 'A')) : c;
}

void foldUmlauts(std::string& text) {
  for (auto at = text.find('\xC3'); at != std::string::npos && at + 1 < text.size(); at = text.find('\xC3', at + 1))
    if (isSecondUmlautByte(text[at + 1])) text[at + 1] = foldedByte(text[at + 1], text[at]);
}

bool isCaseBlind(std::string_view expression) { return expression.find("(?i)") != std::string_view::npos; }

namespace {
std::string folded(std::string text) {
  foldUmlauts(text);
  return text;
}

const UserExpression* fromCache(std::wstring_view pattern) {
  static PatternCache<wchar_t, UserExpression> cache;
  return &cache.get(
      pattern, [](std::wstring_view whole) { return UserExpression(text::toUtf8(whole.substr(1, whole.size() - 2))); });
}
}  // namespace

UserExpression::UserExpression(std::string between)
    : foldsText(isCaseBlind(between)), code(foldsText ? folded(std::move(between)) : between) {}

const UserExpression* keptExpression(std::wstring_view pattern) {
  if (pattern.size() < 3) return nullptr;
  const UserExpression* kept = fromCache(pattern);
  return kept->code.compiled() ? kept : nullptr;
}

text::Fault expressionFault(std::wstring_view pattern) {
  if (kindOf(pattern) != PatternKind::expression) return {};
  if (pattern.size() < 3) return {L"nothing stands between its slashes"};
  return fromCache(pattern)->code.fault();
}

void narrowInto(std::string& buffer, std::wstring_view text) {
  const auto isAscii = [](wchar_t c) { return c < 0x80; };
  buffer.clear();
  for (auto at = text.begin(); at != text.end();) {
    auto end = at;
    for (; end != text.end() && isAscii(*end); ++end) buffer += static_cast<char>(*end);
    at = std::find_if(end, text.end(), isAscii);
    if (at != end) buffer += text::toUtf8(std::wstring_view(end, at));
  }
}

}  // namespace language
