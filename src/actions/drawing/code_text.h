// What the actions that make two-dimensional codes read from their tasks.
#pragma once

#include <optional>
#include <string>

#include "actions/action.h"
#include "actions/task.h"
#include "barcode/qr.h"

namespace actions {

// The lines `value0` to `value<valuec - 1>`, joined by line feeds, in Latin-1. Nothing, with an error line: the
// variables of a line can't be replaced, a name of the model can't be read, or it holds a character beyond Latin-1.
std::optional<std::string> codeText(const Task& task);

// Does the task want its code to say that the letters are Latin-1?
inline bool statesLetters(const Task& task) { return task.isTrue(L"eci"); }

// The text as a QR code by the task's `eclevel`, `encoding`, `casesensitive` and `eci`. Nothing, with an error line,
// where there is none.
std::optional<barcode::QrCode> qrCodeOf(const Task& task);

// A length such as `pixelsize`, above 0. Nothing, with an error line, where it is none.
std::optional<double> codeLength(const Task& task, std::wstring_view name);

// ---- what rows have in common

constexpr core::Attribute kCodeLines[] = {
    {.name = L"valuec", .kind = core::Kind::integer, .need = core::Need::needed, .about = "how many lines"},
    {.name = L"value%d",
     .variables = true,
     .need = core::Need::needed,
     .numbers = core::Numbers::counted,
     .counter = L"valuec",
     .about = "each line's text, in characters of Latin-1"},
    {.name = L"valueh", .about = "not read"},
};
constexpr core::Attribute kQrForm[] = {
    {.name = L"encoding",
     .kind = core::Kind::integer,
     .need = core::Need::needed,
     .range = {.least = 2, .most = 3},
     .about = "2: bytes, digits and capitals being packed closer; 3: Kanji"},
    {.name = L"casesensitive",
     .kind = core::Kind::integer,
     .range = {.least = 0, .most = 1},
     .about = "0 or absent: small letters become capitals"},
    {.name = L"eclevel",
     .kind = core::Kind::integer,
     .range = {.least = 0, .most = 3},
     .about = "0 to 3: 7, 15, 25 or 30 % of the code may be lost"},
};
constexpr core::Attribute kStatedLetters[] = {
    {.name = L"eci",
     .kind = core::Kind::flag,
     .words = L"true",
     .about = "the code says that its letters are Latin-1; all of the text is bytes then"},
};

}  // namespace actions
