#include "headless/model/one_version.h"

#include "headless/model/document.h"

namespace headless {
namespace {

std::wstring pathOf(const ModelDocument& document) { return document.saveFolder() + document.fileStem; }

}  // namespace

OneVersion::OneVersion() { current_ = this; }
OneVersion::~OneVersion() { current_ = nullptr; }

void OneVersion::remember(const ModelDocument& document) {
  if (current_ && document.writtenVersion > 0) current_->written_[pathOf(document)] = document.writtenVersion;
}

void OneVersion::recall(ModelDocument& document) {
  if (!current_) return;
  const auto written = current_->written_.extract(pathOf(document));
  if (written && written.mapped() == document.version) document.writtenVersion = document.version;
}

void handOut(ModelDocument& document) { document.writtenVersion = 0; }

}  // namespace headless
