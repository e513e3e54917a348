// What the actions that make two-dimensional codes read from their tasks.
#pragma once

#include <optional>
#include <string>

#include "barcode/qr.h"
#include "engine/action.h"
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

// ---- what rows have in common

constexpr engine::Attribute kCodeLines[] = {
    {.name = L"valuec", .kind = engine::Kind::integer, .need = engine::Need::needed, .about = "how many lines"},
    {.name = L"value%d",
     .variables = true,
     .need = engine::Need::needed,
     .numbers = engine::Numbers::counted,
     .counter = L"valuec",
     .about = "each line's text, in characters of Latin-1"},
    {.name = L"valueh", .about = "not read"},
};
constexpr engine::Attribute kQrForm[] = {
    {.name = L"encoding",
     .kind = engine::Kind::integer,
     .need = engine::Need::needed,
     .range = {.least = 2, .most = 3},
     .about = "2: bytes, digits and capitals being packed closer; 3: Kanji"},
    {.name = L"casesensitive",
     .kind = engine::Kind::integer,
     .range = {.least = 0, .most = 1},
     .about = "0 or absent: small letters become capitals"},
    {.name = L"eclevel",
     .kind = engine::Kind::integer,
     .range = {.least = 0, .most = 3},
     .about = "0 to 3: 7, 15, 25 or 30 % of the code may be lost"},
};
constexpr engine::Attribute kStatedLetters[] = {
    {.name = L"eci",
     .kind = engine::Kind::flag,
     .words = L"true",
     .about = "the code says that its letters are Latin-1; all of the text is bytes then"},
};

}  // namespace actions
