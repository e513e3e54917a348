// QR codes, by libqrencode.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace barcode {

struct QrCode {
  int width = 0;                   // modules of a side
  std::vector<std::uint8_t> data;  // row by row from the top, a byte a module; bit 0: it is dark
  [[nodiscard]] bool isDark(int row, int column) const {
    return data[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column)] &
           1U;
  }
};

// The smallest code that holds the text. level: 0 to 3 for L, M, Q and H; mode: libqrencode's number of a mode, which a
// text that the mode doesn't fit follows as far as it can. Nothing: the library makes no code of it, as of an empty or
// too long text, of a level that there isn't, and of any mode but 2 (bytes; digits and capitals are found) and 3
// (Kanji).
std::optional<QrCode> qrCode(const std::string& text, int level, int mode, bool caseSensitive);
// The same, where the code says that its letters are Latin-1, which a reader guesses otherwise. All of the text is
// bytes then, in mode 3 too.
std::optional<QrCode> latin1QrCode(const std::string& text, int level, int mode, bool caseSensitive);

}  // namespace barcode
