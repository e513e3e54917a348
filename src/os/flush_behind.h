// Bringing files to the disk: what the writing of files asks of what is in force (os/durable.h). Paths are in the
// machine's form.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "os/written_file.h"

namespace os {

enum class FlushTime {
  beforeName,  // the file may take its name when the disk has its content
  behind,      // it takes its name at once
  never,       // the same, and nobody waits for it
};
// For a file that is about to take a name. old: what has that name; null: nothing, or nothing that matters.
FlushTime flushTime(const FileId* old);

// Waits until the disk has it. onDisk: how; path: what is told of it.
std::error_code flushed(const std::string& path, const std::function<std::error_code()>& onDisk);
// The same for names of a folder, where writes are waited for; elsewhere it comes behind or never. A folder that can't
// be flushed is no failure of what was written: the content is in place.
void flushFolder(const std::string& folder, FlushTime when);
// The file has its name now, and the disk is to get both. old: what it has replaced; null: nothing.
void flushBehind(std::unique_ptr<WrittenFile> file, std::string path, const FileId* old);

// What is about to happen to files that may still wait for the disk, and what has. Each does nothing where no file
// waits.
// A file takes the name of another one, null for none, that may have been there before: its content must be safe then.
std::error_code flushBeforeReplacing(const std::string& path, const FileId* replaced);
void nameHasChanged(const std::string& from, const std::string& to, const FileId* replaced);
void fileHasGone(const FileId& gone);

}  // namespace os
