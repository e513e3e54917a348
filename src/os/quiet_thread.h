// A thread for work beside the session's own.
#pragma once

#include <functional>
#include <thread>

namespace os {

// It takes no signals: those are for the thread that reads them. std::system_error: the system has no more threads.
std::thread quietThread(std::function<void()> work);

// While one lives the system has no more threads: what would run beside the session is done in its own turn. For who
// forks in the middle of a run, where the new process would wait for threads that it doesn't have. They don't nest.
class NoQuietThreads {
 public:
  NoQuietThreads();
  ~NoQuietThreads();
  NoQuietThreads(const NoQuietThreads&) = delete;
  NoQuietThreads& operator=(const NoQuietThreads&) = delete;
};

}  // namespace os
