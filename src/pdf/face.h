// The font of a document's texts, as the library that writes PDF files has it.
#pragma once

#include <hpdf.h>

#include <string_view>

namespace pdf {

// Takes a file without a fault (`fontFault`) into the document as the one font of its texts, which are UTF-8. Null,
// with the library's fault: it can't be used. It isn't whole without the two that follow, `keepUsed` and `finished`.
HPDF_Font unicodeFont(HPDF_Doc document, std::string_view file);

// Tells the font of the characters that texts have been measured or written in. To be called when all of them are
// there, before the document is saved.
void keepUsed(HPDF_Font font);

}  // namespace pdf
