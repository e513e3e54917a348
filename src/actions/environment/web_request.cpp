// The action that asks a web server and keeps the head of its answer in a user variable.
#include "os/web.h"

#include "actions/task.h"
#include "core/log.h"
#include "core/log_silence.h"
#include "core/web_settings.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace language;
constexpr std::size_t kPostSize = 5'242'880;                   // wide characters
constexpr std::size_t kCredentialsSize = 2 * text::kTextSize;  // user name and password
constexpr std::size_t kHeadSize = 200;                         // bytes of an answer
constexpr std::string_view kTokenKey = "\"NonceValue\":";

void tell(std::wstring_view line, int depth = 1) { core::logIndented(line, core::kNormal, depth); }

// ---- the answer

// A character at the end that lacks some of its bytes is dropped.
std::string_view withoutBrokenEnd(std::string_view bytes) {
  const auto at = [&](std::size_t fromEnd) { return static_cast<unsigned char>(bytes[bytes.size() - fromEnd]); };
  for (std::size_t have = 1; have <= 3 && have <= bytes.size(); ++have) {
    if (at(have) < 0x80) break;
    if (at(have) < 0xC0) continue;
    const std::size_t needs = at(have) >= 0xF0 ? 4 : at(have) >= 0xE0 ? 3 : 2;
    return have < needs ? bytes.substr(0, bytes.size() - have) : bytes;
  }
  return bytes;
}

// What becomes of an answer: its first bytes without line breaks, up to a zero byte.
std::wstring headOf(std::string_view answer) {
  const std::string_view head = answer.substr(0, kHeadSize);
  std::string kept(withoutBrokenEnd(head.substr(0, head.find('\0'))));
  std::erase_if(kept, [](char c) { return c == '\n' || c == '\r'; });
  return text::fromUtf8(kept);
}

// ---- credentials

// What is sent of the user's name and password, and how they are kept out of the log.
struct Credentials {
  bool failed = false;
  std::optional<std::string> text;  // "user:password"

  // An answer or a fault that repeats the password is shown without it.
  [[nodiscard]] std::string masked(std::string_view shown) const {
    const std::size_t colon = text ? text->find(':') : std::string::npos;
    if (colon == std::string::npos || colon + 1 == text->size()) return std::string(shown);
    return text::replaceAll(shown, std::string_view(*text).substr(colon + 1), "***");
  }
  // The head of an answer, with a password that lies across its end.
  [[nodiscard]] std::wstring shownHead(const std::string& answer) const {
    return headOf(masked(std::string_view(answer).substr(0, kHeadSize + (text ? text->size() : 0))));
  }
};

Credentials credentialsOf(const Task& task) {
  if (!task.isTrue(L"usrcred")) return {};
  std::wstring joined(task.attribute(L"usrname"));
  joined.append(L":").append(task.attribute(L"usrpass"));
  Replaced replaced;
  {
    const core::LogSilence silence;
    replaced = replaceVariables(joined, task.model(), kCredentialsSize);
  }
  if (replaced) return {.failed = false, .text = text::toUtf8(replaced.text)};
  core::logIndented(L"User name and password can't be put together", core::kError, 1);
  return {.failed = true, .text = {}};
}

// ---- the request

os::WebRequest requestTo(const std::string& url, const Credentials& credentials) {
  os::WebRequest request;
  request.url = url;
  request.headers = {{"Accept", "application/json"}, {"Content-Type", "application/json"}, {"charsets", "utf-8"}};
  request.credentials = credentials.text;
  request.verifyCertificates = core::webSettings().verifyCertificates;
  request.wholeSeconds = core::webSettings().timeoutSeconds;
  return request;
}

// Sends it; a failure is logged. What was received is given in either case.
std::string performed(const os::WebRequest& request, const Credentials& credentials) {
  if (credentials.text) tell(L"Add User Credentials");
  tell(L"Perform Request");
  auto answer = os::web().send(request);
  if (!answer) core::logIndented(text::fromUtf8(credentials.masked(text::toUtf8(answer.fault.what))), core::kError, 1);
  return std::move(answer.value);
}

// The token in an answer; nothing without one. Its place is counted from the key, with the quote behind it.
std::optional<std::string> tokenIn(std::string_view answer) {
  const std::size_t key = answer.find(kTokenKey);
  if (key == answer.npos || key + kTokenKey.size() >= answer.size()) return std::nullopt;
  const std::string_view rest = answer.substr(key + kTokenKey.size() + 1);
  const std::size_t quote = rest.find('"');
  const std::string_view token = rest.substr(0, quote);
  // What isn't closed or has line breaks would be no header's value.
  if (quote == rest.npos || token.find_first_of(std::string_view("\r\n\0", 3)) != token.npos) return std::nullopt;
  return std::string(token);
}

// The token that a product-data service wants beside a request; empty where there is none, for a reason in the log.
std::string requestCsrfToken(const std::string& url, const Credentials& credentials) {
  tell(L"Request CSRF");
  const std::size_t service = url.find("/odata/");
  if (service == url.npos) {
    tell(L"Can't find /odata/ in URL");
    return {};
  }
  tell(L"Set configuration");
  const std::string answer =
      performed(requestTo(url.substr(0, service) + "/odata/v3/PTC/GetCSRFToken()", credentials), credentials);
  if (auto token = tokenIn(answer)) return *std::move(token);
  tell(credentials.shownHead(answer));
  tell(L"Can't find the token", 2);
  return {};
}

// The body of a POST; nothing where its text can't be put together, which has been logged.
std::optional<std::string> postOf(const Task& task) {
  tell(L"Add Post data");
  tell(L"Add Post data 1");
  const Replaced replaced = task.text(L"post", kPostSize);
  tell(L"Add Post data 2");
  if (!replaced.hasText()) return std::nullopt;
  tell(L"Add Post data 3");
  // So an attribute of a list carries line feeds.
  const std::wstring lines = text::replaceAll(replaced.text, L"&#10;", L"\n");
  tell(L"Add Post data 4");
  std::string bytes = text::toUtf8(lines);
  tell(L"Add Post data 5");
  tell(L"Add Post data 6");
  tell(L"Finish add Post data");
  return bytes;
}

// The whole exchange. A request that can't be put together isn't sent, as half of it could do harm: there is no answer,
// and the reason is in the log.
std::optional<std::string> answerTo(const Task& task, const std::string& url, const Credentials& credentials) {
  tell(L"Set configuration");
  os::WebRequest request = requestTo(url, credentials);
  if (credentials.failed) return std::nullopt;
  if (task.isTrue(L"csrf")) request.headers.push_back({"CSRF_NONCE", requestCsrfToken(url, credentials)});
  if (!task.attribute(L"post").empty()) {
    request.body = postOf(task);
    if (!request.body) return std::nullopt;
  }
  return performed(request, credentials);
}

Outcome setUserVariableFromUrl(const Task& task) {
  const Replaced name = task.text(L"name");
  const Replaced value = task.text(L"value");
  if (!name.hasText()) return done;
  if (!value.hasText()) {
    userVariables().remove(name.text);
    return done;
  }
  tell(L"Init curl");
  const std::string url = text::replaceAll(text::toUtf8(value.text), " ", "%20");
  const Credentials credentials = credentialsOf(task);
  const auto answer = answerTo(task, url, credentials);
  if (!answer) {
    userVariables().remove(name.text);
    return done;
  }
  tell(credentials.shownHead(*answer));
  userVariables().set(name.text, headOf(*answer));
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"name", .kind = Kind::variable, .variables = true, .need = Need::needed, .about = "the variable's name"},
    {.name = L"value",
     .kind = Kind::address,
     .variables = true,
     .need = Need::needed,
     .about = "the address that is asked"},
    {.name = L"post", .variables = true, .about = "the body of a POST; without it the request is a GET"},
    {.name = L"csrf",
     .kind = Kind::flag,
     .words = L"true",
     .about = "a token is fetched first from the address's service"},
    {.name = L"usrcred", .kind = Kind::flag, .words = L"true", .about = "usrname and usrpass are sent"},
    {.name = L"usrname", .variables = true, .about = "the user's name"},
    {.name = L"usrpass", .variables = true, .about = "the user's password"},
};

constexpr Action kActions[] = {
    {.key = L"setUserVariableFromUrl",
     .place = 14,
     .group = Group::withoutModel,
     .title = L"Set user variable from URL",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::web,
                 .changes = Touched::web | Touched::variables,
                 .known = false,
                 .takenBack = false},
     .about = "keeps the head of a web server's answer in a user variable",
     .function = &setUserVariableFromUrl},
};

}  // namespace

std::span<const Action> webRequestActions() { return kActions; }

}  // namespace actions
