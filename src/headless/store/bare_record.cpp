#include "headless/store/bare_record.h"

#include <algorithm>

namespace headless {

void nameRecord(Json& object, std::string name, std::initializer_list<std::string_view> dropped) {
  std::erase_if(object.items, [&](const Json& member) {
    return member.name == "id" || member.name == "name" ||
           std::find(dropped.begin(), dropped.end(), member.name) != dropped.end();
  });
  Json id, text;
  id.name = "id";
  id.kind = JsonKind::integer;
  text.name = "name";
  text.kind = JsonKind::text;
  text.text = std::move(name);
  object.items.insert(object.items.begin(), {std::move(id), std::move(text)});
}

}  // namespace headless
