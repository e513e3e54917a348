// Web requests by libcurl's easy interface.
#include <curl/curl.h>

#include <array>

#include "os/durable.h"
#include "os/web.h"
#include "text/encoding.h"

namespace os {
namespace {

// libcurl's own set-up, once a process; it must not be taken down while another part of the process may use it.
bool isReady() {
  static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  return ready;
}

using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

struct Received {
  std::string bytes;
  std::size_t most = 0;
};

// Everything is reported as taken, so that a long answer is no failure.
std::size_t receive(char* data, std::size_t size, std::size_t count, void* to) {
  auto& received = *static_cast<Received*>(to);
  const std::size_t got = size * count;
  received.bytes.append(data, std::min(got, received.most - received.bytes.size()));
  return got;
}

HeaderList headerList(const std::vector<WebHeader>& headers) {
  HeaderList list(nullptr, &curl_slist_free_all);
  for (const WebHeader& header : headers) {
    // "Name:" alone would take the header away.
    const std::string line = header.value.empty() ? header.name + ";" : header.name + ": " + header.value;
    curl_slist* longer = curl_slist_append(list.get(), line.c_str());
    if (!longer) return {nullptr, &curl_slist_free_all};
    static_cast<void>(list.release());
    list.reset(longer);
  }
  return list;
}

template <class Value>
bool set(CURL* handle, CURLoption option, Value value) {
  return curl_easy_setopt(handle, option, value) == CURLE_OK;
}

bool setUp(CURL* handle, const WebRequest& request, curl_slist* headers) {
  bool good = set(handle, CURLOPT_URL, request.url.c_str()) && set(handle, CURLOPT_HTTPHEADER, headers) &&
              set(handle, CURLOPT_HTTPGET, 1L) &&
              set(handle, CURLOPT_SSL_VERIFYPEER, request.verifyCertificates ? 1L : 0L) &&
              set(handle, CURLOPT_SSL_VERIFYHOST, request.verifyCertificates ? 2L : 0L) &&
              set(handle, CURLOPT_PROTOCOLS_STR, "http,https") && set(handle, CURLOPT_NOSIGNAL, 1L) &&
              set(handle, CURLOPT_CONNECTTIMEOUT, long{request.connectSeconds}) &&
              set(handle, CURLOPT_TIMEOUT, long{request.wholeSeconds});
  if (request.body) {
    good = good && set(handle, CURLOPT_CUSTOMREQUEST, "POST") &&
           set(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body->size())) &&
           set(handle, CURLOPT_POSTFIELDS, request.body->c_str());
  }
  if (request.credentials) good = good && set(handle, CURLOPT_USERPWD, request.credentials->c_str());
  return good;
}

class CurlWeb : public Web {
 public:
  text::Result<std::string> send(const WebRequest& request) override {
    if (const auto unsafe = settleWritten())
      return text::Fault{L"the disk didn't take a file that was written before: " + text::fromUtf8(unsafe.message())};
    const Easy handle(isReady() ? curl_easy_init() : nullptr, &curl_easy_cleanup);
    const HeaderList headers = headerList(request.headers);
    if (!handle || (!headers && !request.headers.empty())) return text::Fault{L"the request can't be prepared"};
    std::array<char, CURL_ERROR_SIZE> fault{};
    Received received{.bytes = {}, .most = request.mostKept};
    if (!setUp(handle.get(), request, headers.get()) || !set(handle.get(), CURLOPT_ERRORBUFFER, fault.data()) ||
        !set(handle.get(), CURLOPT_WRITEFUNCTION, &receive) ||
        !set(handle.get(), CURLOPT_WRITEDATA, static_cast<void*>(&received))) {
      return text::Fault{L"the request can't be prepared"};
    }
    const CURLcode code = curl_easy_perform(handle.get());
    text::Result<std::string> answer(std::move(received.bytes));
    if (code != CURLE_OK) answer.fault = {text::fromUtf8(fault[0] != '\0' ? fault.data() : curl_easy_strerror(code))};
    return answer;
  }
};

}  // namespace

std::unique_ptr<Web> machineWeb() { return std::make_unique<CurlWeb>(); }

}  // namespace os
