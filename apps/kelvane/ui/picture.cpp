#include "kelvane/ui/picture.h"

#include "headless/model/models.h"
#include "headless/proui/ui.h"
#include "headless/session/menu.h"
#include "headless/session/windows.h"
#include "kelvane/show/model_folder.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/units.h"

namespace kelvane::view {
namespace {

using headless::Component;
using headless::Dialog;
using headless::Kind;
using headless::Session;

constexpr std::size_t kLongText = 20'000;  // characters of a text area that are told as a whole
constexpr std::size_t kMessageLength = 2'000;

json textOf(const Component& component, const Revisions& revisions) {
  if (component.text.size() <= kLongText) return text::toUtf8(component.text);
  return {{"length", component.text.size()}, {"revision", revisions.texts}};
}

void addChoices(json& described, const headless::Choices& choices) {
  json list = json::array();
  for (std::size_t i = 0; i < choices.names.size(); ++i) {
    const bool labelled = i < choices.labels.size();
    list.push_back(
        {{"name", choices.names[i]}, {"text", labelled ? text::toUtf8(choices.labels[i]) : choices.names[i]}});
  }
  described["choices"] = std::move(list);
  described["selected"] = choices.selected;
}

void addContent(json& described, const Component& component, const Revisions& revisions) {
  switch (component.kind) {
    case Kind::checkbutton:
      described["checked"] = component.checked;
      break;
    case Kind::layout:
      described["mapped"] = component.mapped;
      break;
    case Kind::progressbar: {
      const headless::Progress& bar = component.progress();
      described["minimum"] = bar.minimum;
      described["maximum"] = bar.maximum;
      described["value"] = bar.value;
      break;
    }
    case Kind::optionmenu:
    case Kind::list:
      addChoices(described, component.choices());
      break;
    case Kind::table:
      described["revision"] = revisions.tables;
      described["size"] = component.table().size();
      for (const headless::Column& column : component.table().columns())
        described["columns"].push_back(
            {{"name", column.name}, {"text", text::toUtf8(column.label)}, {"width", column.width}});
      break;
    case Kind::tree:
      described["revision"] = revisions.trees;
      described["size"] = component.tree().size();
      break;
    default:
      break;
  }
}

json componentOf(const Dialog& dialog, const Dialog::Place& place, const Revisions& revisions) {
  const Component& component = *dialog.look(place.component);
  json described = {
      {"name", place.component},  {"inside", place.inside},       {"kind", headless::kindName(component.kind)},
      {"shown", component.shown}, {"enabled", component.enabled}, {"text", textOf(component, revisions)},
      {"image", component.image}};
  addContent(described, component, revisions);
  return described;
}

json dialogOf(const Dialog& dialog, const Revisions& revisions) {
  json components = json::array();
  for (const Dialog::Place& place : dialog.places()) {
    if (dialog.look(place.component)) components.push_back(componentOf(dialog, place, revisions));
  }
  const bool modeless = dialog.traits[static_cast<std::size_t>(creo::ProUIDialogTrait::modeless)];
  return {{"title", text::toUtf8(dialog.title)},
          {"icon", dialog.icon},
          {"modal", dialog.active && !modeless},
          {"components", std::move(components)}};
}

// The components of `after` that differ from those of `before`; both have the same ones in the same order.
json differingComponents(const json& before, const json& after) {
  json differing = json::array();
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (before[i] != after[i]) differing.push_back(after[i]);
  }
  return differing;
}

json dialogChange(const json* before, const json& after) {
  const bool whole = !before || before->at("components").size() != after.at("components").size();
  json change = after;
  change["whole"] = whole;
  if (!whole) change["components"] = differingComponents(before->at("components"), after.at("components"));
  return change;
}

}  // namespace

json dialogsOf(Session& session, const Revisions& revisions) {
  json dialogs = json::object();
  for (const std::string& name : session.ui().dialogs()) {
    const Dialog* dialog = session.ui().dialog(name);
    if (dialog && dialog->visible) dialogs[name] = dialogOf(*dialog, revisions);
  }
  return dialogs;
}

json windowsOf(Session& session) {
  json windows = json::array();
  const headless::Windows& all = session.windows();
  for (const int number : all.all()) {
    const headless::Model* model = session.models().find(all.model(number));
    if (!model && number == headless::Windows::kFirst) continue;  // nothing is open in it
    windows.push_back({{"number", number},
                       {"model", model ? label(model->name, model->type()) : std::string()},
                       {"current", number == all.active()}});
  }
  return windows;
}

json menuOf(Session& session) {
  json entries = json::array();
  for (const headless::MenuButton& button : session.menu().buttons()) {
    const headless::Command* command = session.menu().command(button.command);
    entries.push_back({{"menu", text::toUtf8(button.menuLabel)},
                       {"command", button.command},
                       {"text", text::toUtf8(button.label)},
                       {"help", text::toUtf8(button.help)},
                       {"icon", command ? command->icon : std::string()}});
  }
  return entries;
}

json indicatorOf(Session& session) {
  json labels = json::array();
  const Dialog* window = session.ui().dialog(headless::kWindowDevice);
  if (!window) return labels;
  for (const std::string& name : window->overlays()) {
    const Component* label = window->look(name);
    const auto* place = label ? std::get_if<std::unique_ptr<headless::LabelPlace>>(&label->content) : nullptr;
    if (place)
      labels.push_back({{"name", name},
                        {"image", text::toUtf8(os::nameOf(text::fromUtf8(label->image)))},
                        {"help", text::toUtf8((*place)->help)}});
  }
  return labels;
}

json messagesOf(const Session& session, std::size_t from, std::size_t most) {
  const std::vector<std::wstring>& all = session.messages();
  json lines = json::array();
  from = std::max(from, all.size() > most ? all.size() - most : 0);
  for (std::size_t i = from; i < all.size(); ++i) lines.push_back(text::toUtf8(text::cut(all[i], kMessageLength)));
  return lines;
}

json changeOf(const json& before, const json& after) {
  json change = json::object();
  for (const auto& [name, value] : after.items()) {
    const auto old = before.find(name);
    if (old != before.end() && *old == value) continue;
    if (name != "dialogs" || old == before.end()) {
      change[name] = value;
      continue;
    }
    json dialogs = json::object(), gone = json::array();
    for (const auto& [dialog, now] : value.items()) {
      const auto then = old->find(dialog);
      if (then == old->end() || *then != now)
        dialogs[dialog] = dialogChange(then == old->end() ? nullptr : &*then, now);
    }
    for (const auto& [dialog, then] : old->items()) {
      if (!value.contains(dialog)) gone.push_back(dialog);
    }
    change["dialogs"] = std::move(dialogs);
    change["gone"] = std::move(gone);
  }
  return change;
}

std::string lineOf(const json& value) { return value.dump(-1, ' ', false, json::error_handler_t::replace); }

}  // namespace kelvane::view
