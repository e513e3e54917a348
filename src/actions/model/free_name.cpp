#include "actions/model/free_name.h"

#include "creo/ProMdl.h"
#include "creo/ProMdlCopy.h"
#include "text/format.h"

namespace actions {
namespace {

// Numbers in a row that other models may have taken: those that earlier actions erased have theirs until control is
// back.
constexpr int kMostTaken = 10'000;

constexpr std::wstring_view kAside = L"OSTELO_WRITEOUT_";

}  // namespace

bool isAside(std::wstring_view name) { return name.starts_with(kAside); }

creo::Got<std::wstring> renameAside(creo::ProMdl model, int& number) {
  for (int tries = 0; tries < kMostTaken; ++tries) {
    std::wstring name = text::format(L"%s%d", kAside, number++);
    const creo::ProError result = creo::ProMdlRename(model, name);
    if (result == creo::ProNoError) return name;
    if (result != creo::ProExists) return result;
  }
  return creo::ProExists;
}

creo::ProError eraseAside(creo::ProMdl model, int& number) {
  const auto name = creo::ProMdlNameGet(model);
  const bool moved = name && renameAside(model, number);
  const creo::ProError result = creo::ProMdlErase(model);
  if (result != creo::ProNoError && moved) creo::ProMdlRename(model, name.value);
  return result;
}

creo::ProError eraseMade(creo::ProMdl model) {
  static int number = 0;  // those that went before have theirs until control is back
  const auto file = creo::ProMdlOriginGet(model);
  const bool wasSaved = !file || !file.value.empty();
  return wasSaved ? creo::ProMdlErase(model) : eraseAside(model, number);
}

}  // namespace actions
