// A model in memory: a document, or a row of a family table over its generic's document.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "creo/ProMdl.h"
#include "headless/model/document.h"

namespace headless {

// A model as its handle stands for it.
struct Model {
  creo::ProMdl handle;
  std::shared_ptr<ModelDocument> document;
  RowRecord* row = nullptr;  // of an instance
  std::wstring name;         // upper case
  [[nodiscard]] creo::ProMdlType type() const { return document->type; }
};

}  // namespace headless
