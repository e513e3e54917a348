#include "trace/tape.h"

#include <stdexcept>
#include <utility>

namespace trace {
namespace {

// Of one thread, as all operations are: what reads ahead or writes behind asks for nothing of the plug-in's.
Tape*& tape() {
  static thread_local Tape* current = nullptr;
  return current;
}

bool& heard() {
  static bool is = false;
  return is;
}

constexpr std::string_view kThrown = "thrown";

}  // namespace

bool isHeard() { return heard(); }
bool noteHeard() { return heard() = true; }

void remark(std::string_view word, std::initializer_list<std::wstring_view> texts) {
  if (!tape()) return;
  Line line;
  line.word(word);
  for (const std::wstring_view text : texts) line.text(text);
  tape()->remark(line.str());
}

std::wstring& recordingFault() {
  static std::wstring fault;
  return fault;
}

Tape* Tape::current() { return tape(); }
void Tape::setCurrent(Tape* other) { tape() = other; }

std::uint64_t Tape::numberOf(std::uint64_t handle) {
  if (handle == 0 || plays()) return handle;
  return handles_.try_emplace(handle, handles_.size() + 1).first->second;
}

std::uint64_t Tape::numberOf(const std::shared_ptr<const void>& thing) {
  if (!thing) return 0;
  Thing& known = numbers_[thing.get()];
  if (known.there.lock() != thing) {
    things_.push_back(thing);
    known = {thing, things_.size()};
  }
  return known.number;
}

// Played, a thing is a place in memory that nobody looks into.
std::shared_ptr<const void> Tape::thing(std::uint64_t number) {
  if (number == 0) return nullptr;
  if (number > things_.size() + 1) throw BadLine("a thing that wasn't given: " + std::to_string(number));
  if (number <= things_.size())
    if (auto there = things_[number - 1].lock()) return there;
  std::shared_ptr<const void> made = std::make_shared<const std::uint64_t>(number);
  if (number > things_.size())
    (void)numberOf(made);
  else
    numbers_[made.get()] = {things_[number - 1] = made, number};
  return made;
}

int Tape::keep(Played played) {
  kept_.push_back(std::move(played));
  return static_cast<int>(kept_.size());
}

const Played& Tape::kept(std::int64_t number) const {
  if (number < 1 || static_cast<std::uint64_t>(number) > kept_.size())
    throw BadLine("the plug-in gave no function " + std::to_string(number));
  return kept_[static_cast<std::size_t>(number - 1)];
}

const Played& Tape::visitor() const {
  if (visitors_.empty()) throw BadLine("nothing is visited");
  return visitors_.back();
}

// ---- recorded

void Recorder::write(std::string_view mark, const std::string& line) {
  std::string whole(mark);
  if (!line.empty()) whole.append(" ").append(line);
  write_(whole += '\n');
}

std::string Recorder::ask(const std::string& line) {
  write(">", line);
  return {};
}
void Recorder::answer(const std::string& line) { write("<", line); }
void Recorder::enter(const std::string& line) { write("+", line); }
void Recorder::leave(const std::string& result) { write("-", result); }
void Recorder::remark(const std::string& line) { write("=", line); }
void Recorder::refuse(const std::string& fault) { throw BadLine(fault); }  // nothing is read

// ---- played

std::string_view Player::next() {
  for (; at_ < lines_.size() && lines_[at_].starts_with("="); ++at_)
    if (lines_[at_].starts_with("= run ")) run_ = lines_[at_].substr(2);
  return at_ < lines_.size() ? std::string_view(lines_[at_]) : std::string_view();
}

void Player::differ(std::size_t line, const std::string& expected, const std::string& got) {
  differs_({line, expected, got, run_});
}

void Player::require(const std::string& got) {
  if (next() != got) differ(at_ + 1, std::string(next()), got);
  ++at_;
}

std::string Player::ask(const std::string& line) {
  require(line.empty() ? ">" : "> " + line);
  ++asked_;
  const Turn turn(*this, false);
  while (next().starts_with("+")) call(next());
  if (!next().starts_with("<")) differ(at_ + 1, std::string(next()), "an answer to " + line);
  const std::string& answer = lines_[at_++];
  return answer.size() > 2 ? answer.substr(2) : std::string();
}

void Player::call(std::string_view entry) {
  Reading reading(entry.substr(std::min<std::size_t>(2, entry.size())));
  ++at_;
  Line result;
  const Turn turn(*this, true);
  bool isThrown = false;
  try {
    const std::string what(reading.word());
    if (what == "visit")
      visitor()(reading, result);
    else if (what == "run")
      kept(reading.integer())(reading, result);
    else
      step_(what, reading, result);
  } catch (const BadLine& fault) {
    differ(at_, lines_[at_ - 1], fault.what());
  } catch (const std::exception&) {
    isThrown = true;
  }
  leave(isThrown ? std::string(kThrown) : result.str());
}

void Player::play(std::size_t from) {
  at_ = from;
  while (!next().empty()) {
    if (!next().starts_with("+"))
      throw BadLine("line " + std::to_string(at_ + 1) + ": the plug-in isn't called by '" + std::string(next()) + "'");
    call(next());
  }
}

bool Player::callIfNext(const std::string& beginning) {
  if (!next().starts_with(beginning)) return false;
  call(next());
  return true;
}

void Player::refuse(const std::string& fault) { differ(at_, lines_[at_ - 1], fault); }
void Player::answer(const std::string& /*line*/) {}
void Player::enter(const std::string& /*line*/) {}
void Player::leave(const std::string& result) { require(result.empty() ? "-" : "- " + result); }

}  // namespace trace
