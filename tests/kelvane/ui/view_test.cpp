// The tool's dialogs served to browsers: who is let in, what is told, what a press does.
#include "kelvane/ui/view_fixture.h"

namespace test {
namespace {

// A page of another place, or one that knows no token, gets nothing; neither does a request that is too large.
TEST_F(UiView, OnlyWhoKnowsTheTokenIsLetInAndOnlyOwnFilesAreServed) {
  part(L"BRACKET");
  Browser own(start());
  const std::string host = "127.0.0.1:" + std::to_string(own.port()), cookie = own.headers().begin()->second;
  struct Case {
    std::string path;
    httplib::Headers headers;
    int status;
  };
  const std::vector<Case> cases = {
      {"/", {}, 403},
      {"/state", {}, 403},
      {"/?token=" + std::string(64, '0'), {}, 403},
      {"/state?token=" + own.token(), {}, 403},  // the token opens the page alone
      {"/state", {{"Cookie", "kelvane_1=" + own.token()}}, 403},
      {"/state", {{"Cookie", cookie.substr(0, cookie.size() - 1)}}, 403},
      {"/state", {{"Cookie", cookie}, {"Origin", "http://elsewhere.example"}}, 403},
      {"/state", {{"Cookie", cookie}, {"Origin", "null"}}, 403},
      {"/state", {{"Cookie", cookie}, {"Host", "elsewhere.example:" + std::to_string(own.port())}}, 403},
      {"/state", {{"Cookie", "other=1; " + cookie}, {"Origin", "http://" + host}}, 200},
      {"/", {{"Cookie", cookie}}, 200},
      {"/image/part.png", {{"Cookie", cookie}}, 200},
      {"/image/..%2f..%2fkvusermsg.txt", {{"Cookie", cookie}}, 404},
      {"/image/..", {{"Cookie", cookie}}, 404},
      {"/file/0", {{"Cookie", cookie}}, 404},
      {"/etc/passwd", {{"Cookie", cookie}}, 404},
  };
  for (const Case& entry : cases) {
    const auto got = own.client().Get(entry.path.c_str(), entry.headers);
    ASSERT_TRUE(got) << entry.path;
    EXPECT_EQ(entry.status, got->status) << entry.path << " " << got->body.substr(0, 80);
  }
  const auto page = own.get("/");
  EXPECT_EQ(0U, page->get_header_value("Content-Security-Policy").find("default-src 'none'"));
  EXPECT_EQ("nosniff", page->get_header_value("X-Content-Type-Options"));
  EXPECT_EQ(413, own.send({{"do", "press"}, {"dialog", std::string(70'000, 'x')}, {"component", ""}}));
  EXPECT_EQ(143, end(SIGTERM));
}

TEST_F(UiView, WhatNobodyCanDoIsRefusedAndWhatIsShutIsTold) {
  part(L"BRACKET");
  Browser browser(start());
  for (const char* text : {"", "[]", "{\"do\":7}", "{\"do\":\"fly\"}", "{\"do\":\"press\",\"dialog\":\"x\"}",
                           "{\"do\":\"check\",\"dialog\":\"x\",\"component\":\"y\",\"on\":1}",
                           "{\"do\":\"mark\",\"dialog\":\"x\",\"component\":\"y\",\"rows\":[1]}"}) {
    const auto answer = browser.client().Post("/do", browser.headers(), text, "application/json");
    EXPECT_EQ(400, answer->status) << text;
  }
  EXPECT_EQ("it isn't there any more", browser.press("kvaneStart").at("notice").at("text"));
  EXPECT_EQ("nobody asks for that", browser.act({{"do", "answer"}, {"button", 0}}).at("notice").at("text"));
  browser.openTool("BRACKET.PRT");
  EXPECT_EQ("it can't be used now", browser.press("kvaneCheckout").at("notice").at("text"));
}

TEST_F(UiView, AWholeRunIsPressedAndItsFilesAreServed) {
  for (const wchar_t* name : {L"C1", L"C2", L"C3"}) part(name);
  assembly(L"TOP")
      .uses(L"C1", creo::ProMdlType::part)
      .uses(L"C2", creo::ProMdlType::part)
      .uses(L"C3", creo::ProMdlType::part);
  Browser browser(start());
  EXPECT_EQ(json({"C1.PRT", "C2.PRT", "C3.PRT", "TOP.ASM"}), browser.read("/models"));
  json now = browser.openTool("TOP.ASM");
  EXPECT_EQ("TOP.ASM", now.at("windows").at(0).at("model"));
  EXPECT_TRUE(now.at("dialogs").contains("kvanerunner"));
  browser.choose("kvaneKVZChooser", "standards.kvz");
  browser.choose("kvaneActionlistChooser", "norm.xml");
  browser.act({{"do", "check"}, {"dialog", "kvanerunner"}, {"component", "C2.PRT_cb"}, {"on", false}});
  const json table = browser.lines("LargeTable");
  EXPECT_EQ(4, table.at("total"));
  EXPECT_NE(std::string::npos, checksOf(table).find("C2.PRT off")) << checksOf(table);
  EXPECT_NE(std::string::npos, checksOf(table).find("C1.PRT on")) << checksOf(table);
  now = browser.press("kvaneStart");
  EXPECT_TRUE(std::filesystem::exists(models() + "/C1.prt.2"));
  EXPECT_FALSE(std::filesystem::exists(models() + "/C2.prt.2"));
  ASSERT_FALSE(now.at("files").empty());
  const json newest = now.at("files").back();
  EXPECT_TRUE(newest.at("name").get<std::string>().starts_with("kvd_log - ")) << newest;
  const auto log = browser.get("/file/" + newest.at("id").dump());
  EXPECT_EQ("text/plain; charset=utf-8", log->get_header_value("Content-Type"));
  EXPECT_EQ("default-src 'none'; sandbox", log->get_header_value("Content-Security-Policy"));
  EXPECT_NE(std::string::npos, log->body.find("C1"));
  EXPECT_EQ(404, browser.get("/file/99")->status);
  const json tree = browser.lines("kvaneLogTT", 0, 1);
  EXPECT_EQ("kvaneRootNode", tree.at("lines").at(0).at("name"));
  EXPECT_TRUE(tree.at("lines").at(0).at("children"));
}

// A list that is chosen in the dialog is held as that of a run.
TEST_F(UiView, AConfinedSessionHoldsEachPackage) {
  part(L"BRACKET");
  file("outside/secret.txt", "s3cret");
  const std::string task = "<task version='3' forPRT='true' forEF='false' type='";
  list("norm.xml", task + "writeListReport' sel='9' overwrite='true' file='" + path("outside/x.csv") + "'/>" + task +
                       "runMSDOScommand' cmd='touch' args='" + path("outside/ran") + "'/>");
  Browser browser(start({"--confine"}));
  browser.openTool("BRACKET.PRT");
  browser.choose("kvaneKVZChooser", "standards.kvz");
  browser.choose("kvaneActionlistChooser", "norm.xml");
  const json now = browser.press("kvaneStart");
  const auto log = browser.get("/file/" + now.at("files").back().at("id").dump());
  EXPECT_THAT(log->body, testing::AllOf(testing::HasSubstr("(--allow-write=" + path("outside")),
                                        testing::HasSubstr("(--allow-run=touch isn't granted)")));
  EXPECT_EQ((std::vector<std::string>{"secret.txt"}), filesIn("outside"));
}

// Each package has what is kept for it, and no other one's; one that needs more isn't there to be chosen.
TEST_F(UiView, ASessionThatRequiresTrustGivesEachPackageItsOwn) {
  os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(path("config_home")));
  os::setEnvironment(L"XDG_CONFIG_DIRS", text::fromUtf8(path("site")));
  part(L"BRACKET").with(L"PLACE", text::fromUtf8(path("outside")).c_str());
  file("outside/secret.txt", "s3cret");
  const auto report = [](const std::string& target) {
    return "<task version='3' forPRT='true' forEF='false' type='writeListReport' sel='9' overwrite='true' file='" +
           target + "'/>";
  };
  // What only the run can tell needs nothing beforehand.
  const std::pair<const char*, std::string> packages[] = {{"packages/greedy", path("outside/greedy.csv")},
                                                          {"packages/sly", "%PLACE%/sly.csv"},
                                                          {"standards", path("outside/kept.csv")}};
  std::filesystem::create_directories(path("packages"));
  for (const auto& [folder, target] : packages) {
    list("norm.xml", report(target));
    if (path(folder) != path("standards")) std::filesystem::rename(path("standards"), path(folder));
  }
  file("config_home/kelvane/trust.json", R"({"format": 1, "packages": [{"folder": ")" + path("packages/standards") +
                                             R"(", "allow": {"write": [")" + path("outside") + R"("]}}]})");

  Browser browser(start({"--require-trust", "--set", "kvd_write_history_in_models=0"}));
  browser.openTool("BRACKET.PRT");
  EXPECT_THAT(err_.text(), testing::HasSubstr("warning: greedy.kvz isn't shown: it isn't trusted with --allow-write=" +
                                              path("outside") + "; 'kelvane trust' keeps grants"));
  json last;
  for (const char* package : {"standards.kvz", "sly.kvz"}) {
    browser.choose("kvaneKVZChooser", package);
    browser.choose("kvaneActionlistChooser", "norm.xml");
    last = browser.press("kvaneStart");
  }
  const auto log = browser.get("/file/" + last.at("files").back().at("id").dump());
  EXPECT_THAT(log->body, testing::HasSubstr("(--allow-write=" + path("outside") + " isn't granted)"));
  EXPECT_EQ((std::vector<std::string>{"kept.csv", "kept.csvheader", "secret.txt"}), filesIn("outside"));
}

TEST_F(UiView, WhatIsPressedDuringARunBeginsNoSecondOne) {
  list("slow.xml",
       "<task type='runMSDOScommand' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' cmd='sleep'"
       " args='1' uncup='false' waitafter='0'/>" +
           kAddNorm + kSave);
  part(L"BRACKET");
  Browser browser(start({"--set", "kvd_write_history_in_models=0"}));
  browser.openTool("BRACKET.PRT");
  browser.choose("kvaneKVZChooser", "standards.kvz");
  browser.choose("kvaneActionlistChooser", "slow.xml");
  browser.send({{"do", "press"}, {"dialog", "kvanerunner"}, {"component", "kvaneStart"}});
  const json now = browser.press("kvaneStart");
  EXPECT_EQ("the session was busy when that was pressed", now.at("notice").at("text"));
  EXPECT_TRUE(std::filesystem::exists(models() + "/BRACKET.prt.2"));
  EXPECT_FALSE(std::filesystem::exists(models() + "/BRACKET.prt.3"));
}

TEST_F(UiView, AQuestionWaitsForItsAnswerAndLetsNothingElseThrough) {
  list("ask.xml",
       "<task type='setUserVariable' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false'"
       " varName='NORM' varType='1' varValue='first' varDescc='1' varDesc_0='Which norm?'/>");
  part(L"BRACKET");
  Browser browser(start());
  browser.openTool("BRACKET.PRT");
  browser.choose("kvaneKVZChooser", "standards.kvz");
  browser.choose("kvaneActionlistChooser", "ask.xml");
  json now = browser.press("kvaneStart");
  ASSERT_EQ("dialog", now.at("question").value("kind", "")) << now.at("question");
  const std::string dialog = now.at("question").at("dialog");
  EXPECT_TRUE(now.at("dialogs").at(dialog).at("modal"));
  now = browser.press("kvaneCancel");
  EXPECT_EQ("a question is open, and this is no answer to it", now.at("notice").at("text"));
  browser.act({{"do", "type"}, {"dialog", dialog}, {"component", "kvaneUVInputPanel"}, {"text", "WN <b> & ü"}});
  browser.send({{"do", "press"}, {"dialog", dialog}, {"component", "kvaneUVOkBtn"}});
  now = browser.waitFor([](const json& state) { return state.at("question").is_null() && !state.at("busy"); });
  EXPECT_FALSE(now.at("dialogs").contains(dialog));
}

// Two pages follow the same session; one that is closed in the middle of a run disturbs nothing.
TEST_F(UiView, EachPageGetsTheWholeAndThenTheChanges) {
  part(L"BRACKET");
  Browser browser(start());
  std::mutex mutex;
  std::string heard;
  std::atomic<bool> enough = false;
  const auto listen = [&](bool keep) {
    Browser other(address_);
    other.client().set_read_timeout(60);
    other.client().Get("/events", other.headers(), [&, keep](const char* letters, std::size_t count) {
      const std::lock_guard lock(mutex);
      if (keep) heard.append(letters, count);
      return keep && !enough;
    });
  };
  std::thread closes([&] { listen(false); }), stays([&] { listen(true); });
  closes.join();
  browser.openTool("BRACKET.PRT");
  const auto has = [&](const std::string& piece) {
    for (int i = 0; i < 500; ++i) {
      {
        const std::lock_guard lock(mutex);
        if (heard.find(piece) != heard.npos) return true;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return false;
  };
  EXPECT_TRUE(has("event: whole\ndata: {"));
  EXPECT_TRUE(has("event: change\ndata: {"));
  EXPECT_TRUE(has("\"kvanerunner\":{"));
  enough = true;
  EXPECT_EQ(130, end(SIGINT));
  stays.join();
}

TEST_F(UiView, ASignalInARunLeavesEveryModelWhole) {
  constexpr int kParts = 60;
  ModelBuilder top = assembly(L"TOP");
  for (int i = 0; i < kParts; ++i) {
    part(L"P" + std::to_wstring(i));
    top.uses(L"P" + std::to_wstring(i), creo::ProMdlType::part);
  }
  { const ModelBuilder written = std::move(top); }
  Browser browser(start());
  browser.openTool("TOP.ASM");
  browser.choose("kvaneKVZChooser", "standards.kvz");
  browser.choose("kvaneActionlistChooser", "norm.xml");
  browser.send({{"do", "press"}, {"dialog", "kvanerunner"}, {"component", "kvaneStart"}});
  browser.waitFor([&](const json&) { return std::filesystem::exists(models() + "/P0.prt.2"); });
  EXPECT_EQ(130, end(SIGINT));
  int written = 0;
  for (const std::string& name : filesIn("models")) {
    if (name.find(".prt.") == name.npos && name.find(".asm.") == name.npos) continue;
    EXPECT_FALSE(json::parse(readBytes(models() + "/" + name), nullptr, false).is_discarded()) << name;
    if (name.ends_with(".prt.2")) ++written;
  }
  EXPECT_GE(written, 1);
}

TEST_F(UiView, StartsOnlyWithFoldersThatAreThere) {
  EXPECT_EQ("kelvane: ui: --models DIR is missing\n", kelvane({"ui"}).err);
  part(L"BRACKET");
  EXPECT_EQ("kelvane: there is no folder " + path("none") + "\n",
            kelvane({"ui", "--models", models(), "--packages", path("none")}).err);
}

}  // namespace
}  // namespace test
