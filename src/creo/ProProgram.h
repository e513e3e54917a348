// A solid's Pro/PROGRAM as a text file; ProInputFileRead takes it back.
#pragma once

#include "creo/ProUtil.h"

namespace creo {

// Writes the program's text (ProInputFileType::program). path: with its ending, without a version; Creo's own operation
// knows names alone. ProBadInputs: neither part nor assembly, or another kind of file; ProGeneralError: the file can't
// be written.
ProError ProOutputFileWrite(ProMdl solid, const std::wstring& path, ProInputFileType type);

}  // namespace creo
