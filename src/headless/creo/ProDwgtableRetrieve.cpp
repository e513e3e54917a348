// Stored tables that come onto drawings.
#include <algorithm>
#include <cmath>

#include "creo/ProDwgtable.h"
#include "headless/creo/drawing_operation.h"
#include "headless/model/symbols.h"
#include "headless/store/faults.h"
#include "headless/store/table_file.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace creo {

using headless::Model;
using headless::TableRecord;
using State = headless::Session::State;

namespace {

constexpr std::wstring_view kEnding = L".tbl";

// "TITLE" and "title.tbl" name the same file. Empty: no name of a file.
std::wstring stem(std::wstring_view name) {
  if (name.size() > kEnding.size() && text::equalNoCase(name.substr(name.size() - kEnding.size()), kEnding))
    name.remove_suffix(kEnding.size());
  const bool isName = name.find_first_of(L"\\/:*?\"<>|") == name.npos &&
                      std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
  return isName ? std::wstring(name) : std::wstring();
}

Got<TableRecord> readFrom(const State& state, const std::wstring& folder, const std::wstring& name) {
  const std::wstring path = os::joined(folder.empty() ? state.models.folders().working() : folder, name + L".tbl");
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
    const std::wstring file = stem(name);
    if (file.empty() || !std::isfinite(origin.x) || !std::isfinite(origin.y)) return ProBadInputs;
    if (version != kAnyTableVersion) return ProNotFound;
    auto table = readFrom(state, folder, file);
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
