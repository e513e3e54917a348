// The font of a document's texts, as the library that writes PDF files has it.
#pragma once

#include <hpdf.h>

namespace pdf {

// A TrueType font that the document has loaded, by its name there, for texts in UTF-8; the document may have one such
// font. Null, with the library's fault: it can't be used. It isn't whole without `keepUsed`.
HPDF_Font unicodeFont(HPDF_Doc document, const char* name);

// Tells the font of the characters that texts have been measured or written in. To be called when all of them are
// there, before the document is saved.
void keepUsed(HPDF_Font font);

}  // namespace pdf
