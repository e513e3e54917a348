// The lists of the list report: each is a table of columns over one kind of item, with a row for each item.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "actions/task.h"
#include "creo/ProDrawing.h"
#include "reports/report_row.h"

namespace reports {

// How lists name a model: "BOLT_20<BOLT>.prt" and the folder that it lies in, "d:\models\".
struct ModelFile {
  std::wstring name, path;
};
// Empty texts for a handle that has gone; an empty path for a model that was never saved.
ModelFile modelFile(creo::ProMdl model);

// The model that a list is about.
struct ListSubject {
  const actions::Task& task;
  creo::ProMdl model;
  creo::ProMdlType type = creo::ProMdlType::unused;
  ModelFile file;
};

template <class Item>
struct ListColumn {
  std::wstring_view title, key;
  std::wstring (*value)(const Item& item);  // empty: it can't be had
};

// Adds the columns, then a row an item.
template <class Item>
class ListRows {
 public:
  ListRows(CsvReport& report, std::span<const ListColumn<Item>> columns) : report_(report), columns_(columns) {
    for (const ListColumn<Item>& column : columns_) reportAddColumn(report_, column.key, column.title);
  }
  void add(const Item& item) const {
    for (const ListColumn<Item>& column : columns_) reportSetValue(report_, column.key, column.value(item));
    reportNextRow(report_);
  }

 private:
  CsvReport& report_;
  std::span<const ListColumn<Item>> columns_;
};

// Lines as one field; empty where they can't be had.
std::wstring joined(const creo::Got<std::vector<std::wstring>>& lines, std::wstring_view separator = L"\n");

// A list writes its columns, also where it finds nothing, and its rows.
using ListFunction = void (*)(CsvReport& report, const ListSubject& subject);

void instanceList(CsvReport& report, const ListSubject& subject);        // list_instances.cpp
void sheetList(CsvReport& report, const ListSubject& subject);           // list_drawing.cpp
void parameterList(CsvReport& report, const ListSubject& subject);       // list_parameters.cpp
void noteList(CsvReport& report, const ListSubject& subject);            // list_notes.cpp
void drawingModelList(CsvReport& report, const ListSubject& subject);    // list_drawing.cpp
void shownDimensionList(CsvReport& report, const ListSubject& subject);  // list_dimensions.cpp
void layerList(CsvReport& report, const ListSubject& subject);           // list_layers.cpp
void dimensionList(CsvReport& report, const ListSubject& subject);       // list_dimensions.cpp
void dependencyList(CsvReport& report, const ListSubject& subject);      // list_dependencies.cpp

}  // namespace reports
