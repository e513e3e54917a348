// Requests to a web server that the test starts, by lists run on a part.
#include "actions/action_fixture.h"
#include "actions/environment/web_server.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/processes.h"
#include "os/web.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace test {
namespace {

class WebRequest : public ActionTest {
 protected:
  WebRequest() { os::setEnvironment(L"no_proxy", L"127.0.0.1"); }
  void SetUp() override {
    world.part(L"BRACKET").with(L"COLOR", L"red").with(L"PASS", L"s3cret");
    world.config("kvd_write_history_in_models=0");
  }

  static std::string get(const std::string& url, const std::string& more = "", const std::string& name = "ANSWER") {
    return task("setUserVariableFromUrl", "name='" + name + "' value='" + url + "' " + more);
  }
  static std::string valueOf(std::wstring_view name) {
    const std::wstring* value = language::userVariables().find(name);
    return value ? text::toUtf8(*value) : "(none)";
  }
  // What the variable is after a list of that one request.
  std::string answerTo(const std::string& url, const std::string& more = "") {
    told_ = run(get(url, more));
    return valueOf(L"ANSWER");
  }

  std::wstring told_;
};

const std::wstring kBegin = L"B0 Set user variable from URL|Init curl|Set configuration|";

TEST_F(WebRequest, TheHeadOfAnAnswerIsTheValue) {
  WebServer server;
  const std::string a199(199, 'a');
  const struct {
    const char* piece;
    std::string answer, value;
  } rows[] = {
      {"/long", "{\r\n \"a\": 1,\n" + std::string(500, 'x'), "{ \"a\": 1," + std::string(188, 'x')},
      {"/umlaut", a199 + "\xC3\xA4", a199},  // a character across the end
      {"/euro",
       std::string(197, 'a') + "\xE2\x82\xAC"
                               "b",
       std::string(197, 'a') + "\xE2\x82\xAC"},  // one right at it
      {"/zero", std::string("ab\0cd", 5), "ab"},
      {"/odd",
       "a\xFF"
       "b",
       "a\xEF\xBF\xBD"
       "b"},
      {"/empty", "", ""},
  };
  std::string tasks;
  for (const auto& row : rows) {
    server.answer(row.piece, row.answer);
    tasks += get(server.address() + row.piece, "", row.piece);
  }
  run(tasks);
  for (const auto& row : rows) EXPECT_EQ(row.value, valueOf(text::fromUtf8(row.piece))) << row.piece;
}

TEST_F(WebRequest, AGetSendsItsThreeHeadersAndBlanksAsEscapes) {
  WebServer server;
  server.answer("/", "fine", 404);
  EXPECT_EQ("fine", answerTo(server.address() + "/%COLOR% part?a=%2F&b=c"));
  EXPECT_EQ(kBegin + L"Perform Request|fine", told_);
  ASSERT_EQ(1U, server.asked().size());
  const WebAsked asked = server.asked()[0];
  EXPECT_EQ("GET", asked.method);
  EXPECT_EQ("/red%20part?a=%2F&b=c", asked.target);
  EXPECT_EQ("application/json", asked.headers.at("accept"));
  EXPECT_EQ("application/json", asked.headers.at("content-type"));
  EXPECT_EQ("utf-8", asked.headers.at("charsets"));
  EXPECT_EQ(0U, asked.headers.count("authorization"));
}

TEST_F(WebRequest, APostCarriesLineFeeds) {
  WebServer server;
  server.answerBy("/", [](const WebAsked& asked) { return asked.method + "<" + asked.body + ">"; });
  writeBytes(world.models() + "/big.bin", std::string(90'000, 'b'));
  const std::wstring steps =
      L"Add Post data|Add Post data 1|Add Post data 2|Add Post data 3|Add Post data 4|Add Post data 5|Add Post data "
      L"6|Finish add Post data|Perform Request|";
  const std::wstring text = run(get(server.address(), "post='a:&#10; %COLOR% \xC3\xA4'") +
                                get(server.address(), "post='%b64:d:\\big.bin%'", "BIG"));
  EXPECT_EQ("POST<a: red \xC3\xA4>", valueOf(L"ANSWER"));
  EXPECT_EQ("a:\n red \xC3\xA4", server.asked().at(0).body);
  const std::wstring first = kBegin + steps + L"POST<a: red \u00E4>|B1 ";
  EXPECT_EQ(first, text.substr(0, first.size()));
  EXPECT_EQ(120'000U, server.asked().back().body.size());
  EXPECT_EQ("application/json", server.asked().back().headers.at("content-type"));
}

TEST_F(WebRequest, ATokenIsFetchedFirst) {
  WebServer server;
  server.answer("GetCSRFToken", "{\"NonceKey\":\"CSRF_NONCE\",\"NonceValue\":\"to+ken=\",\"x\":\"y\"}");
  server.answer("/", "fine");
  EXPECT_EQ("fine", answerTo(server.address() + "/wt/odata/v6/Parts",
                             "csrf='true' usrcred='true' usrname='u' usrpass='%PASS%'"));
  EXPECT_EQ(kBegin +
                L"Request CSRF|Set configuration|Add User Credentials|Perform Request|Add User "
                L"Credentials|Perform Request|fine",
            told_);
  const auto asked = server.asked();
  ASSERT_EQ(2U, asked.size());
  EXPECT_EQ("GET /wt/odata/v3/PTC/GetCSRFToken()", asked[0].method + " " + asked[0].target);
  EXPECT_EQ("/wt/odata/v6/Parts", asked[1].target);
  EXPECT_EQ("to+ken=", asked[1].headers.at("csrf_nonce"));
  for (const WebAsked& entry : asked) EXPECT_EQ("Basic dTpzM2NyZXQ=", entry.headers.at("authorization"));  // u:s3cret
}

TEST_F(WebRequest, WithoutATokenTheRequestStillGoesOut) {
  WebServer server;
  server.answer("a/odata/v3", "{\"NonceValue\":\"open");
  server.answer("b/odata/v3", "{\"NonceValue\":\"two\r\nlines\"}");
  server.answer("c/odata/v3", "login, please");
  server.answer("/", "fine");
  const std::pair<const char*, std::wstring> rows[] = {
      {"/x", L"Can't find /odata/ in URL|"},
      {"/a/odata/x", L"Set configuration|Perform Request|{\"NonceValue\":\"open|Can't find the token|"},
      {"/b/odata/x", L"Set configuration|Perform Request|{\"NonceValue\":\"twolines\"}|Can't find the token|"},
      {"/c/odata/x", L"Set configuration|Perform Request|login, please|Can't find the token|"},
  };
  std::string tasks;
  std::wstring reported;
  int index = 0;
  for (const auto& [target, lines] : rows) {
    const std::wstring begin = text::replaceAll(kBegin, L"B0", L"B" + std::to_wstring(index++));
    tasks += get(server.address() + target, "csrf='true'", target);
    reported += (reported.empty() ? L"" : L"|") + begin + L"Request CSRF|" + lines + L"Perform Request|fine";
  }
  EXPECT_EQ(reported, run(tasks));
  for (const auto& [target, lines] : rows) EXPECT_EQ("fine", valueOf(text::fromUtf8(target))) << target;
  int sent = 0;
  for (const WebAsked& entry : server.asked())
    // The server's library leaves a header without a value out.
    if (entry.target.find("GetCSRFToken") == std::string::npos && !entry.headers.contains("csrf_nonce")) ++sent;
  EXPECT_EQ(4, sent);
}

TEST_F(WebRequest, PasswordsNeverReachTheLog) {
  WebServer server;
  server.answer("/echo", std::string(195, '-') + "s3cret");
  world.config("kvd_show_no_debug_in_log=0");
  world.config("kvd_no_debug_in_creo_log=9");
  const std::string credentials = "usrcred='true' usrname='u' usrpass=";
  const std::string here = server.address() + "/echo";
  run(get(here, credentials + "'$$pre$6$%PASS%$$'") + get(here, credentials + "'s3cret'") +
      get(here, credentials + "'%s3cret%'") + get(here, credentials + "'" + std::string(600, 's') + "'"));
  EXPECT_EQ(std::string::npos, world.log().find(L"s3c"));
  EXPECT_EQ(std::string::npos, world.log().find(L"sssss"));
  EXPECT_EQ(std::string::npos, world.messages().find(L"s3c"));
  EXPECT_TRUE(world.logHas(L"--***"));
  EXPECT_EQ(2U, server.asked().size());  // what can't be put together isn't sent
  EXPECT_EQ("(none)", valueOf(L"ANSWER"));
  EXPECT_TRUE(world.logHas(L"User name and password can't be put together"));
}

TEST_F(WebRequest, WhatCantBePutTogetherIsntSent) {
  WebServer server;
  run(get(server.address(), "post='%MISSING%'") + get("%MISSING%") +
      task("setUserVariableFromUrl", "name='%MISSING%' value='" + server.address() + "'") +
      task("setUserVariableFromUrl", "name='LONG' value='" + server.address() + "/" + std::string(300, 'x') + "'"));
  EXPECT_EQ(0U, server.asked().size());
  EXPECT_EQ(0U, language::userVariables().count());
}

TEST_F(WebRequest, ACertificateThatNobodySignedIsTaken) {
  WebServer server(WebServer::Kind::tls);
  server.answer("/", "fine");
  EXPECT_EQ("fine", answerTo(server.address()));
}

TEST_F(WebRequest, CertificatesAreCheckedIfTheSiteSaysSo) {
  WebServer server(WebServer::Kind::tls);
  server.answer("/", "fine");
  world.config("kvd_url_verify=1");
  EXPECT_EQ("", answerTo(server.address()));
  EXPECT_NE(std::wstring::npos, told_.find(L"E:SSL certificate problem: self")) << text::toUtf8(told_);
  EXPECT_EQ(0U, server.asked().size());
}

TEST_F(WebRequest, AFailedRequestLeavesWhatItReceived) {
  std::string nobody;
  {
    const WebServer gone;
    nobody = gone.address();
  }
  WebServer server;
  server.answerSlowly("/slow", 1000, 1, 1000);
  server.answerSlowly("/broken", 100, 10, 0, true);
  server.answerSlowly("/endless", std::size_t{1} << 40, 1 << 16, 0);
  world.config("kvd_url_timeout=1");
  const struct {
    std::string url, value;
    const wchar_t* fault;
  } rows[] = {
      {nobody + "/", "", L"Failed to connect to 127.0.0.1"},
      {server.address() + "/slow", "x", L"Operation timed out"},
      {server.address() + "/broken", std::string(50, 'x'), L"transfer closed with 50 bytes remaining"},
      {server.address() + "/endless", std::string(200, 'x'), L"Operation timed out"},
      {"file:///etc/passwd", "", L"Protocol \"file\" not supported"},
      {"http://[", "", L"URL using bad/illegal format"},
  };
  std::string tasks;
  for (const auto& row : rows) tasks += get(row.url, "", row.url.substr(row.url.size() - 5));
  const std::wstring reported = run(tasks);
  for (const auto& row : rows) {
    const std::string value = valueOf(text::fromUtf8(row.url.substr(row.url.size() - 5)));
    EXPECT_EQ(row.value, row.value == "x" ? value.substr(0, 1) : value) << row.url;
    EXPECT_NE(std::wstring::npos, reported.find(L"|E:" + std::wstring(row.fault))) << row.url << text::toUtf8(reported);
  }
  EXPECT_EQ(std::size(rows), language::userVariables().count());
}

TEST_F(WebRequest, AVeryLongAnswerIsKeptInPart) {
  constexpr std::size_t kSize = 200'000'000;
  WebServer server;
  server.answerSlowly("/", kSize, 1 << 22, 0);
  os::WebRequest request;
  request.url = server.address();
  const auto answer = os::web().send(request);
  EXPECT_EQ(L"", answer.fault.what);
  EXPECT_EQ(std::size_t{16} << 20, answer.value.size());
}

TEST_F(WebRequest, RequestsCanBeWithheld) {
  WebServer server;
  const auto withheld = std::make_shared<os::WithheldWeb>(L"requests are switched off");
  const os::WebGuard guard(withheld);
  EXPECT_EQ("", answerTo("http://u:pw@host/a@b?c", "post='x'"));
  EXPECT_NE(std::wstring::npos, told_.find(L"E:requests are switched off|"));
  EXPECT_EQ(std::vector<std::string>{"POST http://host/a@b?c"}, withheld->asked());
}

}  // namespace
}  // namespace test
