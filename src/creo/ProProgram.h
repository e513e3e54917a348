// A solid's Pro/PROGRAM as a text file; ProInputFileRead takes it back.
#pragma once

#include "creo/ProUtil.h"

namespace creo {

// Writes the program's text (ProInputFileType::program). ProBadInputs: no solid, or another kind of file;
// ProGeneralError: the file can't be written.
ProError ProOutputFileWrite(ProMdl solid, const std::wstring& path, ProInputFileType type);

}  // namespace creo
