#include "barcode/qr.h"

#include <qrencode.h>

#include <memory>

namespace barcode {

namespace {

constexpr unsigned kLatin1 = 3;  // the number of that set of letters

// What is no value of the library's own types mustn't become one.
bool isLevel(int level) { return level >= QR_ECLEVEL_L && level <= QR_ECLEVEL_H; }

// Takes what the library made, which is null where it made nothing.
std::optional<QrCode> taken(QRcode* made) {
  const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(made, &QRcode_free);
  if (!code) return {};
  return QrCode{code->width, {code->data, code->data + static_cast<std::ptrdiff_t>(code->width) * code->width}};
}

}  // namespace

std::optional<QrCode> qrCode(const std::string& text, int level, int mode, bool caseSensitive) {
  if (!isLevel(level) || mode < QR_MODE_NUM || mode > QR_MODE_FNC1SECOND) return {};
  return taken(QRcode_encodeString(text.c_str(), 0, static_cast<QRecLevel>(level), static_cast<QRencodeMode>(mode),
                                   caseSensitive ? 1 : 0));
}

std::optional<QrCode> latin1QrCode(const std::string& text, int level, int mode, bool caseSensitive) {
  if (!isLevel(level) || (mode != QR_MODE_8 && mode != QR_MODE_KANJI)) return {};
  std::vector<unsigned char> bytes(text.begin(), text.end());
  if (!caseSensitive)
    for (unsigned char& c : bytes)
      if (c >= 'a' && c <= 'z') c = static_cast<unsigned char>(c - 'a' + 'A');
  const std::unique_ptr<QRinput, decltype(&QRinput_free)> input(QRinput_new2(0, static_cast<QRecLevel>(level)),
                                                                &QRinput_free);
  const bool isWhole = input && QRinput_appendECIheader(input.get(), kLatin1) == 0 &&
                       QRinput_append(input.get(), QR_MODE_8, static_cast<int>(bytes.size()), bytes.data()) == 0;
  return isWhole ? taken(QRcode_encodeInput(input.get())) : std::nullopt;
}

}  // namespace barcode
