#include "actions/environment/web_server.h"

#include <httplib.h>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <atomic>
#include <stdexcept>
#include <thread>

#include "text/letters.h"

namespace test {
namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

// For "localhost", valid an hour, signed by itself.
Certificate selfSigned(EVP_PKEY* key) {
  Certificate certificate(X509_new(), &X509_free);
  X509* made = certificate.get();
  ASN1_INTEGER_set(X509_get_serialNumber(made), 1);
  X509_gmtime_adj(X509_getm_notBefore(made), 0);
  X509_gmtime_adj(X509_getm_notAfter(made), 3600);
  X509_set_pubkey(made, key);
  X509_NAME* name = X509_get_subject_name(made);
  const std::string host = "localhost";
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>(host.c_str()), -1, -1, 0);
  X509_set_issuer_name(made, name);
  if (X509_sign(made, key, EVP_sha256()) == 0) throw std::runtime_error("no certificate");
  return certificate;
}

struct Answer {
  std::string piece;
  std::function<void(const WebAsked&, httplib::Response&)> give;
};

}  // namespace

struct WebServer::Parts {
  Key key{nullptr, &EVP_PKEY_free};
  Certificate certificate{nullptr, &X509_free};
  std::unique_ptr<httplib::Server> server;
  std::string scheme;
  int port = 0;
  std::thread thread;
  std::atomic<bool> ending = false;
  mutable std::mutex mutex;
  std::vector<WebAsked> asked;
  std::vector<Answer> answers;

  void handle(const httplib::Request& request, httplib::Response& response) {
    WebAsked entry{request.method, request.target, request.body, {}};
    for (const auto& [name, value] : request.headers) entry.headers[text::lower(name)] = value;
    std::function<void(const WebAsked&, httplib::Response&)> give;
    {
      const std::lock_guard lock(mutex);
      asked.push_back(entry);
      for (const Answer& answer : answers)
        if (!give && entry.target.find(answer.piece) != std::string::npos) give = answer.give;
    }
    if (give) give(entry, response);
  }
};

WebServer::WebServer(Kind kind) : parts_(std::make_unique<Parts>()) {
  Parts& parts = *parts_;
  if (kind == Kind::tls) {
    parts.key.reset(EVP_RSA_gen(2048));
    parts.certificate = selfSigned(parts.key.get());
    parts.server = std::make_unique<httplib::SSLServer>(parts.certificate.get(), parts.key.get());
    parts.scheme = "https";
  } else {
    parts.server = std::make_unique<httplib::Server>();
    parts.scheme = "http";
  }
  const auto handler = [&parts](const httplib::Request& request, httplib::Response& response) {
    parts.handle(request, response);
  };
  parts.server->Get(".*", handler);
  parts.server->Post(".*", handler);
  parts.port = parts.server->bind_to_any_port("127.0.0.1");
  parts.thread = std::thread([&parts] { parts.server->listen_after_bind(); });
  while (!parts.server->is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

WebServer::~WebServer() {
  parts_->ending = true;
  parts_->server->stop();
  parts_->thread.join();
}

void WebServer::answerBy(const std::string& piece, std::function<std::string(const WebAsked&)> body) {
  const std::lock_guard lock(parts_->mutex);
  parts_->answers.push_back({piece, [body = std::move(body)](const WebAsked& asked, httplib::Response& response) {
                               response.set_content(body(asked), "application/json");
                             }});
}

void WebServer::answer(const std::string& piece, const std::string& body, int status) {
  const std::lock_guard lock(parts_->mutex);
  parts_->answers.push_back({piece, [body, status](const WebAsked&, httplib::Response& response) {
                               response.status = status;
                               response.set_content(body, "application/json");
                             }});
}

void WebServer::answerSlowly(const std::string& piece, std::size_t size, std::size_t step, int milliseconds,
                             bool broken) {
  Parts& parts = *parts_;
  const auto provide = [&parts, size, step, milliseconds, broken](std::size_t at, std::size_t length,
                                                                  httplib::DataSink& sink) {
    if (parts.ending || (broken && at >= size / 2)) return false;
    const std::string bytes(std::min(step, length), 'x');
    sink.write(bytes.data(), bytes.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    return true;
  };
  const std::lock_guard lock(parts.mutex);
  parts.answers.push_back({piece, [provide, size](const WebAsked&, httplib::Response& response) {
                             response.set_content_provider(size, "text/plain", provide);
                           }});
}

std::string WebServer::address() const { return parts_->scheme + "://127.0.0.1:" + std::to_string(parts_->port); }

std::vector<WebAsked> WebServer::asked() const {
  const std::lock_guard lock(parts_->mutex);
  return parts_->asked;
}

}  // namespace test
