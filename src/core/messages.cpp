#include "core/messages.h"

#include <algorithm>
#include <iterator>

#include "core/creo_log.h"
#include "text/format.h"
#include "text/letters.h"

namespace core {
namespace {

// Creo's feature types by the code that lists store, ten a line.
// clang-format off
constexpr std::array<std::int16_t, 246> kFeatureTypes = {
    1085, 1234, 981, 1244, 947, 1061, 1116, 1122, 992, 1046,  // 0
    1241, 1026, 1067, 953, 958, 1047, 1030, 978, 998, 3,  // 10
    977, 1077, 1076, 914, 980, 1073, 1072, 1074, 1000, 1118,  // 20
    1004, 979, 984, 930, 933, 3, 949, 1013, 916, 1009,  // 30
    3, 926, 176, 931, 946, 942, 1037, 1062, 3, 922,  // 40
    929, 927, 1041, 940, 996, 1097, 1016, 1015, 1082, 1014,  // 50
    1017, 1103, 1034, 1117, 921, 1081, 934, 1083, 1005, 989,  // 60
    985, 0, 1002, 919, 1102, 966, 1003, 1064, 1233, 956,  // 70
    1109, 1051, 1105, 1238, 1084, 1229, 3, 3, 3, 963,  // 80
    944, 1104, 911, 1215, 1220, 1218, 1106, 1213, 1219, 1216,  // 90
    1221, 1212, 1230, 1227, 1211, 1112, 1231, 1224, 1214, 1124,  // 100
    1217, 932, 1113, 961, 991, 1096, 997, 1110, 1028, 971,  // 110
    924, 972, 1018, 1040, 935, 973, 1001, 974, 975, 939,  // 120
    936, 1226, 918, 941, 1119, 1007, 1039, 982, 0, 1232,  // 130
    945, 1033, 1022, 1024, 1025, 1032, 1027, 1021, 1020, 1023,  // 140
    983, 1065, 1080, 917, 1107, 3, 1042, 943, 920, 1043,  // 150
    1060, 1059, 1063, 1006, 913, 1123, 1130, 1228, 937, 967,  // 160
    912, 3, 3, 3, 3, 3, 3, 3, 3, 928,  // 170
    1108, 1031, 1068, 987, 1101, 1114, 915, 1093, 1092, 965,  // 180
    969, 1091, 1090, 970, 1095, 1094, 1129, 1128, 1126, 1127,  // 190
    1125, 1098, 1115, 990, 1029, 1049, 988, 962, 999, 3,  // 200
    1066, 3, 1035, 1225, 950, 1120, 957, 1070, 1019, 938,  // 210
    1050, 925, 995, 959, 960, 1087, 948, 1048, 994, 954,  // 220
    2000, 968, 1088, 952, 1086, 1053, 1089, 1054, 1055, 1121,  // 230
    1056, 1111, 1057, 1008, 1052, 1254,  // 240
};
// clang-format on
constexpr int kUnknownFeatureType = 3;

struct MessageRow {
  Message message;
  int number;
  const wchar_t *english, *german;
};
constexpr MessageRow kRows[] = {
#include "core/message_rows.inc"
};
constexpr bool isInOrder() {
  int number = 0;
  for (const MessageRow& row : kRows) {
    if (row.number != number || static_cast<int>(row.message) != number) return false;
    ++number;
  }
  return true;
}
static_assert(isInOrder(), "a row has another number than its place, or another name than its number");
static_assert(std::size(kRows) <= kMessageCount);

constexpr MessageTable column(const wchar_t* MessageRow::*language) {
  MessageTable texts = {};
  for (const MessageRow& row : kRows) texts[static_cast<std::size_t>(row.number)] = row.*language;
  return texts;
}

bool german = false;

int filled(const MessageTable& table) {
  return static_cast<int>(std::count_if(table.begin(), table.end(), [](const wchar_t* entry) { return entry; }));
}

}  // namespace

constinit const MessageTable lang_de = column(&MessageRow::german);
constinit const MessageTable lang_en = column(&MessageRow::english);
const int langkey = static_cast<int>(std::size(kRows));

const wchar_t* msgText(Message message) { return (german ? lang_de : lang_en)[static_cast<std::size_t>(message)]; }

void setLanguage(std::wstring_view language) { german = text::equalNoCase(language, L"de"); }

bool useGerman() { return german; }

int checkMessageTables() { return checkMessageTables(lang_en, lang_de, langkey); }

int checkMessageTables(const MessageTable& english, const MessageTable& germanTable, int keys) {
  const int en = filled(english), de = filled(germanTable);
  if (en == keys && de == keys && keys == kMessageCount) return 0;
  creoLog(text::format(L"<KVD> lang_en : %d Elements", en));
  creoLog(text::format(L"<KVD> lang_de : %d Elements", de));
  creoLog(text::format(L"<KVD> langkey : %d Elements", keys));
  return 1;
}

int featureTypeFromCode(std::wstring_view code) {
  if (code.empty() || code.size() > 3 || (code.size() > 1 && code[0] == L'0')) return kUnknownFeatureType;
  std::size_t number = 0;
  for (wchar_t c : code) {
    if (c < L'0' || c > L'9') return kUnknownFeatureType;
    number = number * 10 + static_cast<std::size_t>(c - L'0');
  }
  return number < kFeatureTypes.size() ? kFeatureTypes[number] : kUnknownFeatureType;
}

}  // namespace core
