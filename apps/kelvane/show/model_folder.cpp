#include "kelvane/show/model_folder.h"

#include <filesystem>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {

std::wstring mountModels(const std::string& folder) {
  (void)systemFolder(folder);
  os::mounts().set(kModelsLetter, machinePath(std::filesystem::canonical(nativePath(folder))));
  return std::wstring(1, kModelsLetter) + L":\\";
}

ModelFileName modelFileName(const std::string& text) {
  const std::size_t dot = text.rfind('.');
  ModelFileName model;
  if (dot != text.npos) {
    model.name = text::upper(text::fromUtf8(text.substr(0, dot)));
    model.type = headless::modelType(text::fromUtf8(text.substr(dot + 1)));
  }
  if (model.name.empty() || model.type == creo::ProMdlType::unused) {
    throw Fault("'" + text + "' is no model's name; it ends in .PRT, .ASM or .DRW");
  }
  return model;
}

std::string label(const std::wstring& name, creo::ProMdlType type) {
  return text::toUtf8(name) + "." + text::toUtf8(creo::typeExtension(type));
}

std::wstring documentStem(const std::wstring& path) {
  const auto file = headless::documentFile(os::nameOf(path));
  return file && file->version > 0 ? path.substr(0, path.rfind(L'.')) : path;
}

FoundVersion foundVersion(const headless::SavedDocument& saved) {
  if (saved.readPath.empty()) return {documentStem(saved.path), saved.version};
  return {documentStem(saved.readPath), saved.readVersion + 1};
}

std::wstring versionBefore(const std::wstring& stem, int version) {
  // Nearly always it is the number before; numbers that were taken back leave a gap.
  for (int number = version - 1; number > 0; --number)
    if (std::wstring path = stem + L"." + std::to_wstring(number); os::files().exists(path)) return path;
  return stem;
}

headless::SessionOptions lookingAt(const std::wstring& folder) {
  headless::SessionOptions options;
  options.modelFolder = folder;
  options.withholdSaves = true;
  return options;
}

creo::ProMdl retrieved(headless::Session& session, const std::string& nameAndExtension) {
  const ModelFileName wanted = modelFileName(nameAndExtension);
  const std::size_t before = session.messages().size();
  const auto model = creo::ProMdlRetrieve(wanted.name, wanted.type);
  if (model) return model.value;
  if (model.error != creo::ProNotFound && session.messages().size() > before) {
    throw Fault(readable(session.messages()[before]));
  }
  std::vector<std::string> known;
  for (const headless::FolderDocument& document : headless::readFolder(session.options().modelFolder)) {
    known.push_back(label(document.file.name, document.file.type));
    for (const auto& instance : document.instances) known.push_back(label(instance.name, document.file.type));
  }
  throw Fault("there is no model " + label(wanted.name, wanted.type) +
              didYouMean(label(wanted.name, wanted.type), known));
}

std::string readable(std::wstring_view message) {
  return text::toUtf8(text::replaceAll(message, std::wstring(1, kModelsLetter) + L":\\", L""));
}

}  // namespace kelvane
