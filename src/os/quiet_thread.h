// A thread for work beside the session's own.
#pragma once

#include <functional>
#include <thread>

namespace os {

// It takes no signals: those are for the thread that reads them. std::system_error: the system has no more threads.
std::thread quietThread(std::function<void()> work);

}  // namespace os
