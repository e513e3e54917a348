// Journals that a kill or a loss of power left without an end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kelvane/journal/book.h"

namespace kelvane {

struct Recovered {
  std::string run;
  std::string package, list, listSum;
  bool wasInFoot = false;          // all of its models had had their turn
  std::vector<std::string> lines;  // what was found and done
};

// A Fault where a link lies in the journals of that folder: it would lead elsewhere what is kept there.
void requireNoLinks(const Book& book);

// Takes back what stands behind the last boundary of each, removes torn versions and temporary files, and closes the
// journal. What it would remove or replace and the run didn't write is put aside, and told. Needs the folder's lock, so
// that no run is at work. A Fault where that fails; asked again it goes on.
// mayWrite: is asked of each path, in the system's form, before anything is taken back; a path for which it says no is
// such a Fault. Whoever brought a folder of models brought its journal, too.
using MayWrite = std::function<bool(const std::wstring& path)>;
// What is touched outside the folder of models: what this user's own runs did there (elsewhere.h), else a Fault; or all
// that the journal names.
enum class Outside { own, all };
std::vector<Recovered> recoverOpenEnds(const std::wstring& models, Outside outside, const MayWrite& mayWrite = {});
// Those that it would take back. Where the folder isn't locked, one of them may be at work.
std::vector<std::string> openEnds(const std::wstring& models);

}  // namespace kelvane
