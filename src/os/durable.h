// When the disk has what was written. Writing a file takes less than a millisecond; waiting until a power cut can't
// take it away takes longer than most actions. So a run writes on while a few threads wait for the disk, and waits for
// them before anyone outside is told of its files: a server, a program, an address, and who reads that it has ended.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "os/result.h"

namespace os {

enum class Durability {
  each,  // before the call returns that writes a file
  run,   // behind it, but where it would replace a file that was there before the last settleWritten(), which waits
  none,  // when the system comes to it; a power cut may take what was written in the last half minute
};

// A file that has its name and its content, and that the disk didn't take.
struct Unsafe {
  std::wstring path;  // in the system's form
  std::error_code error;
};

// How files are written by this process while it lives; without one as by `each`. One at a time. Files are written by
// the thread that made it alone.
class Durable {
 public:
  explicit Durable(Durability how);
  // Waits as settleWritten does, and ends the threads.
  ~Durable();
  Durable(const Durable&) = delete;
  Durable& operator=(const Durable&) = delete;
  // Of those that weren't waited for: each once, as far as they are known by now.
  [[nodiscard]] std::vector<Unsafe> takeFailures();

  class State;

 private:
  std::unique_ptr<State> state_;
};

// Waits until the disk has all files that were written, with their names. The error of one that it didn't take, since
// the last such wait: who is told next must not be told of it as safe. Its name stands in Durable::takeFailures.
// Processes and Web do so by themselves: with such an error nothing is started or sent, and it is theirs.
std::error_code settleWritten();

// Asked in place of the disk for as long as one lives, for each file and folder that is to be brought to it: the path
// in the machine's form, its error the outcome. It is called by several threads at once.
class FlushInstead {
 public:
  using Function = std::function<std::error_code(const std::string& path)>;
  explicit FlushInstead(Function function);
  ~FlushInstead();
  FlushInstead(const FlushInstead&) = delete;
  FlushInstead& operator=(const FlushInstead&) = delete;
};

}  // namespace os
