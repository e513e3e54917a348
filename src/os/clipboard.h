// The text that the user has copied.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace os {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // Nothing where there is no clipboard, or it holds no text or one beyond a megabyte. Never waits longer than some
  // seconds.
  virtual std::optional<std::wstring> text() = 0;
};
std::unique_ptr<Clipboard> machineClipboard();

// Holds what it was given.
class FixedClipboard : public Clipboard {
 public:
  explicit FixedClipboard(std::optional<std::wstring> text = {}) : text_(std::move(text)) {}
  std::optional<std::wstring> text() override { return text_; }

 private:
  std::optional<std::wstring> text_;
};

}  // namespace os
