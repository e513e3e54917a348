#include "os/clipboard.h"

#include <algorithm>

#include "os/windows/native.h"

namespace os {
namespace {

constexpr std::size_t kMostBytes = 1 << 20;

// Open while it lives; another program may have it for a moment.
class OpenClipboardGuard {
 public:
  OpenClipboardGuard() : isOpen_(!patiently([] { return ::OpenClipboard(nullptr) != 0; })) {}
  ~OpenClipboardGuard() {
    if (isOpen_) ::CloseClipboard();
  }
  OpenClipboardGuard(const OpenClipboardGuard&) = delete;
  OpenClipboardGuard& operator=(const OpenClipboardGuard&) = delete;
  explicit operator bool() const { return isOpen_; }

 private:
  bool isOpen_;
};

class MachineClipboard : public Clipboard {
 public:
  std::optional<std::wstring> text() override {
    const OpenClipboardGuard open;
    if (!open) return std::nullopt;
    const HANDLE held = ::GetClipboardData(CF_UNICODETEXT);
    const SIZE_T size = held ? ::GlobalSize(held) : 0;
    const void* const data = size > 0 && size <= kMostBytes ? ::GlobalLock(held) : nullptr;
    if (!data) return std::nullopt;
    std::wstring text(static_cast<const wchar_t*>(data), size / sizeof(wchar_t));
    ::GlobalUnlock(held);
    text.resize(std::min(text.find(L'\0'), text.size()));
    return text;
  }
};

}  // namespace

std::unique_ptr<Clipboard> machineClipboard() { return std::make_unique<MachineClipboard>(); }

}  // namespace os
