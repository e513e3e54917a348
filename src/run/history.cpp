#include "run/history.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProExtdata.h"
#include "documents/filter.h"
#include "os/processes.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace run {
namespace {

constexpr const wchar_t* kClass = L"kvpslot";
constexpr const wchar_t* kCount = L"NrOfLists";
// Sizes of the slots in characters, the closing zero included.
constexpr std::size_t kDateSize = 20, kShortSize = 18;

// A damaged count must not keep Creo busy for hours: behind so many missing records there are no more.
constexpr int kMostMissing = 1000;

// The model's class of records; nothing when the model's data can't be opened.
std::optional<creo::ProExtdataClass> openClass(creo::ProMdl model) {
  if (creo::ProExtdataInit(model) || creo::ProExtdataLoadAll(model)) return std::nullopt;
  auto cls = creo::ProExtdataClassRegister(model, kClass);
  if (cls) return std::move(cls.value);
  if (cls.error == creo::ProBadInputs) return creo::ProExtdataClass{kClass, model};  // it is there already
  return std::nullopt;
}

std::wstring slotName(const wchar_t* pattern, int number) { return text::format(pattern, number); }

std::optional<std::wstring> readText(const creo::ProExtdataClass& cls, const wchar_t* pattern, int number) {
  auto value = creo::ProExtdataSlotRead(cls, slotName(pattern, number));
  if (!value || value.value.type != creo::ProExtdataType::text) return std::nullopt;
  return std::move(value.value.text);
}

// 0 also where the slot can't be read.
int readCount(const creo::ProExtdataClass& cls) {
  const auto value = creo::ProExtdataSlotRead(cls, kCount);
  if (!value || value.value.type != creo::ProExtdataType::integer) return 0;
  return std::clamp(value.value.integer, 0, std::numeric_limits<int>::max() - 1);
}

// A slot that can't be made or written is left out; the count stays raised.
void writeText(const creo::ProExtdataClass& cls, const wchar_t* pattern, int number, const std::wstring& value,
               std::size_t size) {
  const std::wstring slot = slotName(pattern, number);
  creo::ProExtdataSlotCreate(cls, slot);
  creo::ProExtdataValue written;
  written.type = creo::ProExtdataType::text;
  written.text = text::cut(value, size - 1);  // nobody else cuts it
  creo::ProExtdataSlotWrite(cls, slot, written, size);
}

// The chosen package or list as a slot holds it.
std::wstring_view stored(std::wstring_view name) { return text::cut(name, text::kTextSize - 1); }

bool isChosen(std::wstring_view package, std::wstring_view list) {
  const auto& state = core::pluginState();
  return package == stored(state.currentKvz) && list == stored(state.currentList);
}

// Calls take(number) for each record until it says that it has enough. take tells how the record was.
enum class Met { missing, read, enough };
void eachRecord(const creo::ProExtdataClass& cls, creo::FunctionRef<Met(int)> take) {
  const int count = readCount(cls);
  int missing = 0;
  for (int number = 1; number <= count && missing < kMostMissing; ++number) {
    const Met met = take(number);
    if (met == Met::enough) return;
    missing = met == Met::missing ? missing + 1 : 0;
  }
}

std::wstring padded(std::wstring_view text) {
  constexpr std::size_t kWidth = 50;
  const std::size_t length = text::units(text);
  return std::wstring(text).append(length < kWidth ? kWidth - length : 0, L' ');
}

std::wstring lineOf(const HistoryRecord& record) {
  const std::wstring gap(6, L' ');
  return (isChosen(record.package, record.list) ? L"*" : L" ") + record.date + gap + padded(record.package) + gap +
         padded(record.list) + gap + record.user + L"\n";
}

}  // namespace

void writeHistory(creo::ProMdl model) {
  const auto& state = core::pluginState();
  if (state.writeExtData != 1) return;
  const auto cls = openClass(model);
  if (!cls) return;
  const creo::ProError created = creo::ProExtdataSlotCreate(*cls, kCount);
  if (created != creo::ProNoError && created != creo::ProBadInputs) return;
  creo::ProExtdataValue count;
  count.integer = created == creo::ProBadInputs ? readCount(*cls) + 1 : 1;
  creo::ProExtdataSlotWrite(*cls, kCount, count, 1);

  const int number = count.integer;
  writeText(*cls, L"KVZName%d", number, state.currentKvz, text::kTextSize);
  if (state.currentKvz.empty()) core::creoLog(L"currentkvzname == ''");
  writeText(*cls, L"ListName%d", number, state.currentList, text::kTextSize);
  if (state.currentList.empty()) core::creoLog(L"currentactname == ''");
  writeText(*cls, L"Date%d", number, state.currentDate, kDateSize);
  writeText(*cls, L"Mac%d", number, state.mac, kShortSize);
  const auto user = os::environment(L"username");
  if (user && !user->empty()) writeText(*cls, L"Username%d", number, *user, kShortSize);
  writeText(*cls, L"Company%d", number, state.company, kShortSize);
}

int historyCount(creo::ProMdl model) {
  const auto cls = openClass(model);
  return cls ? readCount(*cls) : 0;
}

bool isAlreadyReworked(creo::ProMdl model) {
  if (core::pluginState().autoUnsetReworkedData != 1) return false;
  const auto cls = openClass(model);
  if (!cls) {
    core::creoLog(L"<KVD> sourceData - Failure while read the history");
    return false;
  }
  bool reworked = false;
  eachRecord(*cls, [&](int number) {
    const auto package = readText(*cls, L"KVZName%d", number);
    if (!package) return Met::missing;
    if (*package != stored(core::pluginState().currentKvz)) return Met::read;
    const auto list = readText(*cls, L"ListName%d", number);
    reworked = list && isChosen(*package, *list);
    return reworked ? Met::enough : Met::read;
  });
  return reworked;
}

std::vector<HistoryRecord> readHistory(creo::ProMdl model) {
  std::vector<HistoryRecord> records;
  const auto cls = openClass(model);
  if (!cls) return records;
  HistoryRecord record;
  eachRecord(*cls, [&](int number) {
    const auto read = [&](const wchar_t* pattern, std::wstring& value) {
      auto got = readText(*cls, pattern, number);
      if (got) value = std::move(*got);
      return got.has_value();
    };
    const bool package = read(L"KVZName%d", record.package);
    const bool list = read(L"ListName%d", record.list);
    const bool date = read(L"Date%d", record.date);
    const bool user = read(L"Username%d", record.user);
    if (!package && !list && !date && !user) return Met::missing;
    records.push_back(record);
    return Met::read;
  });
  return records;
}

std::wstring historyText(std::string_view row) {
  const auto point = row.rfind('.');
  if (point == std::string_view::npos) return L"No model selected";
  const std::wstring extension = text::upper(text::fromUtf8(row.substr(point + 1)));
  const creo::ProMdl model = documents::retrieveByFileName(row, extension);
  const std::vector<HistoryRecord> records = model ? readHistory(model) : std::vector<HistoryRecord>();
  if (records.empty()) return L"No history found";
  std::wstring text;
  for (const HistoryRecord& record : records) text += lineOf(record);
  return text;
}

}  // namespace run
