// The files of a run that writes no model.
#pragma once

#include <memory>
#include <set>
#include <string>

#include "os/files_wrapper.h"

namespace kelvane {

// Documents of models are neither written, removed nor renamed, by whatever name or link they are reached; the first
// attempt on each file is an error line. The temp folder is free, where models of a package are unpacked.
class ReadOnlyFiles : public os::FilesWrapper {
 public:
  explicit ReadOnlyFiles(std::shared_ptr<os::Files> under);
  std::error_code write(std::wstring_view path, std::string_view bytes) override;
  std::error_code create(std::wstring_view path, std::string_view bytes) override;
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override;
  std::error_code remove(std::wstring_view path) override;
  std::error_code rename(std::wstring_view from, std::wstring_view to) override;

 private:
  // read_only_file_system for a document of a model, told.
  std::error_code kept(std::wstring_view path);

  std::shared_ptr<os::Files> owned_;
  std::string temp_;
  std::set<std::string> told_;  // what the documents' paths lead to
};

}  // namespace kelvane
