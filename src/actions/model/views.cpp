// Saved views of solids, and how the views of drawings are drawn.
#include <algorithm>

#include "actions/model/named_states.h"
#include "actions/number_list.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProView.h"
#include "creo/guards.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

// ---- saved views

// The first view whose name or second name fits. ProNotFound: none does, or there are no views.
creo::Got<std::wstring> viewThatFits(creo::ProMdl solid, std::wstring_view pattern) {
  const auto views = creo::ProViewNamesGet(solid);
  if (!views) return views.error;
  for (std::size_t i = 0; i < views.value.names.size(); ++i)
    if (fitsName(pattern, views.value.names[i]) || fitsName(pattern, views.value.alternateNames[i]))
      return views.value.names[i];
  return creo::ProNotFound;
}

void showView(const Task& task) {
  const std::wstring wanted = nameIn(task, L"view");
  if (wanted.empty()) return core::logMsgPlain(Message::noSuchView, core::kError);
  const auto view = viewThatFits(task.model(), wanted);
  const bool isDefault = view.error == creo::ProNotFound && text::equalNoCase(wanted, L"default");
  if (!view && !isDefault)
    return core::logMsgPlain(view.error == creo::ProNotFound ? Message::noSuchView : Message::viewTableUnread,
                             core::kError);
  const creo::ProError shown =
      isDefault ? creo::ProViewReset(task.model()) : creo::ProViewRetrieve(task.model(), view.value);
  if (shown == creo::ProNoError)
    core::logMsgId(Message::viewSet, core::kNormal, 1);
  else if (isDefault)
    core::logMsgPlain(Message::noDefaultView, core::kError);
  else
    core::logWrite(text::format(L"The view '%s' can't be shown", view.value), core::kError);
}

// An option that stands at another value for a moment. Its moving pictures are all that depends on it, so that one that
// can't be set is no fault; one that stays changed is.
class StillOption {
 public:
  StillOption(std::wstring_view name, const wchar_t* value) : name_(name), guard_(std::wstring(name)) {
    guard_.change(value);
  }
  ~StillOption() {
    if (!guard_.back()) core::logWrite(text::format(L"The option '%s' can't be put back", name_), core::kError);
  }
  StillOption(const StillOption&) = delete;
  StillOption& operator=(const StillOption&) = delete;

 private:
  std::wstring_view name_;
  creo::OptionGuard guard_;
};

Outcome setView(const Task& task) {
  // Without them Creo turns the model into its new view in many small steps.
  const StillOption time(L"max_animation_time", L"0"), steps(L"min_animation_steps", L"0");
  showView(task);
  return done;
}

struct Orientation {
  std::wstring_view word;
  Message message;
  creo::ProViewMatrix matrix;
  std::wstring_view text = {};  // of one for which there is no message
};
// From the front, the right and above, all three axes equally short.
constexpr double kHalf = 0.70710678118654752, kSixth = 0.40824829046386302, kThird = 0.57735026918962576;
constexpr Orientation kOrientations[] = {
    {L"front", Message::setFront, {1, 0, 0, 0, 1, 0, 0, 0, 1}},
    {L"right", Message::setRight, {0, 0, 1, 0, 1, 0, -1, 0, 0}},
    {L"back", Message::setBack, {-1, 0, 0, 0, 1, 0, 0, 0, -1}},
    {L"left", Message::setLeft, {0, 0, -1, 0, 1, 0, 1, 0, 0}},
    {L"top", Message::setTop, {1, 0, 0, 0, 0, 1, 0, -1, 0}},
    {L"bottom", Message::setBottom, {1, 0, 0, 0, 0, -1, 0, 1, 0}},
    {L"iso",
     Message::setOrientation,
     {kHalf, -kSixth, kThird, 0, 2 * kSixth, kThird, -kHalf, -kSixth, kThird},
     L"Set iso"},
    {L"custom", Message::setCustom, {}},
};
constexpr std::size_t kMatrixSize = 1024;  // of a matrix's text

// The rotation in a text of nine numbers, or of sixteen with a shift in the last row. Nothing: it has other numbers, or
// a last column that would draw in perspective.
std::optional<creo::ProViewMatrix> matrixIn(std::wstring_view text) {
  const auto numbers = numberList(text);
  if (!numbers || (numbers->size() != 9 && numbers->size() != 16)) return std::nullopt;
  const std::size_t width = numbers->size() == 9 ? 3 : 4;
  const auto at = [&](std::size_t row, std::size_t column) { return (*numbers)[row * width + column]; };
  if (width == 4 && (at(0, 3) != 0 || at(1, 3) != 0 || at(2, 3) != 0 || at(3, 3) != 1)) return std::nullopt;
  creo::ProViewMatrix matrix{};
  for (std::size_t i = 0; i < matrix.size(); ++i) matrix[i] = at(i / 3, i % 3);
  return matrix;
}

// Nothing, with an error line, for an entry that doesn't say how the view looks.
std::optional<Orientation> orientationOf(const Task& task, int number) {
  const std::wstring_view word = task.numbered(L"orient_%d", number).value_or(L"");
  const auto* known =
      std::find_if(std::begin(kOrientations), std::end(kOrientations), [&](auto& entry) { return entry.word == word; });
  if (known == std::end(kOrientations)) {
    unknownWord(text::format(L"orient_%d", number), word, L"front, right, back, left, top, bottom, iso or custom");
    return std::nullopt;
  }
  Orientation orientation = *known;
  if (orientation.message != Message::setCustom) return orientation;
  const auto matrix = matrixIn(replacedText(task, task.numbered(L"matrix_%d", number).value_or(L""), kMatrixSize));
  if (!matrix) {
    core::logWrite(text::format(L"'matrix_%d' isn't a rotation of 9 or 16 numbers", number), core::kError);
    return std::nullopt;
  }
  orientation.matrix = *matrix;
  return orientation;
}

void storeView(const Task& task, const Task::Numbered& entry) {
  const std::wstring name = replacedText(task, entry.value);
  if (name.empty()) return core::logWrite(text::format(L"'name_%d' gives no name", entry.number), core::kError);
  const auto orientation = orientationOf(task, entry.number);
  if (!orientation) return;
  switch (creo::ProViewStore(task.model(), name, orientation->matrix)) {
    case creo::ProNoError:
      core::logIndented(text::format(L"%s '%s'", core::msgText(Message::setOrientation), name), core::kNormal, 1);
      if (!orientation->text.empty()) return core::logIndented(std::wstring(orientation->text), core::kNormal, 2);
      return core::logMsgId(orientation->message, core::kNormal, 2);
    case creo::ProBadInputs:
      return core::logWrite(text::format(L"'matrix_%d' isn't a rotation of 9 or 16 numbers", entry.number),
                            core::kError);
    default:
      return core::logWrite(text::format(L"The view '%s' can't be set", name), core::kError);
  }
}

Outcome addEditViews(const Task& task) {
  for (const Task::Numbered& entry : task.numberedAll(L"name_", kListSize)) storeView(task, entry);
  return done;
}

void renameOne(const Task& task, const Task::Numbered& entry) {
  const std::wstring pattern = replacedText(task, entry.value);
  const std::wstring to = replacedText(task, task.numbered(L"namet_%d", entry.number).value_or(L""));
  if (pattern.empty() || to.empty())
    return core::logWrite(text::format(L"'namef_%d' and 'namet_%d' must give names", entry.number, entry.number),
                          core::kError);
  const auto view = viewThatFits(task.model(), pattern);
  if (!view) return core::logWrite(text::format(L"No view is called '%s'", pattern), core::kError);
  const std::wstring renaming = text::format(core::msgText(Message::renameFromTo), view.value, to);
  switch (creo::ProViewRename(task.model(), view.value, to)) {
    case creo::ProNoError:
      return core::logIndented(renaming, core::kNormal, 1);
    case creo::ProExists:
      return core::logWrite(renaming + L": there is a view of that name", core::kError);
    default:
      return core::logWrite(renaming + L": it failed", core::kError);
  }
}

Outcome renameView(const Task& task) {
  for (const Task::Numbered& entry : task.numberedAll(L"namef_", kListSize)) renameOne(task, entry);
  return done;
}

// ---- views of drawings

struct StyleWord {
  std::wstring_view word;
  creo::ProDisplayStyle style;
};
constexpr StyleWord kStyles[] = {{L"default", creo::ProDisplayStyle::byDefault},
                                 {L"wireframe", creo::ProDisplayStyle::wireframe},
                                 {L"hidden", creo::ProDisplayStyle::hiddenLine},
                                 {L"nohidden", creo::ProDisplayStyle::noHidden},
                                 {L"shading", creo::ProDisplayStyle::shaded},
                                 {L"environment", creo::ProDisplayStyle::followEnvironment},
                                 {L"shadingedges", creo::ProDisplayStyle::shadedWithEdges}};
constexpr std::wstring_view kStyleWords =
    L"default, wireframe, hidden, nohidden, shading, environment, shadingedges or their number";
constexpr std::wstring_view kAnyStyle = L"*";

// By its word, or by its number from 0.
std::optional<creo::ProDisplayStyle> styleCalled(std::wstring_view text) {
  for (const StyleWord& entry : kStyles)
    if (text == entry.word || text == std::to_wstring(static_cast<int>(entry.style))) return entry.style;
  return std::nullopt;
}

std::wstring wordOf(creo::ProDisplayStyle style) {
  const auto* found =
      std::find_if(std::begin(kStyles), std::end(kStyles), [&](auto& entry) { return entry.style == style; });
  return found == std::end(kStyles) ? std::to_wstring(static_cast<int>(style)) : std::wstring(found->word);
}

// from: nothing stands for any style.
void replaceStyle(const creo::ProView& view, std::optional<creo::ProDisplayStyle> from, creo::ProDisplayStyle to) {
  const auto style = creo::ProDrawingViewDisplayGet(view);
  if (!style) return core::logMsgPlain(Message::displayStyleNotSet, core::kError);
  if ((from && style.value != *from) || style.value == to) return;
  const auto name = creo::ProDrawingViewNameGet(view);
  const std::wstring label = name ? name.value : std::to_wstring(view.id);
  core::logIndented(text::format(core::msgText(Message::workOnStyle), label, wordOf(style.value)), core::kNormal, 1);
  if (creo::ProDrawingViewDisplaySet(view, to) == creo::ProNoError)
    core::logIndented(text::format(core::msgText(Message::replacedThrough), wordOf(to)), core::kNormal, 1);
  else
    core::logMsgPlain(Message::displayStyleNotSet, core::kError);
}

Outcome replaceViewModelDisplay(const Task& task) {
  const std::wstring_view fromWord = task.attribute(L"stylef"), toWord = task.attribute(L"stylet");
  const auto from = styleCalled(fromWord), to = styleCalled(toWord);
  if (!from && fromWord != kAnyStyle) {
    unknownWord(L"stylef", fromWord, std::wstring(L"*, ") + std::wstring(kStyleWords));
    return done;
  }
  if (!to) {
    unknownWord(L"stylet", toWord, kStyleWords);
    return done;
  }
  const auto views = creo::ProDrawingViewsCollect(task.model());
  if (!creo::isTold(views)) core::logWrite(L"The views of the drawing can't be read", core::kError);
  for (const creo::ProView& view : views.value) replaceStyle(view, from, *to);
  return done;
}

constexpr Attribute kSetAttributes[] = {
    {.name = L"view",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a view's name or second name; default, where no view is called so: the model as it stands"},
};
constexpr Attribute kAddAttributes[] = {
    {.name = L"name_%d", .variables = true, .need = Need::oneOf, .about = "the name of a view"},
    {.name = L"orient_%d",
     .kind = Kind::word,
     .words = L"front|right|back|left|top|bottom|iso|custom",
     .need = Need::needed,
     .about = "how it looks at the model; custom: as the matrix says"},
    {.name = L"matrix_%d",
     .kind = Kind::numbers,
     .variables = true,
     .about = "with custom: nine numbers of a rotation, or sixteen with a shift in the last row"},
};
constexpr Attribute kRenameAttributes[] = {
    {.name = L"namef_%d",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::oneOf,
     .about = "a view's name or second name; the first that fits is renamed"},
    {.name = L"namet_%d", .variables = true, .need = Need::needed, .about = "its new name"},
};
constexpr Attribute kDisplayAttributes[] = {
    {.name = L"stylef",
     .kind = Kind::word,
     .words = L"*|default|wireframe|hidden|nohidden|shading|environment|shadingedges|0|1|2|3|4|5|6",
     .need = Need::needed,
     .about = "views that are drawn so, by its word or Creo's number of it; *: whatever it is"},
    {.name = L"stylet",
     .kind = Kind::word,
     .words = L"default|wireframe|hidden|nohidden|shading|environment|shadingedges|0|1|2|3|4|5|6",
     .need = Need::needed,
     .about = "how they are drawn from now on"},
};

constexpr Action kActions[] = {
    {.key = L"addEditViews",
     .place = 46,
     .title = Message::addViews,
     .conditions = kOnNativeSolids,
     .attributes = kAddAttributes,
     .effects = {.changes = Touched::model},
     .about = "makes saved views, or gives those that are there another orientation",
     .function = &addEditViews},
    {.key = L"renameView",
     .place = 47,
     .title = L"Rename view",
     .conditions = kOnNativeSolids,
     .attributes = kRenameAttributes,
     .effects = {.changes = Touched::model},
     .about = "renames saved views",
     .function = &renameView},
    {.key = L"setView",
     .place = 49,
     .title = Message::setView,
     .conditions = {kFilter, kSolids, kAnyOfTheWork},
     .attributes = kSetAttributes,
     .effects = {.changes = Touched::model | Touched::session | Touched::options},
     .about = "shows a solid in a saved view",
     .function = &setView},
    {.key = L"replaceViewModelDisplay",
     .place = 55,
     .title = Message::replaceViewDisplay,
     .conditions = {kFilter, kDrawings, kAnyOfTheWork},
     .attributes = kDisplayAttributes,
     .effects = {.changes = Touched::model},
     .about = "draws views of a drawing in another way",
     .function = &replaceViewModelDisplay},
};

}  // namespace

std::span<const Action> viewActions() { return kActions; }

}  // namespace actions
