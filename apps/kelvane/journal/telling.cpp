#include "kelvane/journal/telling.h"

#include "kelvane/journal/vault_tail.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {

std::string whatRan(const RunJournal& journal) {
  if (journal.verb() == "undo") return "undo of " + memberText(journal.begin, "of");
  return memberText(journal.begin, "list") + " of " + memberText(journal.begin, "package");
}

std::set<std::string> modelsOf(const RunJournal& journal) {
  std::set<std::string> models;
  for (const Deed& deed : journal.deeds) {
    if (isVaultRecord(deed.path)) models.insert(vaultLabel(deed.path));
    for (const std::string* path : {&deed.path, &deed.to})
      if (const auto version = writtenVersion(*path))
        models.insert(text::toUtf8(text::upper(text::fromUtf8(version->stem.substr(version->stem.rfind('/') + 1)))));
  }
  return models;
}

}  // namespace kelvane
