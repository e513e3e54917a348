// Message files of the application: four lines a message, the key behind the mark of its class, the text, and two that
// begin with "#".
#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>

namespace headless {

class MessageFiles {
 public:
  MessageFiles(std::wstring textFolder, std::wstring language)
      : folder_(std::move(textFolder)), language_(std::move(language)) {}
  // The text of a key; null: no such file or key. A file is looked for in the language's folder, then in the text
  // folder itself, and read once.
  const std::wstring* find(const std::wstring& file, const std::wstring& key);

 private:
  using Texts = std::unordered_map<std::wstring, std::wstring>;
  Texts read(const std::wstring& file) const;
  std::wstring folder_, language_;
  std::map<std::wstring, Texts> files_;
};

}  // namespace headless
