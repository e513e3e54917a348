#include "kelvane/journal/elsewhere.h"

#include <charconv>
#include <filesystem>

#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/random_digits.h"
#include "os/digest.h"
#include "os/links.h"
#include "os/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kKeyFile = "/kelvane/journal.key";
constexpr std::size_t kKeyDigits = 64;  // as many as a block of SHA-256 has bytes

std::string bytesOf(std::string_view hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    unsigned char byte = 0;
    std::from_chars(hex.data() + i, hex.data() + i + 2, byte, 16);
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

// RFC 2104, for a key of one block.
std::string hmac(const std::string& key, std::string_view text) {
  constexpr unsigned char kInner = 0x36, kOuter = 0x5c;
  const auto padded = [&key](unsigned char pad) {
    std::string block = key;
    for (char& c : block) c = static_cast<char>(static_cast<unsigned char>(c) ^ pad);
    return block;
  };
  return os::sha256OfBytes(padded(kOuter) + bytesOf(os::sha256OfBytes(padded(kInner) + std::string(text))));
}

// Pieces that can't be taken for others, however they are put together.
void addPart(std::string& text, std::string_view piece) {
  text.append(std::to_string(piece.size())).append(":").append(piece);
}

void addContent(std::string& text, const std::optional<Content>& content) {
  addPart(text, content ? std::to_string(content->size) + " " + content->sum + " " + content->kept : "none");
}

// Empty where there is none, or one that others may have put there.
std::string readKey(os::Files& disk, const std::string& path) {
  if (path.empty() || os::isAnybodys(path)) return {};
  std::string key = disk.read(systemPath(path)).value;
  if (key.size() != kKeyDigits) key.clear();
  return key;
}

// Written where nobody else can read it, and then given its name at once: another run may be making one.
void makeKey(os::Files& disk, const std::string& path) {
  if (path.empty()) return;
  constexpr std::size_t kNameDigits = 16;
  const std::string unfinished = path + "." + randomDigits(kNameDigits);
  const std::wstring target = systemPath(unfinished);
  if (disk.createFolders(os::folderOf(target)) || disk.create(target, {})) return;
  std::error_code error;
  fs::permissions(nativePath(unfinished), fs::perms::owner_read | fs::perms::owner_write, error);
  if (!error) {
    const auto opened = disk.append(target);
    error = opened ? opened.value->write(randomDigits(kKeyDigits)) : opened.error;
  }
  if (!error) (void)os::addName(target, systemPath(path));
  (void)disk.remove(target);
}

}  // namespace

Elsewhere::Elsewhere(const std::wstring& models) : models_(os::machineBehindLinks(models) + "/") {}

bool Elsewhere::isInside(const std::string& real) const { return real.starts_with(models_) || real + "/" == models_; }

bool Elsewhere::is(const std::string& written) const {
  return isOfVault(written) || isOfTemp(written) || !isInside(os::machineBehindLinks(JournalPaths::system(written)));
}

bool Elsewhere::isOfRun(const std::string& written, bool isNew) {
  const std::size_t start = written.rfind('/') + 1;
  const std::string name = written.substr(start);
  const bool isPlain = !name.empty() && name != "." && name != "..";
  if (!isPlain || isOfVault(written) || isOfTemp(written)) return is(written);
  const auto [at, isUnknown] = folders_.try_emplace(written.substr(0, start));
  if (isUnknown) at->second = os::machineBehindLinks(os::folderOf(JournalPaths::system(written)));
  const std::string real = at->second + "/" + name;
  std::error_code error;
  return !isNew && fs::is_symlink(nativePath(real), error) ? is(written) : !isInside(real);
}

const std::string& Seals::key(bool isToBeMade) {
  if (!key_.empty()) return key_;
  const std::string folder = configurationFolder();
  const std::string path = folder.empty() ? folder : folder + kKeyFile;
  key_ = readKey(disk_, path);
  if (!key_.empty() || !isToBeMade) return key_;
  makeKey(disk_, path);
  return key_ = readKey(disk_, path);  // perhaps another run was sooner
}

std::string Seals::sealBy(const std::string& key, const Deed& deed) const {
  std::string text;
  addPart(text, id_);
  for (const int number : {static_cast<int>(deed.kind), deed.number}) addPart(text, std::to_string(number));
  for (const std::string& path : {deed.path, deed.to}) addPart(text, path);
  addContent(text, deed.had);
  // An `append` is signed once more when it is closed.
  addContent(text, deed.now);
  if (deed.had && !deed.had->kept.empty()) {
    const auto bytes = disk_.read(kept_ + text::fromUtf8(deed.had->kept));
    if (!bytes) return {};
    addPart(text, os::sha256OfBytes(bytes.value));
  }
  return hmac(key, text);
}

std::string Seals::of(const Deed& deed) {
  const std::string& own = key(true);
  return own.empty() ? own : sealBy(own, deed);
}

bool Seals::holds(const Deed& deed) {
  const std::string& own = key(false);
  return !own.empty() && !deed.seal.empty() && sealBy(own, deed) == deed.seal;
}

std::set<std::string> notFromHere(const Book& book, const RunJournal& journal) {
  const Elsewhere elsewhere(book.models());
  Seals seals(memberText(journal.begin, "id"), book.keptOf(journal.run), os::files());
  std::set<std::string> paths;
  for (const Deed& deed : journal.deeds) {
    const bool isFrom = elsewhere.is(deed.path);
    const bool isTo = deed.to.empty() ? isFrom : elsewhere.is(deed.to);
    if (isFrom != isTo || (isFrom && !seals.holds(deed)))
      for (const std::string& path : {deed.path, deed.to})
        if (!path.empty() && elsewhere.is(path)) paths.insert(path);
  }
  return paths;
}

}  // namespace kelvane
