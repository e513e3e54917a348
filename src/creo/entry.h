// The two functions by which Creo starts and ends the plug-in; the only names that it exports.
#pragma once

#ifdef _WIN32
#define KVD_EXPORTED __declspec(dllexport)
#else
#define KVD_EXPORTED __attribute__((visibility("default")))
#endif

extern "C" {
// version, build: Creo's own, as "Creo 8.0". errbuf: room for kErrorBufferSize wide characters that Creo shows when the
// start fails. 0: started; -1: not.
KVD_EXPORTED int user_initialize_plus(int argc, char** argv, const char* version, const char* build, wchar_t* errbuf);
KVD_EXPORTED void user_terminate_plus();
}

namespace creo {
constexpr int kErrorBufferSize = 80;
}
