// What the actions that make two-dimensional codes read from their tasks.
#pragma once

#include <optional>
#include <string>

#include "barcode/qr.h"
#include "engine/task.h"

namespace actions {

// The lines `value0` to `value<valuec - 1>`, joined by line feeds, in Latin-1. Nothing, with an error line: the
// variables of a line can't be replaced, a name of the model can't be read, or it holds a character beyond Latin-1.
std::optional<std::string> codeText(const engine::Task& task);

// Does the task want its code to say that the letters are Latin-1?
inline bool statesLetters(const engine::Task& task) { return task.isTrue(L"eci"); }

// The text as a QR code by the task's `eclevel`, `encoding`, `casesensitive` and `eci`. Nothing, with an error line,
// where there is none.
std::optional<barcode::QrCode> qrCodeOf(const engine::Task& task);

// A length such as `pixelsize`, above 0. Nothing, with an error line, where it is none.
std::optional<double> codeLength(const engine::Task& task, std::wstring_view name);

}  // namespace actions
