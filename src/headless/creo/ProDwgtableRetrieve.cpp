// Stored tables that come onto drawings.
#include <algorithm>
#include <cmath>

#include "creo/ProDwgtable.h"
#include "headless/creo/drawing_operation.h"
#include "headless/exports/export_file.h"
#include "headless/model/symbols.h"
#include "headless/store/faults.h"
#include "headless/store/table_file.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::TableRecord;
using State = headless::Session::State;

namespace {

bool isFileName(std::wstring_view name) {
  return !name.empty() && name.find_first_of(L"\\/:*?\"<>|") == name.npos &&
         std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
}

Got<TableRecord> readFrom(const State& state, const std::wstring& folder, const std::wstring& name) {
  const std::wstring path = os::joined(headless::exportPath(state.models, folder), name + L".tbl");
  if (!os::files().exists(path) || os::files().isFolder(path)) return ProNotFound;
  TableRecord table;
  const auto bytes = os::files().read(path);
  const headless::JsonFault fault =
      bytes ? headless::readTable(bytes.value, text::toUtf8(name), table) : headless::JsonFault();
  if (bytes && !fault) return table;
  state.models.message(bytes ? headless::cantRead(path, fault) : headless::cantRead(path, bytes.error));
  return ProGeneralError;
}

}  // namespace

Got<ProDwgtable> ProDwgtableRetrieve(ProMdl drawing, const std::wstring& name, const std::wstring& folder, int version,
                                     const ProPoint& origin) {
  return headless::onDrawing("ProDwgtableRetrieve", drawing, [&](State& state, Model& m) -> Got<ProDwgtable> {
    if (!isFileName(name) || !std::isfinite(origin.x) || !std::isfinite(origin.y)) return ProBadInputs;
    if (version != kAnyTableVersion) return ProNotFound;
    auto table = readFrom(state, folder, name);
    if (!table) return table.error;
    auto& tables = m.document->record.tables;
    table.value.id = headless::nextId(tables);
    if (table.value.id == 0) return ProGeneralError;
    headless::SegmentRecord& segment = table.value.segments.emplace_back();
    segment.sheet = headless::currentSheetOf(*m.document);
    segment.position.x = origin.x;
    segment.position.y = origin.y;
    tables.push_back(std::move(table.value));
    m.document->touch(nullptr);
    return ProDwgtable{m.handle, tables.back().id};
  });
}

}  // namespace creo
