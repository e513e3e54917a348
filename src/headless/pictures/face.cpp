#include "headless/pictures/face.h"

#include "os/paths.h"
#include "os/surroundings.h"

namespace headless {

std::wstring faceFile(const std::wstring& textFolder) {
  for (const std::wstring& place : {os::joined(textFolder, L"FreeSans.ttf"),
                                    std::wstring(L"z:\\usr\\share\\fonts\\truetype\\freefont\\FreeSans.ttf")})
    if (os::files().exists(place)) return place;
  return {};
}

}  // namespace headless
