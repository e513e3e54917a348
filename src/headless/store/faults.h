// Lines that place a fault of a document.
#pragma once

#include <string>
#include <system_error>

#include "headless/store/json.h"

namespace headless {

// "d:\models\bracket.prt.3:12: 'name' must be a text"
std::wstring cantRead(const std::wstring& path, const JsonFault& fault);
// "d:\models\bracket.prt.3: can't be read: Permission denied"
std::wstring cantRead(const std::wstring& path, std::error_code error);
std::wstring cantWrite(const std::wstring& path, std::error_code error);
// "d:\models\bracket.prt.4: can't be written: the model is read-only"
std::wstring cantWriteReadOnly(const std::wstring& path);
// "d:\models\bracket.prt.4: can't be written: the model isn't checked out"
std::wstring cantWriteCheckedIn(const std::wstring& path);
// "d:\models\bracket.prt.4: another program wrote version 4 meanwhile"
std::wstring writtenMeanwhile(const std::wstring& path, int version);

// "BRACKET.PRT is erased, and its changes with it"
std::wstring erasedWithChanges(const std::wstring& model);
// The model of such a line; empty: it is another line.
std::wstring modelErasedWithChanges(const std::wstring& line);

}  // namespace headless
