#include "headless/model/flat_memory.h"

#include "os/surroundings.h"

namespace headless {

FlatMemory::FlatMemory(std::size_t most) : keep(most), ahead(os::surroundings().files) { current_ = this; }
FlatMemory::~FlatMemory() { current_ = nullptr; }

void FlatMemory::noteArrived(const Model& model) {
  if (!current_ || model.row) return;
  current_->arrived.push_back(model.handle);
  current_->bytes += model.document->textSize;
}

std::optional<ReadAhead::Document> FlatMemory::takeAhead(const std::wstring& path) {
  return current_ ? current_->ahead.take(path) : std::nullopt;
}

}  // namespace headless
