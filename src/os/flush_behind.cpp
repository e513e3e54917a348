#include "os/flush_behind.h"

#include <algorithm>
#include <condition_variable>
#include <list>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

#include "os/durable.h"
#include "os/machine_path.h"
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

std::error_code flushOne(WrittenFile& file, const std::string& path) {
  return flushed(path, [&] { return file.flush(path); });
}

void flushFolderNow(const std::string& folder) {
  static_cast<void>(flushed(folder, [&folder] { return flushNames(folder); }));
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

  void add(std::unique_ptr<WrittenFile> file, std::string path) {
    std::string folder = parentOf(path);
    if (threads_.empty()) return flushAtOnce({std::move(file), std::move(path)}, folder);
    std::unique_lock lock(mutex_);
    done_.wait(lock, [this] { return files_.size() < kMostWaiting; });
    files_.push_back({std::move(file), std::move(path)});
    folders_.insert(std::move(folder));
    lock.unlock();
    changed_.notify_one();
  }
  void addFolder(const std::string& folder) {
    if (threads_.empty()) return flushFolderNow(folder);
    const std::lock_guard guard(mutex_);
    folders_.insert(folder);
    changed_.notify_one();
  }
  // A file, or a folder with what waits in it, has another name.
  void rename(const std::string& from, const std::string& to) {
    const std::lock_guard guard(mutex_);
    const std::string within = withSlash(from);
    for (std::list<Written>* const list : {&files_, &inWork_}) {
      for (Written& written : *list)
        if (written.path == from || written.path.starts_with(within)) written.path.replace(0, from.size(), to);
    }
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
    std::unique_ptr<WrittenFile> file;
    std::string path;
  };

  [[nodiscard]] bool isIdle() const { return files_.empty() && folders_.empty() && underWay_ == 0; }

  // Once more where it has taken another name meanwhile: under the old one it may not have been found.
  void flushNext(std::unique_lock<std::mutex>& lock) {
    inWork_.splice(inWork_.end(), files_, files_.begin());
    const auto next = std::prev(inWork_.end());
    std::string path;
    std::error_code error;
    do {
      path = next->path;
      lock.unlock();
      error = next->file->isGone(path) ? std::error_code() : flushOne(*next->file, path);
      lock.lock();
    } while (path != next->path && next->file->isGone(path));
    note(std::move(next->path), error);
    inWork_.erase(next);
  }

  // What waits is worked to its end; a folder comes when no file waits, so that many files share its turn.
  void work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return ends_ || !files_.empty() || !folders_.empty(); });
      if (files_.empty() && folders_.empty()) return;
      ++underWay_;
      if (!files_.empty()) {
        flushNext(lock);
      } else {
        const std::string folder = folders_.extract(folders_.begin()).value();
        lock.unlock();
        flushFolderNow(folder);
        lock.lock();
      }
      --underWay_;
      done_.notify_all();
    }
  }

  void flushAtOnce(Written written, const std::string& folder) {
    const std::error_code error = flushOne(*written.file, written.path);
    flushFolderNow(folder);
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
  std::list<Written> files_, inWork_;
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

  [[nodiscard]] bool isMade(const FileId& file) const { return made_.contains(file); }
  void noteMade(const FileId& file) { made_.insert(file); }
  void forgetMade(const FileId& file) { made_.erase(file); }
  void forgetAllMade() { made_.clear(); }

  static inline Durable::State* inForce = nullptr;

 private:
  Durability how_;
  // Files under names that were free, and that nobody outside was told of yet: replacing one loses nothing.
  std::set<FileId> made_;
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

FlushTime flushTime(const FileId* old) {
  Durable::State* const state = Durable::State::inForce;
  if (!state || state->how() == Durability::each) return FlushTime::beforeName;
  if (state->how() == Durability::none) return FlushTime::never;
  return !old || state->isMade(*old) ? FlushTime::behind : FlushTime::beforeName;
}

std::error_code flushed(const std::string& path, const std::function<std::error_code()>& onDisk) {
  return instead() ? instead()(path) : onDisk();
}

void flushBehind(std::unique_ptr<WrittenFile> file, std::string path, const FileId* old) {
  Durable::State& state = *Durable::State::inForce;
  if (old) state.forgetMade(*old);
  state.noteMade(file->id());
  state.queue()->add(std::move(file), std::move(path));
}

void flushFolder(const std::string& folder, FlushTime when) {
  if (when == FlushTime::never) return;
  if (FlushQueue* const queue = queueInForce())
    queue->addFolder(folder);
  else
    flushFolderNow(folder);
}

std::error_code flushBeforeReplacing(const std::string& path, const FileId* replaced) {
  if (!queueInForce() || !replaced || Durable::State::inForce->isMade(*replaced)) return {};
  return flushed(path, [&path] {
    const auto file = writtenFile(path);
    return file ? file.value->flush(path) : file.error;
  });
}

void nameHasChanged(const std::string& from, const std::string& to, const FileId* replaced) {
  FlushQueue* const queue = queueInForce();
  if (!queue) return;
  if (replaced) fileHasGone(*replaced);
  queue->rename(from, to);
  const std::string before = parentOf(from), folder = parentOf(to);
  queue->addFolder(folder);
  if (before != folder) queue->addFolder(before);
}

// Another file may get its number.
void fileHasGone(const FileId& gone) {
  if (Durable::State::inForce) Durable::State::inForce->forgetMade(gone);
}

}  // namespace os
