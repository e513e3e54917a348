#include "os/guarded_place.h"

#include <utility>

#include "os/links.h"
#include "os/machine_path.h"
#include "os/surroundings.h"
#include "os/temporary_name.h"

namespace os {
namespace {

thread_local const PlaceGuard* guarded = nullptr;

}  // namespace

PlaceGuard::PlaceGuard(std::wstring_view path, std::string real)
    : given_(mounts().machine(path)), real_(std::move(real)), outer_(std::exchange(guarded, this)) {}
PlaceGuard::~PlaceGuard() { guarded = outer_; }

bool isAsGuarded(const std::string& path, const std::function<std::string()>& opened) {
  for (const PlaceGuard* guard = guarded; guard; guard = guard->outer_) {
    if (path == guard->given_ || path == guard->real_) return opened() == guard->real_;
    // A temporary file beside it, which is then renamed to it.
    const std::string folder = parentOf(path);
    const bool isBeside = folder == parentOf(guard->given_) || folder == parentOf(guard->real_);
    if (isBeside && isTemporaryName(lastName(path))) return parentOf(opened()) == parentOf(guard->real_);
  }
  return true;
}

}  // namespace os
