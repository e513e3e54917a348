// How many versions of a document the session's saves leave.
#pragma once

#include <string>
#include <unordered_map>

namespace headless {

class ModelDocument;

// For as long as one lives, a save of a document that the session has written goes into the version that it wrote, so
// that it leaves one new version however often it saves, also where the document was out of memory in between. A
// version that another program followed by its own, or that was handed out, stays: then a further one comes.
class OneVersion {
 public:
  OneVersion();
  ~OneVersion();
  OneVersion(const OneVersion&) = delete;
  OneVersion& operator=(const OneVersion&) = delete;

  static bool isWanted() { return current_ != nullptr; }
  // The document is about to leave the memory.
  static void remember(const ModelDocument& document);
  // The document was read again.
  static void recall(ModelDocument& document);

 private:
  static inline OneVersion* current_ = nullptr;
  std::unordered_map<std::wstring, int> written_;  // what the session wrote last, by path without the number
};

// What the session wrote last went to others by its number (checked in, copied, backed up): it is replaced no more.
void handOut(ModelDocument& document);

}  // namespace headless
