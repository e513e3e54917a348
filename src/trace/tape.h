// A trace while it grows, or while it is played: one line an event, in their order. docs/trace.md tells the form.
//   > NAME ARGUMENTS   the plug-in asks        + WHAT ARGUMENTS   the plug-in is called, also inside a question
//   < ANSWER           what it got             - RESULT           it is done
//   = WORDS            a remark for who reads it; a player passes over it
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "trace/line.h"

namespace trace {

// How a function of the plug-in is called with what a line says; it puts its result down.
using Played = std::function<void(Reading& arguments, Line& result)>;

class Tape {
 public:
  Tape() = default;
  virtual ~Tape() = default;
  Tape(const Tape&) = delete;
  Tape& operator=(const Tape&) = delete;

  // Of this thread. Null: nothing is recorded and nothing played.
  static Tape* current();
  // Null takes it away. Not owned.
  static void setCurrent(Tape* tape);

  // Is it the plug-in that runs? What others ask the session for stands in no trace.
  [[nodiscard]] bool hears() const { return hears_; }
  // It is played: answers come from it, and nothing else is asked.
  [[nodiscard]] virtual bool plays() const = 0;

  // The plug-in asks. Recorded: the line is kept, and an empty text is given. Played: the line must be the next one;
  // what calls the plug-in until the answer is done, and the answer is given.
  virtual std::string ask(const std::string& line) = 0;
  virtual void answer(const std::string& line) = 0;
  // The plug-in is called, and is done.
  virtual void enter(const std::string& line) = 0;
  virtual void leave(const std::string& result) = 0;
  virtual void remark(const std::string& line) = 0;

  // A handle's number: by the order in which they come, while it is recorded; played, handles are these numbers.
  std::uint64_t numberOf(std::uint64_t handle);
  // The same for what was found on a body and has no number itself.
  std::uint64_t numberOf(const std::shared_ptr<const void>& thing);
  [[nodiscard]] std::shared_ptr<const void> thing(std::uint64_t number);
  // What was read isn't what such an answer is made of; it doesn't return.
  virtual void refuse(const std::string& fault) = 0;
  // A function of the plug-in's that whoever is asked keeps; by the order in which they come.
  int keep(Played played);
  [[nodiscard]] const Played& kept(std::int64_t number) const;
  // A function of the plug-in's that is called inside a question alone.
  void pushVisitor(Played played) { visitors_.push_back(std::move(played)); }
  void popVisitor() { visitors_.pop_back(); }
  [[nodiscard]] const Played& visitor() const;

 private:
  friend class Turn;
  bool hears_ = false;
  std::unordered_map<std::uint64_t, std::uint64_t> handles_;
  struct Thing {
    std::weak_ptr<const void> there;  // an address is given again once this has gone
    std::uint64_t number = 0;
  };
  std::unordered_map<const void*, Thing> numbers_;
  std::vector<std::weak_ptr<const void>> things_;  // by their numbers, from 1
  std::vector<Played> kept_, visitors_;
};

// Whose turn it is, for as long as it lives: the plug-in's, or somebody else's.
class Turn {
 public:
  Turn(Tape& tape, bool isPlugin) : tape_(tape), before_(std::exchange(tape.hears_, isPlugin)) {}
  ~Turn() { tape_.hears_ = before_; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  Tape& tape_;
  bool before_;
};

// What is asked while it lives is nobody's of the plug-in's, also in the midst of its turn.
class Unheard {
 public:
  Unheard() {
    if (Tape::current()) turn_.emplace(*Tape::current(), false);
  }

 private:
  std::optional<Turn> turn_;
};

// Writes all that happens.
class Recorder : public Tape {
 public:
  // write: takes a line with its line feed.
  explicit Recorder(std::function<void(std::string_view)> write) : write_(std::move(write)) {}
  [[nodiscard]] bool plays() const override { return false; }
  std::string ask(const std::string& line) override;
  void answer(const std::string& line) override;
  void enter(const std::string& line) override;
  void leave(const std::string& result) override;
  void remark(const std::string& line) override;
  void refuse(const std::string& fault) override;

 private:
  void write(std::string_view mark, const std::string& line);
  std::function<void(std::string_view)> write_;
};

// What the plug-in did otherwise than the trace has it.
struct Difference {
  std::size_t line = 0;       // of the trace, from 1
  std::string expected, got;  // with their marks; empty: the end
  std::string remark;         // the last one of a run before it; empty: there is none
};

// Plays a trace against the plug-in.
class Player : public Tape {
 public:
  // differs: called at the first difference; it doesn't return. step: what another one than the session does with the
  // plug-in ("start"), by its name; BadLine where there is none of that name.
  Player(std::vector<std::string> lines, std::function<void(const Difference&)> differs,
         std::function<void(std::string_view name, Reading& arguments, Line& result)> step)
      : lines_(std::move(lines)), differs_(std::move(differs)), step_(std::move(step)) {}
  // The lines from that one on (from 0) to the end.
  void play(std::size_t from);
  // Where the next line begins so, it is carried out: the plug-in is called by who is no question of its own.
  bool callIfNext(const std::string& beginning);
  // How many questions were answered.
  [[nodiscard]] std::size_t asked() const { return asked_; }

  [[nodiscard]] bool plays() const override { return true; }
  std::string ask(const std::string& line) override;
  void answer(const std::string& line) override;
  void enter(const std::string& line) override;
  void leave(const std::string& result) override;
  void remark(const std::string& /*line*/) override {}
  void refuse(const std::string& fault) override;

 private:
  [[nodiscard]] std::string_view next();
  void differ(std::size_t line, const std::string& expected, const std::string& got);
  void call(std::string_view entry);
  void require(const std::string& got);
  std::vector<std::string> lines_;
  std::size_t at_ = 0, asked_ = 0;
  std::string run_;  // the last remark of a run
  std::function<void(const Difference&)> differs_;
  std::function<void(std::string_view, Reading&, Line&)> step_;
};

// A remark while something is recorded: which run begins, which row of the table is worked. One of a run begins with
// "run", and says "ended" behind it.
void remark(std::string_view word, std::initializer_list<std::wstring_view> texts);

// Why what is to be recorded isn't; empty: it is, or nothing is to be.
std::wstring& recordingFault();

// Are the operations of this program heard by a tape? Not where it was linked without.
bool isHeard();
// For what hears them: at the start of the program.
bool noteHeard();

}  // namespace trace
