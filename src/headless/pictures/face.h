// The face of texts in pictures and pages.
#pragma once

#include <string>

namespace headless {

// Its file: beside the application's texts, or where the system has it. Empty: nowhere.
std::wstring faceFile(const std::wstring& textFolder);

}  // namespace headless
