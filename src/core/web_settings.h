// How web requests are sent, as the configuration says.
#pragma once

namespace core {

struct WebSettings {
  int timeoutSeconds = 120;         // of a whole request
  bool verifyCertificates = false;  // the server's certificate and name
};
WebSettings& webSettings();

}  // namespace core
