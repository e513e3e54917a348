// The texts of the log, in German and English, by name and number. Creo's own message file kvusermsg.txt is another
// thing: it holds what Creo itself displays.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/message_names.h"

namespace core {

constexpr int kMessageCount = 422;
using MessageTable = std::array<const wchar_t*, kMessageCount>;
// A language of the one table, by number.
extern const MessageTable lang_de;
extern const MessageTable lang_en;
extern const int langkey;  // how many rows the table has

// The text in the current language.
const wchar_t* msgText(Message message);
// "de", case-blind, selects German; anything else English.
void setLanguage(std::wstring_view language);
bool useGerman();
// 0, or 1 when the tables differ in length; then three lines in Creo's message area tell the lengths. A table's length
// is the number of its filled entries: one that lacks rows is told from a whole one.
int checkMessageTables();
int checkMessageTables(const MessageTable& english, const MessageTable& german, int keys);

// Creo's feature type for a list's code, a decimal text "0" to "245". A text that is no entry gives 3.
int featureTypeFromCode(std::wstring_view code);

}  // namespace core
