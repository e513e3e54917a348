// The cheapest way through a text: for each character and each state, the fewest half codewords that lead there. States
// are the submodes of text compaction, each with or without half a codeword begun, the places in a group of six bytes
// and those in a group of 44 digits.
#include "barcode/compaction.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "barcode/text_submodes.h"

namespace barcode {
namespace {

constexpr int kTextLatch = 900, kByteLatch = 901, kNumericLatch = 902, kByteShift = 913, kSixBytesLatch = 924;
constexpr int kByteGroup = 6, kDigitGroup = 44;
constexpr int kBase = 900;  // of bytes and digits, in codewords

// Behind a value that fills up a codeword only another mode, a shifted byte or the end may come: for a character it
// would be a shift. In the punctuation submode that value is a latch as any other.
constexpr int kPadded = 0, kText = kPadded + kSubmodes, kBytes = kText + 2 * kSubmodes, kDigits = kBytes + kByteGroup,
              kStates = kDigits + kDigitGroup;
constexpr int textState(int submode, int half) { return kText + 2 * submode + half; }
// Between two codewords.
constexpr bool isWhole(int state) { return state < kText || state >= kBytes || (state - kText) % 2 == 0; }

enum class Kind : std::uint8_t { none, latch, switchMode, character, shifted, shiftedByte, byte, digit };
// How a state was reached: from which one, by which half codewords.
struct Move {
  std::uint8_t from = 0;
  Kind kind = Kind::none;
  std::uint8_t first = 0, second = 0;
};
bool takesCharacter(Kind kind) { return kind >= Kind::character; }

constexpr int kNever = std::numeric_limits<int>::max() / 2;
struct Cell {
  int cost = kNever;  // half codewords
  Move move;
};
using Row = std::array<Cell, kStates>;

void reach(Cell& cell, int cost, const Move& move) {
  if (cost < cell.cost) cell = {cost, move};
}
Move moveFrom(int state, Kind kind, int first = 0, int second = 0) {
  return {static_cast<std::uint8_t>(state), kind, static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second)};
}
Cell& at(Row& row, int state) { return row[static_cast<std::size_t>(state)]; }

constexpr SubmodeValues kValues = submodeValues();
int valueOf(int submode, char c) { return kValues[static_cast<std::size_t>(submode)][static_cast<unsigned char>(c)]; }

// Codewords that the digits of a group take.
constexpr int digitCodewords(int digits) { return digits == 0 ? 0 : digits / 3 + 1; }

// ---- states at one place of the text

// Latches between submodes, and what fills up half a codeword.
void closeText(Row& row) {
  for (bool changed = true; changed;) {
    changed = false;
    const auto step = [&](int from, int to, int value) {
      const int cost = at(row, from).cost + 1;
      if (cost >= at(row, to).cost) return;
      reach(at(row, to), cost, moveFrom(from, Kind::latch, value));
      changed = true;
    };
    for (const SubmodeStep& latch : kLatches)
      for (const int half : {0, 1}) step(textState(latch.from, half), textState(latch.to, 1 - half), latch.value);
  }
  for (const int submode : {kAlpha, kLower, kMixed})
    reach(at(row, kPadded + submode), at(row, textState(submode, 1)).cost + 1,
          moveFrom(textState(submode, 1), Kind::latch, kPadValue));
}

int cheapestWhole(const Row& row) {
  int best = 0;
  for (int state = 1; state < kStates; ++state)
    if (isWhole(state) && row[static_cast<std::size_t>(state)].cost < row[static_cast<std::size_t>(best)].cost)
      best = state;
  return best;
}

void close(Row& row) {
  closeText(row);
  const int best = cheapestWhole(row);
  const int cost = at(row, best).cost + 2;
  for (const int mode : {textState(kAlpha, 0), kBytes, kDigits})
    reach(at(row, mode), cost, moveFrom(best, Kind::switchMode));
  closeText(row);
}

// ---- one character on

void takeAsText(Row& row, Row& next, char c) {
  for (int submode = 0; submode < kSubmodes; ++submode) {
    const int value = valueOf(submode, c);
    if (value == kNoValue) continue;
    for (const int half : {0, 1}) {
      const int from = textState(submode, half);
      reach(at(next, textState(submode, 1 - half)), at(row, from).cost + 1, moveFrom(from, Kind::character, value));
    }
  }
  for (const SubmodeStep& shift : kShifts) {
    const int value = valueOf(shift.to, c);
    if (value == kNoValue) continue;
    for (const int half : {0, 1}) {
      const int from = textState(shift.from, half);
      reach(at(next, from), at(row, from).cost + 2, moveFrom(from, Kind::shifted, shift.value, value));
    }
  }
}

void takeAsByte(Row& row, Row& next) {
  for (int submode = 0; submode < kSubmodes; ++submode) {
    for (const int from : {kPadded + submode, textState(submode, 0)})
      reach(at(next, textState(submode, 0)), at(row, from).cost + 4, moveFrom(from, Kind::shiftedByte));
  }
  for (int place = 0; place < kByteGroup; ++place) {
    const int to = (place + 1) % kByteGroup;  // six bytes take five codewords
    reach(at(next, kBytes + to), at(row, kBytes + place).cost + (to == 0 ? 0 : 2),
          moveFrom(kBytes + place, Kind::byte));
  }
}

void takeAsDigit(Row& row, Row& next) {
  for (int place = 0; place < kDigitGroup; ++place) {
    const int more = digitCodewords(place + 1) - digitCodewords(place);
    reach(at(next, kDigits + (place + 1) % kDigitGroup), at(row, kDigits + place).cost + 2 * more,
          moveFrom(kDigits + place, Kind::digit));
  }
}

// ---- writing

// Codewords of a way through the text.
class Writer {
 public:
  explicit Writer(std::string_view text) : text_(text) {}
  // A move to a state; place: of the character that it takes, or of the next one.
  void add(const Move& move, int to, std::size_t place) {
    switch (move.kind) {
      case Kind::latch:
      case Kind::character:
        return addHalf(move.first);
      case Kind::shifted:
        addHalf(move.first);
        return addHalf(move.second);
      case Kind::shiftedByte:
        codewords_.insert(codewords_.end(), {kByteShift, static_cast<unsigned char>(text_[place])});
        return;
      case Kind::switchMode:
        end(place);
        mode_ = to;
        begun_ = place;
        if (mode_ == kText) codewords_.push_back(kTextLatch);
        return;
      case Kind::none:
      case Kind::byte:
      case Kind::digit:
        return;  // written as a whole at the end of the mode
    }
  }
  std::vector<int> finished() {
    end(text_.size());
    return std::move(codewords_);
  }

 private:
  void addHalf(int value) {
    if (half_ == kNoValue) {
      half_ = value;
    } else {
      codewords_.push_back(half_ * 30 + value);
      half_ = kNoValue;
    }
  }
  void end(std::size_t place) {
    const std::string_view piece = text_.substr(begun_, place - begun_);
    if (mode_ == kBytes) addBytes(piece);
    if (mode_ == kDigits) addDigits(piece);
  }
  void addBytes(std::string_view bytes) {
    codewords_.push_back(bytes.size() % kByteGroup == 0 ? kSixBytesLatch : kByteLatch);
    for (; bytes.size() >= kByteGroup; bytes.remove_prefix(kByteGroup)) {
      std::int64_t number = 0;
      for (const char c : bytes.substr(0, kByteGroup)) number = number * 256 + static_cast<unsigned char>(c);
      codewords_.resize(codewords_.size() + 5);
      for (auto place = codewords_.rbegin(); place != codewords_.rbegin() + 5; ++place, number /= kBase)
        *place = static_cast<int>(number % kBase);
    }
    for (const char c : bytes) codewords_.push_back(static_cast<unsigned char>(c));
  }
  // Each group with a 1 before it, as a number.
  void addDigits(std::string_view digits) {
    codewords_.push_back(kNumericLatch);
    while (!digits.empty()) {
      const std::string_view group = digits.substr(0, kDigitGroup);
      const std::size_t begin = codewords_.size();
      codewords_.resize(begin + static_cast<std::size_t>(digitCodewords(static_cast<int>(group.size()))));
      codewords_.back() = 1;
      for (const char c : group) {
        int carry = c - '0';
        for (auto place = codewords_.rbegin(); place != codewords_.rend() - static_cast<std::ptrdiff_t>(begin);
             ++place, carry /= kBase) {
          carry += *place * 10;
          *place = carry % kBase;
        }
      }
      digits.remove_prefix(group.size());
    }
  }

  std::string_view text_;
  std::vector<int> codewords_;
  int mode_ = kText, half_ = kNoValue;
  std::size_t begun_ = 0;  // where the mode began
};

}  // namespace

std::vector<int> compacted(std::string_view text) {
  std::vector<Row> rows(text.size() + 1);
  at(rows[0], textState(kAlpha, 0)).cost = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    close(rows[i]);
    takeAsText(rows[i], rows[i + 1], text[i]);
    takeAsByte(rows[i], rows[i + 1]);
    if (text[i] >= '0' && text[i] <= '9') takeAsDigit(rows[i], rows[i + 1]);
  }
  closeText(rows.back());
  int state = cheapestWhole(rows.back());

  struct Step {
    Move move;
    int to;
    std::size_t place;
  };
  std::vector<Step> steps;
  for (std::size_t i = text.size();;) {
    const Move& move = at(rows[i], state).move;
    if (move.kind == Kind::none) break;
    if (takesCharacter(move.kind)) --i;
    steps.push_back({move, state, i});
    state = move.from;
  }
  Writer writer(text);
  std::reverse(steps.begin(), steps.end());
  for (const Step& step : steps) writer.add(step.move, step.to, step.place);
  return writer.finished();
}

}  // namespace barcode
