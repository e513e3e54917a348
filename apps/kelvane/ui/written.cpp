#include "kelvane/ui/written.h"

#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane::view {
namespace {

constexpr std::size_t kMostListed = 500, kMostOpened = 20;
constexpr std::wstring_view kTemp = L"t:\\", kUnpacked = L"t:\\open_kvz_";

}  // namespace

std::error_code Opener::doOpen(std::wstring_view path) {
  opened_.emplace_back(path);
  return {};
}

Written::Written()
    : disk_(os::surroundings().files),
      processes_(os::surroundings().processes),
      recorded_(std::make_shared<RecordedFiles>(disk_)),
      opener_(std::make_shared<Opener>(processes_)) {
  os::surroundings().files = recorded_;
  os::surroundings().processes = opener_;
}

Written::~Written() {
  os::surroundings().files = disk_;
  os::surroundings().processes = processes_;
}

// In the temp folder the tool keeps what is its own; a list writes below its unpacked package, and logs are for people.
bool Written::isOffered(const std::wstring& path) const {
  if (models_.contains(path)) return false;
  return !path.starts_with(kTemp) || path.starts_with(kUnpacked) || os::nameOf(path).starts_with(L"kvd_log - ");
}

void Written::gather(bool kept) {
  for (const std::wstring& path : recorded_->written()) {
    if (kept && isOffered(path)) offer(path);
  }
  recorded_->forgetAll();
}

void Written::offer(const std::wstring& path) {
  if (!path.empty() && ids_.try_emplace(path, files_.size()).second) files_.push_back(path);
}

nlohmann::json Written::files() const {
  nlohmann::json list = nlohmann::json::array();
  for (std::size_t id = files_.size() > kMostListed ? files_.size() - kMostListed : 0; id < files_.size(); ++id) {
    const auto size = disk_->size(files_[id]);
    if (!size) continue;  // removed by now
    list.push_back({{"id", id},
                    {"name", text::toUtf8(os::nameOf(files_[id]))},
                    {"folder", shown(os::folderOf(files_[id]))},
                    {"size", size.value}});
  }
  return list;
}

nlohmann::json Written::opened() const {
  const std::vector<std::wstring>& all = opener_->opened();
  nlohmann::json list = nlohmann::json::array();
  for (std::size_t i = all.size() > kMostOpened ? all.size() - kMostOpened : 0; i < all.size(); ++i) {
    const auto id = ids_.find(all[i]);
    list.push_back({{"number", i + 1},
                    {"name", shown(all[i])},
                    {"id", id == ids_.end() ? nlohmann::json() : nlohmann::json(id->second)}});
  }
  return list;
}

std::optional<Written::Place> Written::place(std::size_t id) const {
  if (id >= files_.size() || !disk_->exists(files_[id]) || disk_->isFolder(files_[id])) return std::nullopt;
  return Place{shown(files_[id]), text::toUtf8(os::nameOf(files_[id]))};
}

}  // namespace kelvane::view
