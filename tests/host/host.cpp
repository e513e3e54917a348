// The headless session as a library of its own, with the operations that the plug-in's library finds there. What both
// need of the floors below each has for itself, as in a real CAD: neither sees what the other holds.
#include "host.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "headless/session.h"
#include "os/console.h"
#include "text/encoding.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

std::string pluginFile;

// Null where the library can't be loaded, or lacks the entry. It stays loaded, as Creo leaves it.
template <class Entry>
Entry* pluginEntry(const char* name) {
#ifdef _WIN32
  static const HMODULE library = ::LoadLibraryW(text::fromUtf8(pluginFile).c_str());
  return library ? reinterpret_cast<Entry*>(reinterpret_cast<void*>(::GetProcAddress(library, name))) : nullptr;
#else
  static void* const library = ::dlopen(pluginFile.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) std::cerr << ::dlerror() << "\n";
  return library ? reinterpret_cast<Entry*>(::dlsym(library, name)) : nullptr;
#endif
}

bool openAndSave(headless::Session& session, const std::string& part) {
  const bool isOpen = static_cast<bool>(session.open(text::fromUtf8(part), creo::ProMdlType::part));
  session.settle();
  const bool isSaved = isOpen && session.save() == creo::ProNoError;
  session.settle();
  if (!isSaved) std::cerr << part << (isOpen ? " isn't saved\n" : " can't be opened\n");
  return isSaved;
}

int play(const std::vector<std::string>& words) {
  headless::SessionOptions options;
  pluginFile = words.at(0);
  options.textFolder = text::fromUtf8(words.at(1));
  options.modelFolder = text::fromUtf8(words.at(2));
  headless::Session session(options);
  if (session.loadPlugin() != 0) {
    std::cerr << "not started: " << text::toUtf8(session.startError()) << "\n";
    return 2;
  }
  const bool isDone =
      std::all_of(words.begin() + 3, words.end(), [&](const auto& part) { return openAndSave(session, part); });
  session.unloadPlugin();
  for (const std::wstring& line : session.messages()) std::cout << text::toUtf8(line) << "\n";
  return isDone ? 0 : 1;
}

}  // namespace

// The session calls the entries by their names.
extern "C" int user_initialize_plus(int argc, char** argv, const char* version, const char* build, wchar_t* errbuf) {
  if (auto* const start = pluginEntry<decltype(user_initialize_plus)>("user_initialize_plus"))
    return start(argc, argv, version, build, errbuf);
  constexpr std::wstring_view kFault = L"the library has no entry";
  *std::copy(kFault.begin(), kFault.end(), errbuf) = L'\0';
  return -1;
}

extern "C" void user_terminate_plus() {
  if (auto* const end = pluginEntry<decltype(user_terminate_plus)>("user_terminate_plus")) end();
}

extern "C" int playHost(int count, char** words) {
  os::printUtf8();
  try {
    return play(os::commandLineWords(count, words));
  } catch (const std::exception& fault) {
    std::cerr << fault.what() << "\n";
    return 2;
  }
}
