// What a vault keeps of an object: a document of its own, so that a change is one file, renamed into its place.
// docs/vault.md describes the members.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "headless/store/fields.h"

namespace headless {

constexpr int kVaultFormat = 1;

struct AttachmentRecord : Open {
  std::string name;  // "drawing.pdf"
};
// The content lies in contents/ under the object's file name and the iteration's place in the list, from 1.
struct IterationRecord : Open {
  std::string revision;  // "A"
  int iteration = 0;     // within the revision, from 1
  std::string by, at;
  std::vector<AttachmentRecord> attachments;
};
struct CheckOutRecord : Open {
  std::string user, workspace, at;
  std::vector<std::string> names;  // the object itself and those of its instances that came along
};
// A workspace that holds the object: the iteration it was taken from, by place, and the version of the local document
// that has this content.
struct MemberRecord : Open {
  std::string user, workspace;
  int base = 0, version = 0;
};
struct ObjectRecord : Open {
  int format = kVaultFormat;
  int number = 0;  // never given twice
  std::string name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  std::string location;  // "/Designs"
  std::vector<IterationRecord> iterations;
  std::unique_ptr<CheckOutRecord> checkOut;
  std::vector<MemberRecord> workspaces;
};

struct VaultRecord : Open {
  int format = kVaultFormat;
  std::string name;  // alias of the server
  int objects = 0;   // the last number that was given
};
struct WorkspaceRecord : Open {
  int format = kVaultFormat;
  std::string folder;  // of its models, in the machine's form
};

JsonFault readRecord(std::string_view source, ObjectRecord& into);
JsonFault readRecord(std::string_view source, VaultRecord& into);
JsonFault readRecord(std::string_view source, WorkspaceRecord& into);
std::string writeRecord(const ObjectRecord& record);
std::string writeRecord(const VaultRecord& record);
std::string writeRecord(const WorkspaceRecord& record);

}  // namespace headless
