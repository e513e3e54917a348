// What a session tells of the documents that it wrote and renamed.
#pragma once

#include <string>

#include "creo/ProMdl.h"

namespace headless {

// A model document that the session wrote, or in a dry run would have written.
struct SavedDocument {
  std::wstring name;  // "BRACKET"
  creo::ProMdlType type{};
  int version = 0;
  std::wstring path;  // of the document
  // The file that it was read from, where a backup has moved its saves to another folder; else empty.
  std::wstring readPath = {};
  int readVersion = 0;
};

// A model that got another name, with its documents, or in a dry run would have got it.
struct RenamedDocument {
  std::wstring before, now;  // "BRACKET"
  creo::ProMdlType type{};
  std::wstring pathBefore, path;  // of the newest document; empty for a model that was never saved
};

}  // namespace headless
