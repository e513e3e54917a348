// The session as a person sees it, as JSON for the page; docs/ui.md describes the form. Of tables, trees and long texts
// the picture has only their size and revision: the page asks for the lines that it shows.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "headless/session.h"

namespace kelvane::view {

using nlohmann::json;

// How often the content of components of a kind may have changed; what has the same number as before is the same.
struct Revisions {
  int tables = 0, trees = 0, texts = 0;
};

// The dialogs on the screen, by their names.
json dialogsOf(headless::Session& session, const Revisions& revisions);
// Windows with their models, by number.
json windowsOf(headless::Session& session);
// The entries of the menu bar.
json menuOf(headless::Session& session);
// What lies on Creo's own window: a list of name, image and help.
json indicatorOf(headless::Session& session);
// Lines of the message area from that one on, of a bounded length and at most `most`, the newest ones.
json messagesOf(const headless::Session& session, std::size_t from, std::size_t most);

// What of `after` differs from `before`: members as they are now; of "dialogs" those that are new or differ, with the
// components that differ ("whole": true for a new dialog), and "gone": the names of those that went.
json changeOf(const json& before, const json& after);

// One line of JSON, whatever bytes the texts hold.
std::string lineOf(const json& value);

}  // namespace kelvane::view
