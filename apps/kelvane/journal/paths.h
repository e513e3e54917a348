// How the journal writes paths, so that a folder of models can be moved with its journal: those in the folder go on
// from it ("gear.prt.3"), those of the run's temp folder begin with "temp:", those of a vault with "vault:"; all others
// are whole, in the machine's form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

constexpr std::string_view kTempPrefix = "temp:", kVaultPrefix = "vault:";
constexpr std::wstring_view kJournalFolder = L"kelvane.journal\\";

class JournalPaths {
 public:
  // models: the mounted folder, "d:\"; t: is the run's temp folder. vaults: machine paths of their folders.
  explicit JournalPaths(const std::wstring& models, const std::vector<std::string>& vaults = {});

  // Nothing for what no journal is kept of: the journal itself, the temp folder but for the packages unpacked in it,
  // and of a vault its own record and those of workspaces: numbers of objects are given for good.
  [[nodiscard]] std::optional<std::string> written(std::wstring_view path) const;
  // The same for a path that nothing has, however it is spelled: just its folder is looked for, as looking for a new
  // file in a large folder costs more than all else here.
  [[nodiscard]] std::optional<std::string> writtenNew(std::wstring_view path) const;
  // The system's form again.
  [[nodiscard]] static std::wstring system(std::string_view written);
  // As a person reads it.
  [[nodiscard]] static std::string shown(std::string_view written);

 private:
  [[nodiscard]] std::optional<std::string> fromMachine(const std::string& machine) const;

  std::string models_, temp_, journal_;  // each with its closing slash
  std::vector<std::string> vaults_;
};

inline bool isOfVault(std::string_view written) { return written.starts_with(kVaultPrefix); }
// The record of a vault's object, whose write makes a change there.
bool isVaultRecord(std::string_view written);
inline bool isOfTemp(std::string_view written) { return written.starts_with(kTempPrefix); }

// "gear.prt" and 4 of "gear.prt.4", with the folder before it and in lower case; nothing for what is no version of a
// model's document.
struct WrittenVersion {
  std::string stem;
  int number = 0;
};
std::optional<WrittenVersion> writtenVersion(std::string_view written);

}  // namespace kelvane
