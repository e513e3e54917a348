#include "headless/store/read_ahead.h"

#include <algorithm>
#include <system_error>
#include <tuple>
#include <utility>

#include "headless/store/document.h"
#include "os/confine.h"
#include "os/quiet_thread.h"

namespace headless {
namespace {

constexpr std::size_t kMostWanted = 4;

auto tied(const os::FileTime& t) { return std::tie(t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond); }

}  // namespace

ReadAhead::ReadAhead(std::shared_ptr<os::Files> files) : files_(std::move(files)) {
  try {
    thread_ = os::quietThread([this] { work(); });
  } catch (const std::system_error&) {
    // Then nothing is read ahead.
  }
}

ReadAhead::~ReadAhead() {
  {
    const std::lock_guard guard(mutex_);
    ends_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

void ReadAhead::want(const std::wstring& path) {
  // A gate judges and tells on the session's thread alone.
  if (os::Confine::inForce()) return;
  const std::lock_guard guard(mutex_);
  const bool isWanted = std::any_of(wanted_.begin(), wanted_.end(), [&](const auto& one) { return one->path == path; });
  if (isWanted || !thread_.joinable()) return;
  if (wanted_.size() == kMostWanted) wanted_.pop_front();
  wanted_.push_back(std::make_shared<Wanted>());
  wanted_.back()->path = path;
  changed_.notify_all();
}

std::optional<ReadAhead::Document> ReadAhead::take(const std::wstring& path) {
  std::unique_lock lock(mutex_);
  const auto at = std::find_if(wanted_.begin(), wanted_.end(), [&](const auto& one) { return one->path == path; });
  if (at == wanted_.end()) return std::nullopt;
  const std::shared_ptr<Wanted> found = *at;
  wanted_.erase(at);
  // What the thread has begun is there sooner than what would begin now.
  changed_.wait(lock, [&] { return found->state != Wanted::State::underWay; });
  lock.unlock();
  if (!found->document) return std::nullopt;
  const Stamp now = stampOf(path);
  const Stamp& then = found->stamp;
  const bool isSame = now.isKnown && then.isKnown && now.size == then.size && tied(now.time) == tied(then.time);
  return isSame ? std::move(found->document) : std::nullopt;
}

void ReadAhead::work() {
  std::unique_lock lock(mutex_);
  const auto waits = [](const auto& one) { return one->state == Wanted::State::waits; };
  while (!ends_) {
    const auto at = std::find_if(wanted_.begin(), wanted_.end(), waits);
    if (at == wanted_.end()) {
      changed_.wait(lock);
      continue;
    }
    const std::shared_ptr<Wanted> next = *at;  // it may be dropped or taken meanwhile
    next->state = Wanted::State::underWay;
    lock.unlock();
    // The time comes first: what changes the file while it is read changes it behind that.
    const Stamp stamp = stampOf(next->path);
    std::optional<Document> document = read(next->path);
    lock.lock();
    next->stamp = stamp;
    next->document = std::move(document);
    next->state = Wanted::State::done;
    changed_.notify_all();
  }
}

ReadAhead::Stamp ReadAhead::stampOf(const std::wstring& path) const {
  const auto size = files_->size(path);
  const auto time = files_->modified(path);
  return {size.value, time.value, size && time};
}

std::optional<ReadAhead::Document> ReadAhead::read(const std::wstring& path) const {
  const auto bytes = files_->read(path);
  Document document;
  if (!bytes || readDocument(bytes.value, document.record)) return std::nullopt;
  document.size = bytes.value.size();
  return document;
}

}  // namespace headless
