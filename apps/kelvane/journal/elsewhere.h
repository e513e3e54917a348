// Which places of a journal lie outside its folder of models, and whose records are believed there. Whoever hands over
// a folder of models hands over its journal, too, and could have it name files anywhere.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "kelvane/journal/book.h"
#include "os/files.h"

namespace kelvane {

// The end of a line on a path that isn't taken back.
constexpr std::string_view kNotFromHere =
    " lies outside the folder of models, and no run of this user's wrote that record; --elsewhere takes it back, too";

class Elsewhere {
 public:
  // models: the mounted folder, "d:\".
  explicit Elsewhere(const std::wstring& models);
  // Does a path of a journal lead out of the folder of models, its links followed? All of vaults and of packages that
  // are unpacked lies elsewhere.
  [[nodiscard]] bool is(const std::string& written) const;
  // The same for what a run is about to tell, whose names are spelled as the disk has them: folders are asked for their
  // links once. isNew: the run itself made, or makes, what has that name.
  [[nodiscard]] bool isOfRun(const std::string& written, bool isNew);

 private:
  [[nodiscard]] bool isInside(const std::string& real) const;
  std::string models_;                                    // its real path, with its closing slash
  std::unordered_map<std::string, std::string> folders_;  // as written, and behind its links
};

// Signs the records of deeds elsewhere with a key of the user's own (HMAC of RFC 2104 with SHA-256), which lies beside
// what is kept for packages and is made when the first one is signed. A seal holds for one deed of one journal, with
// what is kept for it.
class Seals {
 public:
  // id: the member of that journal's record `begin`; kept: the folder of what it keeps. disk isn't owned.
  Seals(std::string id, std::wstring kept, os::Files& disk) : id_(std::move(id)), kept_(std::move(kept)), disk_(disk) {}

  // Empty where this user has no key and none can be made: then nobody will believe the record without being told to.
  [[nodiscard]] std::string of(const Deed& deed);
  // Was it signed with this user's key, and is what is kept for it as it was then?
  [[nodiscard]] bool holds(const Deed& deed);

 private:
  [[nodiscard]] std::string sealBy(const std::string& key, const Deed& deed) const;
  [[nodiscard]] const std::string& key(bool isToBeMade);

  std::string id_;
  std::wstring kept_;
  os::Files& disk_;
  std::string key_;
};

// The paths elsewhere that a journal names in records which aren't signed. A rename from elsewhere into the folder, or
// out of it, is one too: its content lay where others write.
std::set<std::string> notFromHere(const Book& book, const RunJournal& journal);

}  // namespace kelvane
