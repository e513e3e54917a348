#include "documents/package_rules.h"

#include <algorithm>

#include "os/paths.h"
#include "text/format.h"
#include "text/pieces.h"
#include "text/units.h"

namespace documents {
namespace {

constexpr std::size_t kShown = 200;  // units of a name in a line
constexpr wchar_t kFirstPrintable = 32;

std::wstring withName(std::wstring_view fault, const ZipMember& member) {
  return member.name.empty() ? std::wstring(fault) : text::format(L"%s: %s", fault, text::cut(member.name, kShown));
}

}  // namespace

bool leadsUp(std::wstring_view part) {
  return part.find_first_not_of(L". ") == std::wstring_view::npos && std::count(part.begin(), part.end(), L'.') > 1;
}

std::wstring_view memberFault(const ZipMember& member) {
  const std::wstring& name = member.name;
  if (name.empty()) return L"has a member without a name";
  if (member.isLink) return L"has a member that is a link";
  if (name.find(L':') != name.npos) return L"has a member with a drive";
  if (std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < kFirstPrintable; }))
    return L"has a member with a control character in its name";
  const std::wstring path = os::withBackslashes(name);
  if (path.starts_with(L'\\')) return L"has a member with an absolute path";
  const auto parts = text::split(path, L'\\');
  if (std::any_of(parts.begin(), parts.end(), &leadsUp)) return L"has a member that leaves the package's folder";
  const bool isLong =
      text::units(name) > kLongestName ||
      std::any_of(parts.begin(), parts.end(), [](std::wstring_view part) { return text::units(part) > kLongestPart; });
  return isLong ? L"has a member whose name is too long" : std::wstring_view();
}

std::wstring packageFault(const std::vector<ZipMember>& members, std::uint64_t fileSize) {
  if (members.size() > kMostMembers) return text::format(L"has more than %d members", static_cast<int>(kMostMembers));
  std::uint64_t size = 0;
  for (const ZipMember& member : members) {
    if (const std::wstring_view fault = memberFault(member); !fault.empty()) return withName(fault, member);
    if (member.packed > fileSize) return withName(L"has a member that is said to be larger than the file", member);
    // Each is bounded, so that the sum can't run over.
    size += std::min(member.size, kMostUnpacked + 1);
  }
  return size > mostUnpacked(members, fileSize) ? L"would unpack to more than is allowed" : std::wstring();
}

std::uint64_t mostUnpacked(const std::vector<ZipMember>& members, std::uint64_t fileSize) {
  std::uint64_t packed = 0;
  for (const ZipMember& member : members) packed += std::min(member.packed, fileSize);
  // Members may claim the same packed bytes, so the file's own size is a border as well.
  return std::min<std::uint64_t>(kMostUnpacked, std::max<std::uint64_t>(1, std::min(packed, fileSize)) * kMostRatio);
}

}  // namespace documents
