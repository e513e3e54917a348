// Answers of web servers to the action that asks them: for the token, then for the value, with a zero byte between.
#include "fuzz/target.h"
#include "language/user_variables.h"
#include "os/web.h"
#include "support/world.h"
#include "text/units.h"

namespace {

class Answers : public os::Web {
 public:
  std::string_view rest;
  bool fails = false;
  text::Result<std::string> send(const os::WebRequest& request) override {
    for (const os::WebHeader& header : request.headers)
      fuzz::holds(header.value.find_first_of(std::string_view("\r\n\0", 3)) == header.value.npos,
                  "no answer puts a line into a request");
    const std::string_view answer = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(answer.size() + 1, rest.size()));
    if (fails) return text::Fault{L"it broke off: " + std::wstring(answer.begin(), answer.end())};
    return std::string(answer);
  }
};

class Asking {
 public:
  Asking() : answers_(std::make_shared<Answers>()), guard_(answers_) {
    world_.list("ask.xml", "",
                "<task type='setUserVariableFromUrl' version='3' name='X' value='http://host/odata/x' csrf='true' "
                "usrcred='true' usrname='u' usrpass='secret'/>");
    world_.part(L"BRACKET");
    world_.start();
    world_.open(L"BRACKET", creo::ProMdlType::part);
    world_.openTool();
    world_.choose("ask.xml");
    run("", false);  // what lives as long as the process outlives the world, then
  }
  void run(std::string_view bytes, bool fails) {
    answers_->rest = bytes;
    answers_->fails = fails;
    world_.pressStart();
    fuzz::holds(world_.log().find(L"secret") == std::wstring::npos, "no password in the log");
  }

 private:
  test::World world_;
  std::shared_ptr<Answers> answers_;
  os::WebGuard guard_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMostKept = 259;
  static Asking asking;
  std::string_view bytes = fuzz::bytesOf(data, size);
  const bool fails = fuzz::choice(bytes) % 2 != 0;
  asking.run(bytes, fails);
  const std::wstring* kept = language::userVariables().find(L"X");
  fuzz::holds(!kept || text::units(*kept) <= kMostKept, "a variable within its limit");
  language::userVariables().clear();
  return 0;
}
