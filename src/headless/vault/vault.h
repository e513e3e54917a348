// A small PDM server in a folder: objects with revisions and iterations, their contents, who has what checked out, and
// workspaces. It knows bytes and names, no session; the program's verb and the sessions stand on it.
//
// Reading needs no lock, as each file is renamed into its place whole. Every change asks for the lock first; its last
// write is that of the object's record, so that a change that breaks off before it hasn't been.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "headless/vault/records.h"
#include "headless/vault/vault_files.h"
#include "os/lock.h"

namespace headless {

// How a request ended. reason: a conflict's description, or, with any other error, one line that names the vault.
struct VaultAnswer {
  creo::ProError error = creo::ProNoError;
  std::wstring reason;
  explicit operator bool() const { return error == creo::ProNoError; }
};
// A workspace and whose it is; both compare case-blind.
struct WorkspaceName {
  std::string user, workspace;
};
struct ObjectName {
  std::wstring name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  [[nodiscard]] std::wstring label() const;  // "BRACKET.PRT"
  [[nodiscard]] std::wstring file() const;   // "bracket.prt"
};
struct NextIteration {
  std::string revision, location;
  int iteration = 0;
};
struct ListedObject {
  ObjectRecord record;
  std::wstring fault;  // "/srv/vault/objects/a.prt.json:3: ..."; the record is empty then
};

class Vault {
 public:
  // Makes an empty vault. ProExists: the folder is a vault already; ProBadInputs: the name is none of an alias.
  static VaultAnswer create(const std::wstring& folder, const std::string& name);
  // Null with the reason. withhold: changes are kept in memory.
  static std::unique_ptr<Vault> open(const std::wstring& folder, bool withhold, VaultAnswer& answer);

  [[nodiscard]] const std::string& name() const { return record_.name; }
  [[nodiscard]] bool withholds() const { return files_.withholds(); }

  // ProNotFound: no such object; ProGeneralError: its record can't be read.
  VaultAnswer object(const ObjectName& name, ObjectRecord& into) const;
  [[nodiscard]] std::vector<ListedObject> objects() const;
  // The bytes of an iteration, by its place from 1.
  VaultAnswer content(const ObjectName& name, int iteration, std::string& into) const;
  // Files that wait in a workspace: "note.txt", and "drawing.pdf" of the object that it is to be attached to.
  [[nodiscard]] std::vector<std::wstring> filesOf(const WorkspaceName& who) const;

  // A workspace belongs to one folder of models, given in the machine's form, and is made when first opened.
  VaultAnswer openWorkspace(const WorkspaceName& who, const std::string& folder);

  // Waits so many milliseconds for another process. ProGeneralError: it still holds the lock, or there is no right to
  // write. Null without an error where changes are withheld.
  VaultAnswer lock(int wait, std::unique_ptr<os::FileLock>& into) const;

  // ---- changes; they require the lock. ProConflicts with its description, ProGeneralError where a file fails.

  // names: what is checked out: the object itself, instances. What was checked out here before stays so.
  VaultAnswer checkOut(const ObjectName& name, const WorkspaceName& who, const std::vector<std::string>& names);
  // What a check-in would make of it; location: of an object that is new.
  VaultAnswer next(const ObjectName& name, const WorkspaceName& who, const std::string& location, NextIteration& into);
  // The iteration that `next` told: its content, which the workspace has as that version. Files that wait for the
  // object become its attachments.
  VaultAnswer checkIn(const ObjectName& name, const WorkspaceName& who, const NextIteration& next,
                      std::string_view bytes, int version);
  // The workspace has the newest iteration as that version of its document.
  VaultAnswer enter(const ObjectName& name, const WorkspaceName& who, int version);
  VaultAnswer leave(const ObjectName& name, const WorkspaceName& who);
  // Takes a check-out away, whoever has it. ProNotFound: nobody has.
  VaultAnswer release(const ObjectName& name);
  // The newest content once more, as the first iteration of the next revision.
  VaultAnswer revise(const ObjectName& name, const std::string& by);
  // A file of a workspace; with a primary it is attached to that object when it is checked in.
  VaultAnswer addFile(const WorkspaceName& who, const std::wstring& fileName, std::string_view bytes,
                      const ObjectName* primary);
  // Takes away the files that wait.
  VaultAnswer dropFiles(const WorkspaceName& who);

 private:
  Vault(std::wstring folder, bool withhold) : folder_(std::move(folder)), files_(withhold) {}
  [[nodiscard]] std::wstring objectPath(const ObjectName& name) const;
  [[nodiscard]] std::wstring contentPath(const ObjectName& name, std::size_t iteration) const;
  [[nodiscard]] std::wstring workspaceFolder(const WorkspaceName& who) const;
  [[nodiscard]] std::wstring waitingFolder(const WorkspaceName& who, const ObjectName& primary) const;
  VaultAnswer write(const std::wstring& path, std::string_view bytes);
  VaultAnswer writeObject(const ObjectRecord& record);
  VaultAnswer attach(const ObjectName& name, const WorkspaceName& who, std::size_t iteration,
                     std::vector<AttachmentRecord>& into);
  VaultAnswer newNumber(int& into);

  std::wstring folder_;  // with its closing backslash
  VaultRecord record_;
  VaultFiles files_;
};

// The place of a workspace in an object's list, or null.
const MemberRecord* memberOf(const ObjectRecord& object, const WorkspaceName& who);
// True when that workspace has it checked out, and with it the model of that name.
bool isCheckedOut(const ObjectRecord& object, const WorkspaceName& who, const std::wstring& name);
// "A.2", of a place in the list of iterations from 1.
std::wstring iterationText(const ObjectRecord& object, int iteration);
// True for a text that is the name of one file and nothing else.
bool isPlainName(std::wstring_view name);

}  // namespace headless
