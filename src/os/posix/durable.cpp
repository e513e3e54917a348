#include "os/durable.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "os/posix/flush.h"
#include "os/quiet_thread.h"
#include "os/surroundings.h"

namespace os {
namespace {

// Flushes that wait for each other share one commit of the file system's journal: with four, 400 files take a sixth of
// the time that they take one by one, and more gain little.
constexpr std::size_t kThreads = 4;
// Files that wait are open files; with so many the writer waits, too.
constexpr std::size_t kMostWaiting = 256;

FlushInstead::Function& instead() {
  static FlushInstead::Function function;
  return function;
}

Descriptor openFolder(const std::string& folder) {
  return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

// Replaced or removed since it was written.
bool isGone(const Descriptor& file) {
  struct stat found {};
  return ::fstat(file.number(), &found) == 0 && found.st_nlink == 0;
}

// Files, then folders, that the disk is to get; all that its threads share with who writes.
class FlushQueue {
 public:
  struct Failure {
    std::string path;
    std::error_code error;
  };

  FlushQueue() {
    try {
      while (threads_.size() < kThreads) threads_.push_back(quietThread([this] { work(); }));
    } catch (const std::system_error&) {
      // The system has no more of them: those that are there do, and without any the writer flushes itself.
    }
  }
  ~FlushQueue() {
    {
      const std::lock_guard guard(mutex_);
      ends_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_) thread.join();
  }
  FlushQueue(const FlushQueue&) = delete;
  FlushQueue& operator=(const FlushQueue&) = delete;

  void add(Descriptor file, std::string path, std::string folder) {
    if (threads_.empty()) return flushAtOnce({std::move(file), std::move(path)}, folder);
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return files_.size() < kMostWaiting; });
    files_.push_back({std::move(file), std::move(path)});
    folders_.insert(std::move(folder));
    lock.unlock();
    changed_.notify_one();
  }
  void addFolder(const std::string& folder) {
    if (threads_.empty()) {
      flush(openFolder(folder), folder);
      return;
    }
    const std::lock_guard guard(mutex_);
    folders_.insert(folder);
    changed_.notify_one();
  }

  // Until nothing waits and nothing is under way.
  void wait() {
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return threads_.empty() || isIdle(); });
  }
  std::vector<Failure> takeFailures() {
    const std::lock_guard guard(mutex_);
    return std::exchange(failures_, {});
  }
  // The first since the last call.
  std::error_code takeError() {
    const std::lock_guard guard(mutex_);
    return std::exchange(error_, {});
  }

 private:
  struct Written {
    Descriptor file;
    std::string path;
  };

  [[nodiscard]] bool isIdle() const { return files_.empty() && folders_.empty() && underWay_ == 0; }

  // What waits is worked to its end; a folder comes when no file waits, so that many files share its turn.
  void work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return ends_ || !files_.empty() || !folders_.empty(); });
      if (files_.empty() && folders_.empty()) return;
      ++underWay_;
      if (!files_.empty()) {
        Written next = std::move(files_.front());
        files_.pop_front();
        lock.unlock();
        const std::error_code error = isGone(next.file) ? std::error_code() : flush(next.file, next.path);
        next.file = {};
        lock.lock();
        note(std::move(next.path), error);
      } else {
        const std::string folder = folders_.extract(folders_.begin()).value();
        lock.unlock();
        flush(openFolder(folder), folder);
        lock.lock();
      }
      --underWay_;
      done_.notify_all();
    }
  }

  void flushAtOnce(Written written, const std::string& folder) {
    const std::error_code error = flush(written.file, written.path);
    flush(openFolder(folder), folder);
    const std::lock_guard guard(mutex_);
    note(std::move(written.path), error);
  }

  // A file that is written anew and refused once more isn't news, but who waits next isn't told of it as safe.
  void note(std::string path, std::error_code error) {
    if (!error) return;
    if (!error_) error_ = error;
    if (refused_.insert(path).second) failures_.push_back({std::move(path), error});
  }

  std::mutex mutex_;
  std::condition_variable changed_, done_;
  std::deque<Written> files_;
  std::set<std::string> folders_;
  std::size_t underWay_ = 0;
  bool ends_ = false;
  std::set<std::string> refused_;  // paths of all failures
  std::vector<Failure> failures_;
  std::error_code error_;
  std::vector<std::thread> threads_;
};

}  // namespace

class Durable::State {
 public:
  explicit State(Durability how) : how_(how) {
    if (how == Durability::run) queue_ = std::make_unique<FlushQueue>();
  }
  [[nodiscard]] Durability how() const { return how_; }
  // Null where nothing is flushed behind.
  [[nodiscard]] FlushQueue* queue() { return queue_.get(); }

  [[nodiscard]] bool isMade(const struct stat& file) const { return made_.contains({file.st_dev, file.st_ino}); }
  void noteMade(const struct stat& file) { made_.insert({file.st_dev, file.st_ino}); }
  void forgetMade(const struct stat& file) { made_.erase({file.st_dev, file.st_ino}); }
  void forgetAllMade() { made_.clear(); }

  static inline Durable::State* inForce = nullptr;

 private:
  Durability how_;
  // Files under names that were free, and that nobody outside was told of yet: replacing one loses nothing.
  std::set<std::pair<dev_t, ino_t>> made_;
  std::unique_ptr<FlushQueue> queue_;
};

namespace {

// Null where nothing waits.
FlushQueue* queueInForce() { return Durable::State::inForce ? Durable::State::inForce->queue() : nullptr; }

}  // namespace

Durable::Durable(Durability how) : state_(std::make_unique<State>(how)) { State::inForce = state_.get(); }
Durable::~Durable() { State::inForce = nullptr; }

std::vector<Unsafe> Durable::takeFailures() {
  std::vector<Unsafe> failures;
  if (!state_->queue()) return failures;
  for (const FlushQueue::Failure& failure : state_->queue()->takeFailures())
    failures.push_back({mounts().system(failure.path), failure.error});
  return failures;
}

std::error_code settleWritten() {
  FlushQueue* const queue = queueInForce();
  if (!queue) return {};
  queue->wait();
  Durable::State::inForce->forgetAllMade();
  return queue->takeError();
}

FlushInstead::FlushInstead(Function function) { instead() = std::move(function); }
FlushInstead::~FlushInstead() { instead() = nullptr; }

// ---- what writes files asks

FlushTime flushTime(const struct stat* old) {
  Durable::State* const state = Durable::State::inForce;
  if (!state || state->how() == Durability::each) return FlushTime::beforeName;
  if (state->how() == Durability::none) return FlushTime::never;
  return !old || state->isMade(*old) ? FlushTime::behind : FlushTime::beforeName;
}

std::error_code flush(const Descriptor& file, const std::string& path) {
  if (instead()) return instead()(path);
  return file.number() >= 0 && ::fsync(file.number()) == 0 ? std::error_code{} : lastError();
}

void flushBehind(Descriptor file, std::string path, std::string folder, const struct stat* old) {
  Durable::State& state = *Durable::State::inForce;
  struct stat now {};
  if (old) state.forgetMade(*old);
  if (::fstat(file.number(), &now) == 0) state.noteMade(now);
  state.queue()->add(std::move(file), std::move(path), std::move(folder));
}

void flushFolder(const std::string& folder, FlushTime when) {
  if (when == FlushTime::never) return;
  if (FlushQueue* const queue = queueInForce())
    queue->addFolder(folder);
  else
    flush(openFolder(folder), folder);
}

std::error_code flushBeforeReplacing(const std::string& path, const struct stat* replaced) {
  if (!queueInForce() || !replaced || Durable::State::inForce->isMade(*replaced)) return {};
  return flush(Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)), path);
}

void nameHasChanged(const std::string& folderBefore, const std::string& folder, const struct stat* replaced) {
  FlushQueue* const queue = queueInForce();
  if (!queue) return;
  if (replaced) fileHasGone(*replaced);
  queue->addFolder(folder);
  if (folderBefore != folder) queue->addFolder(folderBefore);
}

// Another file may get its number.
void fileHasGone(const struct stat& gone) {
  if (Durable::State::inForce) Durable::State::inForce->forgetMade(gone);
}

}  // namespace os
