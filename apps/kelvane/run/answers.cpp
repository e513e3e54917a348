#include "kelvane/run/answers.h"

#include <algorithm>

#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace kelvane {
namespace {

using actions::QuestionKind;
using headless::FileQuestion;

bool isSystemPath(std::string_view path) {
  return path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

std::optional<FileQuestion::What> fileQuestion(QuestionKind kind) {
  if (kind == QuestionKind::saveFile) return FileQuestion::What::save;
  if (kind == QuestionKind::openFile) return FileQuestion::What::open;
  if (kind == QuestionKind::folder) return FileQuestion::What::folder;
  return std::nullopt;
}

// The value as the dialog takes it, or a Fault.
std::wstring valueFor(const ListQuestion& question, const std::string& value) {
  const std::string place = "--answer " + question.variable + ": ";
  if (!question.choices.empty() &&
      std::find(question.choices.begin(), question.choices.end(), value) == question.choices.end()) {
    throw Fault(place + "there is no choice '" + value + "'" + didYouMean(value, question.choices));
  }
  const auto what = fileQuestion(question.kind);
  if (!what) return text::fromUtf8(value);
  std::wstring path = isSystemPath(value) ? text::fromUtf8(value) : systemPath(value);
  if (!headless::canBeChosen(*what, path))
    throw Fault(place + "'" + value + "' can't be chosen as " + described(question));
  return path;
}

const ListQuestion* asked(const std::vector<ListQuestion>& questions, const std::string& name) {
  const auto found = std::find_if(questions.begin(), questions.end(), [&](const ListQuestion& question) {
    return text::equalNoCase(text::fromUtf8(question.variable), text::fromUtf8(name));
  });
  return found == questions.end() ? nullptr : &*found;
}

Answer answerOf(const std::vector<ListQuestion>& questions, const std::string& given) {
  const std::size_t equals = given.find('=');
  if (equals == given.npos || equals == 0) throw Fault("--answer " + given + ": write NAME=VALUE");
  const std::string name = given.substr(0, equals);
  const ListQuestion* question = asked(questions, name);
  if (!question) {
    std::vector<std::string> names;
    names.reserve(questions.size());
    for (const ListQuestion& entry : questions) names.push_back(entry.variable);
    throw Fault("--answer: the list doesn't ask for '" + name + "'" + didYouMean(name, names));
  }
  return {text::fromUtf8(name), valueFor(*question, given.substr(equals + 1))};
}

const std::wstring* find(const std::vector<Answer>& answers, std::wstring_view variable) {
  const auto found = std::find_if(answers.rbegin(), answers.rend(),
                                  [&](const Answer& answer) { return text::equalNoCase(answer.variable, variable); });
  return found == answers.rend() ? nullptr : &found->value;
}

void requireAll(const std::vector<ListQuestion>& questions, const std::vector<Answer>& answers) {
  std::string open;
  for (const ListQuestion& question : questions) {
    if (question.hasStart || find(answers, text::fromUtf8(question.variable))) continue;
    open += (open.empty() ? "" : ", ") + question.variable + " (" + question.place + ", " + described(question) + ")";
  }
  if (!open.empty()) throw Fault(questions.front().member + ": it asks for " + open + "; give --answer NAME=VALUE");
}

}  // namespace

std::vector<Answer> answersTo(const std::vector<ListQuestion>& questions, const std::vector<std::string>& given) {
  std::vector<Answer> answers;
  answers.reserve(given.size());
  for (const std::string& text : given) answers.push_back(answerOf(questions, text));
  requireAll(questions, answers);
  return answers;
}

Answerer::Answerer(headless::Session& session, const std::vector<Answer>& answers, Console& console)
    : session_(session), answers_(answers), console_(console) {
  session_.ui().answerQuestions([this](const headless::Question& question) {
    press(question);
    return 0;
  });
  session_.ui().answerFileQuestions([this](const FileQuestion& question) { return path(question); });
}

Answerer::~Answerer() {
  session_.ui().answerQuestions(nullptr);
  session_.ui().answerFileQuestions(nullptr);
}

const std::wstring* Answerer::answer() const {
  const actions::OpenQuestion* open = actions::openQuestion();
  return open ? find(answers_, open->variable) : nullptr;
}

void Answerer::press(const headless::Question& question) {
  if (question.dialog != actions::question::kDialog || !actions::openQuestion()) return;
  // What stays open is closed by its cross.
  if (fill(answer())) session_.ui().press(question.dialog, actions::question::kOk);
}

bool Answerer::fill(const std::wstring* value) {
  using namespace actions::question;
  switch (actions::openQuestion()->kind) {
    case QuestionKind::text:
      return !value || !session_.ui().type(kDialog, kPanel, *value);
    case QuestionKind::choice:
      return choose(value);
    case QuestionKind::check:
      return !value || check(*value);
    default:
      return true;
  }
}

bool Answerer::choose(const std::wstring* value) {
  using namespace actions::question;
  const headless::Dialog& dialog = *session_.ui().dialog(kDialog);
  const std::vector<std::string>& names = dialog.choices(kMenu);
  if (names.empty()) trouble(L"there is nothing to choose from");
  if (names.empty() || !value) return !names.empty();
  std::string name = text::toUtf8(*value);
  const std::vector<std::wstring>& labels = dialog.labels(kMenu);
  const auto label = std::find(labels.begin(), labels.end(), *value);
  if (std::find(names.begin(), names.end(), name) == names.end() && label != labels.end())
    name = names[static_cast<std::size_t>(label - labels.begin())];
  if (!session_.ui().choose(kDialog, kMenu, name)) return true;
  trouble(text::format(L"there is no choice '%s'", *value));
  return false;
}

// The button shows "steel / brass": set means the first.
bool Answerer::check(const std::wstring& value) {
  using namespace actions::question;
  const std::wstring& both = session_.ui().dialog(kDialog)->text(kCheck);
  const bool on = value == L"true" || (value != L"false" && both.starts_with(value + L" / "));
  if (on || value == L"false" || both.ends_with(L" / " + value)) return !session_.ui().setCheck(kDialog, kCheck, on);
  trouble(text::format(L"'%s' is neither 'true' nor 'false' nor one of '%s'", value, both));
  return false;
}

std::optional<std::wstring> Answerer::path(const FileQuestion& question) {
  std::wstring chosen = question.folder;
  if (question.what != FileQuestion::What::folder)
    chosen = question.proposal.empty() ? L"" : os::joined(question.folder, question.proposal);
  if (const std::wstring* given = answer()) chosen = *given;
  if (headless::canBeChosen(question.what, chosen)) return chosen;
  trouble(text::format(L"'%s' can't be chosen", text::fromUtf8(shown(chosen))));
  return std::nullopt;
}

void Answerer::trouble(const std::wstring& fault) {
  troubled_ = true;
  const actions::OpenQuestion* open = actions::openQuestion();
  console_.trouble("error: the question for " + (open ? text::toUtf8(open->variable) : std::string("a file")) + ": " +
                   text::toUtf8(fault));
}

}  // namespace kelvane
