// What a run stands on: the folder of models, locked; the package alone in a package folder; a configuration.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "headless/session.h"
#include "headless/vault/servers.h"
#include "kelvane/run/answers.h"
#include "kelvane/run/options.h"
#include "os/lock.h"

namespace kelvane {

using FolderLocks = std::vector<std::unique_ptr<os::FileLock>>;

// Letters of a run: d: models, p: packages, t: temp folder, i: what is installed.
struct RunPlace {
  std::wstring models;   // "d:\"
  std::string package;   // "standards.kvz"
  std::string list;      // "clean.xml"
  std::string listSum;   // checksum of its bytes
  bool hasEnds = false;  // the list has actions in Head or Foot
  std::string filter;    // empty: none
  std::vector<std::pair<std::wstring, std::wstring>> creoOptions;
  std::vector<headless::VaultConnection> vaults;
  std::vector<Answer> answers;  // to the list's questions
  FolderLocks locks;
  // Lists are held to what is granted, by the options, and for this package by `kelvane trust`.
  bool isConfined = false;
  std::vector<os::Need> granted, denied;
  os::Grants beforehand;          // these and what else is open to lists, as far as it is known before the run
  std::string packageSum;         // SHA-256 of the .kvz that was read and judged; empty: a folder or none
  std::vector<os::Need> lacking;  // what the package needs, as far as it can be told, and isn't granted
  std::string trustFault;         // why what is kept can't be read, where nothing is confined; else empty
};

// What works on a folder's journals stands on: the folder, locked as a run locks it, and the run's temp folder.
struct JournalPlace {
  std::wstring models;  // "d:\"
  FolderLocks locks;
};

// Checks what was asked and puts everything into its place; nothing has run yet. A Fault when something isn't there or
// another run works on the folder.
RunPlace prepareRun(const RunOptions& options);
// The same without a list, and without a package where the options name none: triggers then take theirs from the
// package folder of the configuration.
RunPlace prepareWatch(const RunOptions& options);

// A Fault when there is no such folder or a run works on it.
JournalPlace prepareJournal(const std::string& models);

// The session of such a place.
headless::SessionOptions sessionOptions(const RunOptions& options, const RunPlace& place);

}  // namespace kelvane
