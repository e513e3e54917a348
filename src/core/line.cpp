#include "core/line.h"

#include "core/messages.h"

namespace core {

std::wstring_view lineText(const Line& line) {
  return line.message ? std::wstring_view(msgText(*line.message)) : line.text;
}

}  // namespace core
