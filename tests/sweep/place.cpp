#include "sweep/place.h"

#include <execinfo.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>

#include "core/state.h"
#include "text/encoding.h"

namespace sweep {
namespace {

struct Program {
  std::uintptr_t base = 0, end = 0;
};

// The program's own part of the memory: it is the first that the loader tells.
const Program& program() {
  static const Program found = [] {
    Program all;
    ::dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
          auto& whole = *static_cast<Program*>(data);
          whole.base = info->dlpi_addr;
          for (int i = 0; i < info->dlpi_phnum; ++i) {
            const auto& part = info->dlpi_phdr[i];
            if (part.p_type == PT_LOAD) whole.end = std::max(whole.end, whole.base + part.p_vaddr + part.p_memsz);
          }
          return 1;
        },
        &all);
    return all;
  }();
  return found;
}

// FNV-1a.
void mix(std::uint64_t& hash, std::string_view bytes) {
  for (const char byte : bytes) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3u;
  hash = (hash ^ 0xffu) * 0x100000001b3u;
}

// "actions::deleteLayers" of "actions::(anonymous namespace)::deleteLayers(actions::Task const&)".
std::string plainName(std::string name) {
  constexpr std::string_view kUnnamed = "(anonymous namespace)::";
  for (auto at = name.find(kUnnamed); at != name.npos; at = name.find(kUnnamed)) name.erase(at, kUnnamed.size());
  return name.substr(0, name.find('('));
}

// A source as callers are called: "reports/report_layer" of "/home/ann/user/src/reports/report_layer.cpp:39". Empty for
// what every action calls through, which tells nothing of the one that asks.
std::string sourceOf(const std::string& line) {
  for (const std::string_view folder : {"/src/", "/apps/"}) {
    const std::size_t at = line.rfind(folder);
    if (at == line.npos) continue;
    std::string source = line.substr(at + folder.size(), line.rfind('.') - at - folder.size());
    for (const std::string_view shared : {"creo/", "headless/", "os/", "core/log", "text/"})
      if (source.starts_with(shared)) return {};
    return source;
  }
  return {};
}

// Those that ask by address, inlined ones first, as "reports/report_layer: reports::reportLayer"; what the program's
// own tables tell.
std::map<std::uintptr_t, std::vector<std::string>> functionsAt(const std::vector<Place>& places) {
  std::ostringstream command;
  command << "addr2line -a -f -C -i -e /proc/" << ::getpid() << "/exe" << std::hex;
  for (const Place& place : places)
    for (const std::uintptr_t frame : place.frames)
      if (frame != 0) command << " 0x" << frame - 1;
  std::map<std::uintptr_t, std::vector<std::string>> found;
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.str().c_str(), "r"), &::pclose);
  if (!pipe) return found;
  std::uintptr_t frame = 0;
  bool isFunction = true;
  std::string function;
  std::array<char, 1 << 16> line{};
  while (std::fgets(line.data(), static_cast<int>(line.size()), pipe.get())) {
    std::string text(line.data());
    text.erase(text.find_last_not_of('\n') + 1);
    if (text.starts_with("0x")) {
      frame = std::stoull(text, nullptr, 16) + 1;
      found[frame].clear();
      isFunction = true;
    } else if (isFunction) {
      function = plainName(text);
      isFunction = false;
    } else {  // the line that it stands in
      if (const std::string source = sourceOf(text); !source.empty()) found[frame].push_back(source + ": " + function);
      isFunction = true;
    }
  }
  return found;
}

}  // namespace

std::uint64_t Place::hash() const {
  std::uint64_t all = 0xcbf29ce484222325u;
  mix(all, action);
  mix(all, operation);
  for (const std::uintptr_t frame : frames) mix(all, std::to_string(frame));
  return all;
}

Place placeHere(std::string_view operation, std::size_t skipped) {
  std::array<void*, kFrames + 8> addresses{};
  const auto count = static_cast<std::size_t>(::backtrace(addresses.data(), static_cast<int>(addresses.size())));
  Place place{text::toUtf8(core::pluginState().currentAction), std::string(operation)};
  for (std::size_t i = 0; i < kFrames && i + skipped < count; ++i) {
    const auto address = reinterpret_cast<std::uintptr_t>(addresses[i + skipped]);
    if (address >= program().base && address < program().end) place.frames[i] = address - program().base;
  }
  return place;
}

std::vector<std::string> callersOf(const std::vector<Place>& places) {
  std::vector<std::string> callers;
  constexpr std::size_t kAtOnce = 200;  // a command line takes no more than so much
  for (std::size_t begin = 0; begin < places.size(); begin += kAtOnce) {
    const std::vector<Place> some(
        places.begin() + static_cast<std::ptrdiff_t>(begin),
        places.begin() + static_cast<std::ptrdiff_t>(std::min(begin + kAtOnce, places.size())));
    const auto functions = functionsAt(some);
    for (const Place& place : some) {
      std::string caller;
      for (const std::uintptr_t frame : place.frames) {
        const auto names = functions.find(frame);
        if (names == functions.end()) continue;
        if (caller.empty() && !names->second.empty()) caller = names->second.front();
      }
      callers.push_back(std::move(caller));
    }
  }
  return callers;
}

}  // namespace sweep
