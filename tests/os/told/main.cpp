// A program for tests of what starts programs. It plays what it is called:
//   tell    writes its folder and its arguments, a line each, into "told" in the folder above its own
//   tool    waits until there is a file "go", then writes its first argument into "done"
//   status  ends with its first argument
//   idle    reads nothing and lives for a minute; "brief" ends at once
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

void tell(const fs::path& file, int count, char** arguments) {
  std::ofstream out(file, std::ios::binary);
  out << fs::current_path().generic_string() << "\n";
  for (int i = 1; i < count; ++i) out << arguments[i] << "\n";
}

int waitForGo(const char* text) {
  for (int i = 0; i < 6000 && !fs::exists("go"); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  std::ofstream("done", std::ios::binary) << text << "\n";
  return 0;
}

// Is there anything to read?
bool isAsked() { return std::cin.get() != std::char_traits<char>::eof(); }

}  // namespace

int main(int count, char** arguments) {
  const fs::path self = arguments[0];
  const std::string role = self.stem().string();
  const char* const first = count > 1 ? arguments[1] : "";
  if (role == "tell") tell(self.parent_path().parent_path() / "told", count, arguments);
  if (role == "tool") return waitForGo(first);
  if (role == "status") return isAsked() ? 99 : std::atoi(first);
  if (role == "idle") std::this_thread::sleep_for(std::chrono::minutes(1));
  return 0;
}
