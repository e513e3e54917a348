// A folder of models as the verbs that only look at it need it.
#pragma once

#include <string>
#include <vector>

#include "headless/session.h"
#include "headless/store/folder.h"

namespace kelvane {

// The letter under which a run's models lie.
constexpr wchar_t kModelsLetter = L'd';

// Mounts the folder as d: and gives it in the system's form, "d:\". A Fault when there is no such folder.
std::wstring mountModels(const std::string& folder);

struct ModelFileName {
  std::wstring name;  // upper case
  creo::ProMdlType type = creo::ProMdlType::unused;
};
// "shaft.prt" taken apart; a Fault for what is no model's name.
ModelFileName modelFileName(const std::string& text);
// "SHAFT.PRT"
std::string label(const std::wstring& name, creo::ProMdlType type);

// "d:\shaft.prt" of "d:\shaft.prt.4"; a document of version 0 has no number.
std::wstring documentStem(const std::wstring& path);
// The stem and the number of the version that comes behind what the session read, for versionBefore: where a backup
// moved a model's saves, nobody had it in that folder before.
struct FoundVersion {
  std::wstring stem;
  int next = 0;
};
FoundVersion foundVersion(const headless::SavedDocument& saved);
// The path of the version before, the highest on disk below that number: "d:\shaft.prt.3" for version 4, "d:\shaft.prt"
// for version 1.
std::wstring versionBefore(const std::wstring& stem, int version);

// A session without the plug-in on a folder.
headless::SessionOptions lookingAt(const std::wstring& folder);
// The model; a Fault with the session's reason when it can't be had.
creo::ProMdl retrieved(headless::Session& session, const std::string& nameAndExtension);

// A line of the session as a person reads it: paths of the models' folder without it.
std::string readable(std::wstring_view message);

}  // namespace kelvane
