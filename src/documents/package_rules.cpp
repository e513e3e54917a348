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

text::Fault withName(std::wstring_view fault, const ZipMember& member) {
  if (member.name.empty()) return {std::wstring(fault)};
  return {text::format(L"%s: %s", fault, text::cut(member.name, kShown))};
}

}  // namespace

bool leadsUp(std::wstring_view part) {
  return part.find_first_not_of(L". ") == std::wstring_view::npos && std::count(part.begin(), part.end(), L'.') > 1;
}

text::Fault memberFault(const ZipMember& member) {
  const std::wstring& name = member.name;
  if (name.empty()) return {L"has a member without a name"};
  if (member.isLink) return {L"has a member that is a link"};
  if (name.find(L':') != name.npos) return {L"has a member with a drive"};
  if (std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < kFirstPrintable; }))
    return {L"has a member with a control character in its name"};
  const std::wstring path = os::withBackslashes(name);
  if (path.starts_with(L'\\')) return {L"has a member with an absolute path"};
  const auto parts = text::split(path, L'\\');
  if (std::any_of(parts.begin(), parts.end(), &leadsUp)) return {L"has a member that leaves the package's folder"};
  const bool isLong =
      text::units(name) > kLongestName ||
      std::any_of(parts.begin(), parts.end(), [](std::wstring_view part) { return text::units(part) > kLongestPart; });
  if (isLong) return {L"has a member whose name is too long"};
  return {};
}

text::Fault packageFault(const std::vector<ZipMember>& members, std::uint64_t fileSize) {
  if (members.size() > kMostMembers) return {text::format(L"has more than %d members", static_cast<int>(kMostMembers))};
  std::uint64_t size = 0;
  for (const ZipMember& member : members) {
    if (const text::Fault fault = memberFault(member)) return withName(fault.what, member);
    if (member.packed > fileSize) return withName(L"has a member that is said to be larger than the file", member);
    // Each is bounded, so that the sum can't run over.
    size += std::min(member.size, kMostUnpacked + 1);
  }
  if (size > mostUnpacked(members, fileSize)) return {L"would unpack to more than is allowed"};
  return {};
}

std::uint64_t mostUnpacked(const std::vector<ZipMember>& members, std::uint64_t fileSize) {
  std::uint64_t packed = 0;
  for (const ZipMember& member : members) packed += std::min(member.packed, fileSize);
  // Members may claim the same packed bytes, so the file's own size is a border as well.
  return std::min<std::uint64_t>(kMostUnpacked, std::max<std::uint64_t>(1, std::min(packed, fileSize)) * kMostRatio);
}

}  // namespace documents
