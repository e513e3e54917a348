// Documents out of memory while their models stay there. Whoever lists models, counts who uses one or holds a handle
// sees no difference; who asks a model anything has its document read again from the version that it was read from or
// saved as. So a run over any number of models needs the memory of a few, and comes to the same results.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "headless/model/model.h"
#include "headless/store/read_ahead.h"

namespace headless {

class Models;  // models.h

// For as long as one lives documents leave the memory when they are put away, and come back ahead of their turn. One at
// a time; without one all stay.
class FlatMemory {
 public:
  // keep: bytes of the files of documents that may stay.
  explicit FlatMemory(std::size_t keep);
  ~FlatMemory();
  FlatMemory(const FlatMemory&) = delete;
  FlatMemory& operator=(const FlatMemory&) = delete;
  // Null without one.
  static FlatMemory* inForce() { return current_; }

  // Puts documents away, those that came first first, until the files of the others hold no more than may stay; nothing
  // where fewer than half as many bytes have come since the last time. Call it between operations, since who works on
  // a model holds its document. No notification and no line. What stays: a model that `stays` names, and a document
  // - with changes that no file has, or whose file isn't there, as behind a rename in memory,
  // - of another folder than the session's own, or whose saves a backup has moved,
  // - that shows what no file says: a representation, the status of a layer, the former model of a drawing's texts,
  // - of a family table with instances in memory, whose rows they are, of a format, and of a PDM workspace, out of
  // which
  //   the server may take files.
  void putAway(Models& models, creo::FunctionRef<bool(creo::ProMdl)> stays);
  // The model will be asked for soon: where its document isn't in memory a second thread reads it meanwhile.
  void readAhead(Models& models, std::wstring_view name, creo::ProMdlType type);

  // ---- for what brings documents in; nothing happens without one
  static void noteArrived(const Model& model);
  static std::optional<ReadAhead::Document> takeAhead(const std::wstring& path);

 private:
  static inline FlatMemory* current_ = nullptr;
  std::size_t keep_;
  std::vector<creo::ProMdl> arrived_;  // models whose documents are in memory, in the order of their coming
  std::size_t bytes_ = 0;              // of the files of those that came since some were put away
  ReadAhead ahead_;
};

// False: the document is away, and names no such model.
bool maySpeakOf(const Model& model, const std::wstring& name, creo::ProMdlType type);

}  // namespace headless
