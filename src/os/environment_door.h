// Who is asked for variables of the environment in the machine's place.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace os {

// As environment() (os/processes.h), of the machine alone.
std::optional<std::wstring> machineEnvironment(std::wstring_view name);

using EnvironmentDoor = std::function<std::optional<std::wstring>(std::wstring_view name)>;
// Another one for as long as it lives. It is set and gone while no other thread asks.
class EnvironmentGuard {
 public:
  explicit EnvironmentGuard(EnvironmentDoor other);
  ~EnvironmentGuard();
  EnvironmentGuard(const EnvironmentGuard&) = delete;
  EnvironmentGuard& operator=(const EnvironmentGuard&) = delete;

 private:
  EnvironmentDoor saved_;
};

}  // namespace os
