// Reading delimited text beside libcsv and Python's csv module on the same bytes; holding and writing a report of a
// million cells. bench/README.md has the figures.
#include <benchmark/benchmark.h>
#include <csv.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "language/csv_table.h"
#include "os/surroundings.h"
#include "reports/csv_report.h"

namespace {

namespace fs = std::filesystem;

fs::path placeOf(const char* name) {
  return fs::path("/dev/shm") / ("kelvane-csv-bench-" + std::to_string(getpid()) + name);
}

// A table as sites keep them: numbers, texts, some quoted, umlauts.
std::string tableText(std::size_t bytes) {
  std::string text = "file;number;description;material;mass;designated\r\n";
  for (int i = 0; text.size() < bytes; ++i)
    text += "PART_" + std::to_string(i) + ".prt;\"GB-120-" + std::to_string(i) +
            "\";\"Geh\xC3\xA4use; \"\"oben\"\"\";EN-GJL-250;" + std::to_string(i) + ".25;true\r\n";
  return text;
}

void throughput(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void readTable(benchmark::State& state) {
  const std::string text = tableText(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(language::parseCsv(text, L';', L",ccs=UTF-8").rowCount());
  throughput(state, text.size());
}
BENCHMARK(readTable)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

// libcsv hands over narrow fields one by one; they are kept as a reader of a table would.
void readByLibcsv(benchmark::State& state) {
  const std::string text = tableText(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<std::string> cells;
    csv_parser parser;
    csv_init(&parser, 0);
    csv_set_delim(&parser, ';');
    const auto keep = [](void* field, std::size_t size, void* into) {
      static_cast<std::vector<std::string>*>(into)->emplace_back(static_cast<const char*>(field), size);
    };
    csv_parse(&parser, text.data(), text.size(), keep, nullptr, &cells);
    csv_fini(&parser, keep, nullptr, &cells);
    csv_free(&parser);
    benchmark::DoNotOptimize(cells.data());
  }
  throughput(state, text.size());
}
BENCHMARK(readByLibcsv)->Arg(1'000'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

// The seconds that Python's own clock says for what the script does.
double pythonSeconds(const std::string& script) {
  const fs::path file = placeOf(".py");
  std::ofstream(file) << script;
  double seconds = 0;
  if (std::FILE* out = popen(("python3 " + file.string()).c_str(), "r")) {
    if (std::fscanf(out, "%lf", &seconds) != 1) seconds = 0;
    pclose(out);
  }
  fs::remove(file);
  return seconds;
}

void readByPython(benchmark::State& state) {
  const std::string text = tableText(static_cast<std::size_t>(state.range(0)));
  const fs::path file = placeOf(".csv");
  std::ofstream(file, std::ios::binary) << text;
  for (auto _ : state)
    state.SetIterationTime(pythonSeconds("import csv, io, time\ntext = open('" + file.string() +
                                         "', encoding='utf-8', newline='').read()\nstart = time.perf_counter()\n"
                                         "rows = list(csv.reader(io.StringIO(text, newline=''), delimiter=';'))\n"
                                         "print(time.perf_counter() - start)\n"));
  fs::remove(file);
  throughput(state, text.size());
}
BENCHMARK(readByPython)->Arg(10'000'000)->UseManualTime()->Unit(benchmark::kMillisecond);

constexpr int kColumns = 30;

// Rows of values of an audit; what they take beside their own text.
void fillReport(reports::CsvReport& report, int cells) {
  for (int column = 0; column < kColumns; ++column)
    reports::reportAddColumn(report, L"B" + std::to_wstring(column), L"Column " + std::to_wstring(column));
  for (int row = 0; row < cells / kColumns; ++row) {
    reports::reportNextRow(report);
    for (int column = 0; column < kColumns; ++column)
      reports::reportSetValue(report, L"B" + std::to_wstring(column), L"value " + std::to_wstring(row * column));
  }
}

reports::CsvReport reportAt(const fs::path& file) {
  os::mounts().set(L'r', file.parent_path());
  reports::CsvReport report;
  report.path = L"r:\\" + file.filename().wstring();
  report.overwrite = true;
  report.form = {.charsetUtf = true, .semicolon = true};
  return report;
}

void writeReport(benchmark::State& state) {
  const fs::path file = placeOf("-report.csv");
  std::size_t bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove(file);
    reports::CsvReport report = reportAt(file);
    fillReport(report, static_cast<int>(state.range(0)));
    state.ResumeTiming();
    reports::reportClose(report);
    state.PauseTiming();
    bytes = fs::file_size(file);
    report = {};
    state.ResumeTiming();
  }
  throughput(state, bytes);
  fs::remove(file);
  fs::remove(file.string() + "header");
}
BENCHMARK(writeReport)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void holdReport(benchmark::State& state) {
  const fs::path file = placeOf("-held.csv");
  for (auto _ : state) {
    malloc_trim(0);
    const auto before = mallinfo2();
    reports::CsvReport report = reportAt(file);
    fillReport(report, static_cast<int>(state.range(0)));
    const auto after = mallinfo2();
    double text = 0, cells = 0;
    for (const reports::Row& row : report.rows) {
      for (const reports::Cell& cell : row) text += static_cast<double>(cell.value.size() * sizeof(wchar_t));
      cells += static_cast<double>(row.size());
    }
    const auto taken = static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd);
    state.counters["bytes_a_cell_beside_text"] = (taken - text) / cells;
  }
  fs::remove(file.string() + "header");
}
BENCHMARK(holdReport)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
