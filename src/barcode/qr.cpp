#include "barcode/qr.h"

#include <qrencode.h>

#include <memory>

namespace barcode {

std::optional<QrCode> qrCode(const std::string& text, int level, int mode, bool caseSensitive) {
  // What is no value of the library's own types mustn't become one.
  if (level < QR_ECLEVEL_L || level > QR_ECLEVEL_H || mode < QR_MODE_NUM || mode > QR_MODE_FNC1SECOND) return {};
  const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
      QRcode_encodeString(text.c_str(), 0, static_cast<QRecLevel>(level), static_cast<QRencodeMode>(mode),
                          caseSensitive ? 1 : 0),
      &QRcode_free);
  if (!code) return {};
  return QrCode{code->width, {code->data, code->data + static_cast<std::ptrdiff_t>(code->width) * code->width}};
}

}  // namespace barcode
