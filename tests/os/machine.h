// What tests do to the machine where each system has its own way.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace os::test {

// A path of UTF-8.
inline std::filesystem::path pathOf(const std::string& bytes) { return std::u8string(bytes.begin(), bytes.end()); }
inline std::string bytesOf(const std::filesystem::path& path) {
  const std::u8string bytes = path.generic_u8string();
  return {bytes.begin(), bytes.end()};
}

// False where this machine, or who works on it, can make none.
bool makeLink(const std::filesystem::path& at, const std::string& target);
bool isLink(const std::filesystem::path& path);
void setModified(const std::filesystem::path& file, std::int64_t seconds, int milliseconds);
// The environment of this process, as somebody else sets it.
void setVariable(const char* name, const std::string& value);
void takeVariable(const char* name);
// The number of this process.
std::uint32_t ownProcess();
// Our own small program (told/main.cpp), which plays what it is called.
std::filesystem::path toldProgram();
// It, beside a test's other files: "bin/tell" is "bin/tell.exe" where programs have an end.
void putProgram(const std::filesystem::path& at);

}  // namespace os::test
