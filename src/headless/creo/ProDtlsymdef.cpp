// Symbol definitions that come from files.
#include "creo/ProDtlsym.h"
#include "headless/creo/drawing_operation.h"
#include "headless/exports/export_file.h"
#include "headless/model/symbols.h"
#include "headless/store/faults.h"
#include "headless/store/symbol_file.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace creo {

using headless::Model;
using headless::SymbolDefinitionRecord;
using State = headless::Session::State;

namespace {

constexpr std::wstring_view kSymbolDirectory = L"@pro_symbol_dir@";

bool isFileName(const std::wstring& name) {
  return !name.empty() && name.find_first_of(L"\\/:*?\"<>|") == name.npos &&
         std::none_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; });
}

std::vector<std::wstring> foldersFor(const State& state, const std::wstring& folder) {
  auto folders = state.configuration.values(L"pro_symbol_dir");
  std::erase(folders, L"");
  if (folder.empty() || text::equalNoCase(folder, kSymbolDirectory)) {
    folders.push_back(state.models.folders().working());
    return folders;
  }
  const std::wstring fromWorking = headless::exportPath(state.models, folder);
  const bool isWhole = fromWorking == os::withBackslashes(folder);
  if (isWhole || folders.empty()) return {fromWorking};
  for (std::wstring& base : folders) base = os::joined(headless::exportPath(state.models, base), folder);
  return folders;
}

// Reads the first file of that name; path: which one it was.
Got<SymbolDefinitionRecord> readFrom(const State& state, const std::wstring& folder, const std::wstring& name) {
  for (const std::wstring& directory : foldersFor(state, folder)) {
    const std::wstring path = os::joined(directory, name + L".sym");
    if (!os::files().exists(path) || os::files().isFolder(path)) continue;
    SymbolDefinitionRecord definition;
    const auto bytes = os::files().read(path);
    const headless::JsonFault fault =
        bytes ? headless::readSymbol(bytes.value, text::toUtf8(name), definition) : headless::JsonFault();
    if (bytes && !fault) {
      definition.path = text::toUtf8(os::asFolder(directory));
      return definition;
    }
    state.models.message(bytes ? headless::cantRead(path, fault) : headless::cantRead(path, bytes.error));
    return ProGeneralError;
  }
  return ProNotFound;
}

// The definition takes the place of the one that has its name.
int put(Model& drawing, SymbolDefinitionRecord&& fresh, SymbolDefinitionRecord* there) {
  auto& definitions = drawing.document->record.symbolDefinitions;
  if (!there) {
    fresh.id = headless::nextId(definitions);
    if (fresh.id == 0) return 0;
    definitions.push_back(std::move(fresh));
    drawing.document->touch(nullptr);
    return definitions.back().id;
  }
  fresh.id = there->id;
  fresh.name = there->name;
  if (headless::symbolText(fresh) != headless::symbolText(*there)) drawing.document->touch(nullptr);
  *there = std::move(fresh);
  return there->id;
}

}  // namespace

Got<ProDtlsymdef> ProDrawingDtlsymdefRetrieve(ProMdl drawing, const std::wstring& folder, const std::wstring& name,
                                              int version, bool update) {
  return headless::onDrawing("ProDrawingDtlsymdefRetrieve", drawing, [&](State& state, Model& m) -> Got<ProDtlsymdef> {
    if (!isFileName(name)) return ProBadInputs;
    if (version != kNewestVersion) return ProNotFound;
    SymbolDefinitionRecord* const there = headless::symbolDefinitionNamed(*m.document, text::toUtf8(name));
    if (there && !update) return ProExists;
    auto fresh = readFrom(state, folder, name);
    if (!fresh) return fresh.error;
    const int id = put(m, std::move(fresh.value), there);
    if (id == 0) return ProGeneralError;
    return ProDtlsymdef{m.handle, id};
  });
}

}  // namespace creo
