#include "kelvane/run/questions.h"

#include <algorithm>

#include "actions/task.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "kelvane/check/text_check.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using actions::QuestionKind;
using core::XmlNode;

std::wstring_view valueOf(const XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* found = core::attrFind(node.attributes, name);
  return found ? found->value : std::wstring_view();
}

// The dialog proposes a name only where it has an extension; what variables come to isn't known yet.
bool proposesFile(std::wstring_view path) {
  const std::size_t separator = path.find_last_of(L"\\/");
  const std::wstring_view name = separator == path.npos ? path : path.substr(separator + 1);
  return hasVariables(path) || name.find(L'.') != name.npos;
}

class Collector {
 public:
  Collector(std::string member, const core::XmlDocument& document) : member_(std::move(member)), document_(document) {}

  void section(const XmlNode* section, char letter) {
    if (section) tasks(*section, [letter](int index) { return letter + std::to_string(index); });
  }
  std::vector<ListQuestion> take() { return std::move(found_); }

 private:
  template <class Place>
  void tasks(const XmlNode& parent, Place place) {
    int index = -1;
    core::xmlEachChild(parent, [&](const XmlNode& task) { one(task, place(++index)); });
  }

  void one(const XmlNode& task, const std::string& place) {
    const core::XmlAttr* deak = core::attrFind(task.attributes, L"deak");
    if (deak && deak->value != L"false") return;
    if (valueOf(task, L"type") == L"setUserVariable") question(task, place);
    if (valueOf(task, L"type") != L"groupActions") return;
    bool found = false;  // only the first element of that name runs
    core::xmlEachChild(task, [&](const XmlNode& child) {
      if (found || child.name != L"subtasks") return;
      found = true;
      tasks(child, [&place](int index) { return place + " - G" + std::to_string(index); });
    });
  }

  void question(const XmlNode& task, const std::string& place) {
    const auto kind = actions::questionKind(valueOf(task, L"varType"));
    if (!kind) return;  // asks nothing and writes an error
    ListQuestion question;
    question.variable = text::toUtf8(valueOf(task, L"varName"));
    question.kind = *kind;
    question.member = member_;
    question.place = place;
    question.line = document_.lineOf(task);
    fillStart(task, question);
    found_.push_back(std::move(question));
  }

  static void fillStart(const XmlNode& task, ListQuestion& question) {
    const std::wstring_view start = valueOf(task, L"varValue");
    switch (question.kind) {
      case QuestionKind::description:
        question.hasStart = true;
        return;
      case QuestionKind::choice:
        return fillChoices(task, question);
      case QuestionKind::check:
        question.hasStart = true;
        question.start =
            text::toUtf8(valueOf(task, valueOf(task, L"check_def") == L"true" ? L"check_true" : L"check_false"));
        return;
      case QuestionKind::saveFile:
      case QuestionKind::openFile:
        question.hasStart = proposesFile(start);
        break;
      case QuestionKind::text:
      case QuestionKind::folder:
        question.hasStart = !start.empty();
        break;
    }
    question.start = text::toUtf8(start);
  }

  static void fillChoices(const XmlNode& task, ListQuestion& question) {
    if (text::parseInt(valueOf(task, L"combo_autosel")) == 1) {
      question.hasStart = true;  // the drawing's first model
      return;
    }
    const actions::Subject none;
    const actions::Task view(task, none);
    for (const int i : view.numbers(L"combo_value_", text::parseInt(valueOf(task, L"combo_c")))) {
      const std::wstring_view value = *view.numbered(L"combo_value_%d", i);
      question.choices.push_back(text::toUtf8(value));
      const auto label = view.numbered(L"combo_name_%d", i);
      if (label && *label != value) question.choices.push_back(text::toUtf8(*label));
    }
    question.hasStart = !question.choices.empty();
    if (question.hasStart) question.start = question.choices.front();
  }

  std::string member_;
  const core::XmlDocument& document_;
  std::vector<ListQuestion> found_;
};

}  // namespace

std::vector<ListQuestion> questionsOf(const PackageSource& package, const std::string& list) {
  const std::string member = "actionlists/" + list;
  const auto loaded = core::xmlParse(package.read(member));
  if (!loaded) return {};
  const documents::ActionList sections = documents::actionList(*loaded.value);
  Collector collector(member, *loaded.value);
  collector.section(sections.head, 'H');
  collector.section(sections.body, 'B');
  collector.section(sections.foot, 'F');
  return collector.take();
}

std::string described(const ListQuestion& question) {
  constexpr const char* kKinds[] = {"a text",          "a choice", "yes or no",     "nothing, it tells something",
                                    "a file to write", "a folder", "a file to read"};
  std::string text = kKinds[static_cast<std::size_t>(question.kind) - 1];
  for (std::size_t i = 0; i < question.choices.size(); ++i) text += (i == 0 ? ": " : ", ") + question.choices[i];
  if (!question.hasStart) return text + ", without a start value";
  return question.start.empty() ? text : text + ", at first '" + question.start + "'";
}

}  // namespace kelvane
