// The PDM servers of a session: vaults, each with a workspace whose models lie in the session's folder of models. The
// operations of creo/ProServer.h stand on these functions and give their results; a reason that isn't a conflict's
// description goes to the message area.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "creo/ProServer.h"
#include "headless/model/models.h"
#include "headless/vault/vault.h"

namespace headless {

struct VaultConnection {
  std::wstring folder;  // of the vault
  std::wstring workspace, user;
  int lockWait = 3000;  // milliseconds that a change waits for another process
};

class Servers {
 public:
  Servers(Models& models, std::wstring modelFolder, bool withhold)
      : models_(models), modelFolder_(std::move(modelFolder)), withhold_(withhold) {}

  // The first one that is connected becomes active. Why it can't be; empty for success.
  std::wstring connect(const VaultConnection& connection);
  // What a session that withholds would have changed in its vaults: "check in BRACKET.PRT as A.2".
  [[nodiscard]] const std::vector<std::wstring>& withheld() const { return withheld_; }

  [[nodiscard]] creo::Got<std::wstring> active() const;
  creo::ProError activate(const std::wstring& alias);
  [[nodiscard]] creo::Got<std::wstring> workspace(const std::wstring& alias) const;
  [[nodiscard]] creo::Got<creo::ProServerStatus> status(const std::wstring& alias, const std::wstring& workspace,
                                                        const std::wstring& file) const;
  [[nodiscard]] creo::Got<std::wstring> aliasedUrl(const std::wstring& file) const;
  [[nodiscard]] creo::Got<std::wstring> url(const std::wstring& aliased) const;
  creo::ProError checkOut(const Model& model, bool instances, std::wstring& conflicts);
  creo::ProError checkIn(const Model& model, const std::wstring& location, std::wstring& conflicts);
  creo::ProError removeAll(std::wstring& conflicts);
  creo::ProError addFile(const std::wstring& source, const std::wstring& target, const std::wstring& primary);

  // The workspace's document becomes that of the newest iteration; a model in memory stays as it is. ProConflicts: the
  // folder's document has changes, or is none of the workspace.
  creo::ProError refresh(const ObjectName& name, std::wstring& conflicts);

  // ---- for the models
  // A document was read: does the workspace hold it, and may it be changed?
  void place(ModelDocument& document) const;
  // Brings an object of the vault into the workspace's folder. False: there is none.
  bool fetch(const std::wstring& name, creo::ProMdlType type);
  // "//plm/design/": where the active workspace's models lie, behind the device "wtws".
  [[nodiscard]] std::wstring path() const;
  // True for that place with its device, in any spelling of its separators.
  [[nodiscard]] bool isPlace(std::wstring_view path) const;

 private:
  struct Server {
    std::unique_ptr<Vault> vault;
    WorkspaceName who;
    int lockWait = 0;
    [[nodiscard]] std::wstring alias() const;
  };
  [[nodiscard]] const Server* of(const std::wstring& alias) const;
  // The file's object: an instance's is its generic's.
  [[nodiscard]] std::optional<ObjectName> objectOf(const std::wstring& file) const;
  // The version of the newest document in the folder of models; 0 for none.
  [[nodiscard]] int newestHere(const ObjectName& name) const;
  VaultAnswer bring(const Server& server, const ObjectName& name, const ObjectRecord& object);
  void placeAll() const;
  // Tells the reason of anything but a conflict, whose description is handed over.
  creo::ProError ended(const VaultAnswer& answer, std::wstring* conflicts) const;
  void note(const std::wstring& did);

  Models& models_;
  std::wstring modelFolder_;
  bool withhold_;
  std::vector<Server> servers_;
  std::size_t active_ = 0;
  std::vector<std::wstring> withheld_;
};

}  // namespace headless
