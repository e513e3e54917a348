// What a confined list may do outside its models and its package, named as the resource that it needs: a program, a
// server, a folder, a variable of the environment, the clipboard.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace os {

enum class Permission : std::uint8_t { run, net, read, write, env, clipboard };
inline constexpr std::array kPermissions = {Permission::run,   Permission::net, Permission::read,
                                            Permission::write, Permission::env, Permission::clipboard};
// "run", "net", ...
std::wstring_view wordOf(Permission permission);

// resource: a program's name or path; a server's name, with a port or without; a folder or file in the machine's form;
// a variable's name; nothing for the clipboard.
struct Need {
  Permission permission = Permission::run;
  std::wstring resource;
  auto operator<=>(const Need&) const = default;
};
// "allow-read=/srv/templates", as it stands behind two dashes on a command line.
std::wstring grantText(const Need& need);

// The server that an address asks, in small letters: "plm.example.com", "[::1]", with the port where it has one,
// without zeros in front; empty where it names none.
std::wstring hostOf(std::string_view address);
// The same with the port that is asked, be it that of the scheme: "plm.example.com:443".
std::wstring hostAndPortOf(std::string_view address);

// Does a grant name a server so that an address can be its own? A name or an address, that of IPv6 in brackets, alone
// or with a port.
bool isServer(std::wstring_view resource);

// A command line that is one program with its arguments, as a shell takes it.
struct PlainCommand {
  std::wstring program;  // its first word, without quotes
  // False: it has what a shell would carry out beside it, as ";", "|", ">" or "$", or reads in another way than this:
  // an assignment in front, a backslash and a quote, quotes around a part of the program.
  bool isPlain = true;
};
PlainCommand plainCommand(std::wstring_view command);

class Grants {
 public:
  // A path is taken with its links followed; it holds for the folder and all below it. `deny` wins.
  void allow(const Need& need);
  void deny(const Need& need);
  // The same for lists of one package alone, by the folder that it is unpacked to, in place of what was said of it.
  void ofPackage(std::wstring_view folder, const std::vector<Need>& allowed, const std::vector<Need>& denied);

  // ---- the program's own places, which need no grant
  // A folder, in the system's form, that is read, or read and written.
  void openTo(Permission most, std::wstring_view folder);
  // What lies in an open place and isn't the list's: a file, a folder with all below it, or, with a name that ends in
  // "*", all whose names begin so. No grant opens it.
  void keepFromWriting(std::wstring_view path);
  // The folder of the package whose list runs, in place of the one before: inside what is kept its folder `reports` may
  // be written all the same, and its other files are programs that a grant of their name holds for.
  void ownPackage(std::wstring_view folder);
  // A folder of the tool whose files are such programs, too.
  void startFrom(std::wstring_view folder);

  enum class Verdict : std::uint8_t {
    own,      // one of the program's own places
    granted,  //
    refused,  // no grant names it
    denied,   // --deny-... does
    kept,     // the program's own, which no grant opens
  };
  static bool isOpen(Verdict verdict) { return verdict == Verdict::own || verdict == Verdict::granted; }
  // path: in the machine's form, its links followed.
  [[nodiscard]] Verdict mayRead(std::string_view path) const;
  [[nodiscard]] Verdict mayWrite(std::string_view path) const;
  // program: as a command line has it, a name or a path in the system's form. A grant of a name holds for that name
  // alone, and for a file so called that the package brought or that is the tool's, as long as the list can't write it;
  // a denial for every file so called.
  [[nodiscard]] Verdict mayRun(std::wstring_view program) const;
  // host: as hostOf or hostAndPortOf gives it. A grant without a port holds for all of them.
  [[nodiscard]] Verdict mayAsk(std::wstring_view host) const;
  [[nodiscard]] Verdict maySet(std::wstring_view variable) const;
  [[nodiscard]] Verdict mayPaste() const;

  // Is that need met by what was allowed, and not denied?
  [[nodiscard]] bool covers(const Need& need) const;

 private:
  struct Rule {
    Need need;
    std::string path;     // of read and write: the machine's, links followed
    std::string package;  // holds for its lists alone; empty: for all
  };
  struct Kept {
    std::string path;
    bool isStart = false;  // of a name
  };
  static Rule ruleOf(const Need& need);
  [[nodiscard]] Verdict byRules(Permission permission, const auto& matches) const;
  [[nodiscard]] Verdict byRules(Permission permission, const auto& allows, const auto& denies) const;
  [[nodiscard]] bool isStartedByName(const std::string& file) const;
  [[nodiscard]] bool isKept(std::string_view path) const;
  [[nodiscard]] Verdict mayTouch(Permission permission, std::string_view path) const;

  std::vector<Rule> allowed_, denied_;
  std::vector<std::string> readable_, writable_;
  std::vector<Kept> kept_;
  std::vector<std::string> programs_;
  std::string package_, reports_;
};

}  // namespace os
