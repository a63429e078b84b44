#include "summary/summary_workbook.h"

#include <gtest/gtest.h>

#include <map>
#include <pugixml.hpp>

#include "driver/converter.h"
#include "driver/workbook_stages.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/package/zip_reader.h"
#include "workbook/xlsx/xlsx_reader.h"

namespace z4400 {

void PrintTo(const CellValue& value, std::ostream* out) {
  *out << (value.IsText() ? "\"" + value.ToText() + "\"" : value.ToText());
}

namespace {

using testing::ScratchDir;

/// A row of a marker list: label, trace, position, unit, level, unit.
using MarkerRow = std::vector<CellValue>;

std::vector<CellValue> RowValues(const Worksheet& sheet, int row, int first, int last) {
  std::vector<CellValue> values;
  for (int column = first; column <= last; ++column) values.push_back(sheet.ValueAt(row, column));
  return values;
}

/// The marker rows of a converted workbook's "Markers Details", by screen.
std::map<int, std::vector<MarkerRow>> MarkersDetailsRows(const Worksheet& sheet) {
  std::map<int, std::vector<MarkerRow>> rows;
  int screen = 0;
  for (int row = 3; row <= sheet.grid().RowCount(); ++row) {
    const CellValue label = sheet.ValueAt(row, 1);
    if (label == CellValue("Marker List Screen")) {
      screen = static_cast<int>(sheet.ValueAt(row, 2).Number());
      rows[screen];
    } else if (label != CellValue("Marker") && label != CellValue()) {
      rows[screen].push_back(RowValues(sheet, row, 1, 6));
    }
  }
  return rows;
}

/// The value beside `label` in column A of the "Report" sheet.
CellValue ReportValue(const Worksheet& report, const std::string& label) {
  for (int row = 1; row <= report.grid().RowCount(); ++row) {
    if (report.ValueAt(row, 1) == CellValue(label)) return report.ValueAt(row, 2);
  }
  return CellValue();
}

Workbook& Open(Application& application, const std::filesystem::path& path) {
  Workbook& book = application.Workbooks().Add();
  std::string error;
  EXPECT_TRUE(ReadXlsx(path, &book, &error)) << path << ": " << error;
  return book;
}

TEST(SummaryWorkbookTest, RowsOfTheExamplesEqualTheirMarkersDetails) {
  ScratchDir scratch;
  const std::filesystem::path output = scratch / "out";
  std::filesystem::create_directories(output);
  testing::RecordingUi ui;
  Converter converter(ui, scratch.path(), WorkbookStagesFactory(kDefaultVersion));
  converter.SetFinishPause(0);
  std::vector<std::filesystem::path> examples;
  for (const auto& entry : std::filesystem::directory_iterator(testing::SourceDir() / "examples")) {
    const std::string extension = entry.path().extension().string();
    if (extension == ".xml" || extension == ".csv") examples.push_back(entry.path());
  }
  std::sort(examples.begin(), examples.end());
  ASSERT_GE(examples.size(), 5u);
  for (const auto& example : examples) converter.AddFile(example.string());
  ASSERT_EQ(converter.StartConversion(output.string(), true), 0);

  RunSummary run;
  for (const auto& example : examples) {
    const auto workbook = output / example.stem().concat(".xlsx");
    run.Add(example.string(), true, "", workbook.string());
  }
  const std::filesystem::path summary_path = scratch / "summary.xlsx";
  std::string error;
  ASSERT_TRUE(SaveSummaryWorkbook(run.files(), summary_path, &error)) << error;

  Application application;
  Workbook& summary = Open(application, summary_path);
  const Worksheet& files = summary.Worksheets()(std::string(kSummaryFilesSheet));
  const Worksheet& markers = summary.Worksheets()(std::string(kSummaryMarkersSheet));
  int marker_row = 2;
  int listed = 0;
  for (size_t i = 0; i < examples.size(); ++i) {
    SCOPED_TRACE(examples[i].filename().string());
    const int file_row = static_cast<int>(i) + 2;
    const std::filesystem::path workbook_path = output / examples[i].stem().concat(".xlsx");
    Workbook& converted = Open(application, workbook_path);
    const Worksheet& report = converted.Worksheets()("Report");
    const auto details = MarkersDetailsRows(converted.Worksheets()("Markers Details"));

    EXPECT_EQ(files.ValueAt(file_row, 1), CellValue(examples[i].string()));
    EXPECT_EQ(files.ValueAt(file_row, 2), CellValue("converted"));
    EXPECT_EQ(files.ValueAt(file_row, 3), CellValue());
    EXPECT_EQ(files.ValueAt(file_row, 4), ReportValue(report, "Instrument reference"));
    EXPECT_EQ(files.ValueAt(file_row, 5), ReportValue(report, "Date"));
    EXPECT_EQ(files.ValueAt(file_row, 6).ToText(), ReportValue(report, "Title").ToText());
    EXPECT_EQ(files.ValueAt(file_row, 7), CellValue(static_cast<int>(details.size())));
    EXPECT_EQ(files.ValueAt(file_row, 8), CellValue(workbook_path.string()));

    for (const auto& [screen, rows] : details) {
      // The row of the reference marker, when the screen lists one.
      const MarkerRow* reference = nullptr;
      for (const MarkerRow& row : rows) {
        if (row[0] == CellValue("Reference")) reference = &row;
      }
      for (const MarkerRow& row : rows) {
        SCOPED_TRACE("screen " + std::to_string(screen) + " row " + std::to_string(marker_row));
        EXPECT_EQ(markers.ValueAt(marker_row, 1), CellValue(examples[i].string()));
        EXPECT_EQ(markers.ValueAt(marker_row, 2), CellValue(screen));
        EXPECT_EQ(RowValues(markers, marker_row, 3, 8), row);
        // In delta mode every row names the marker that is the reference.
        const CellValue delta = markers.ValueAt(marker_row, 9);
        if (reference == nullptr) {
          EXPECT_EQ(delta, CellValue());
        } else {
          ASSERT_TRUE(delta.IsNumber());
          const auto same = std::find_if(rows.begin(), rows.end(),
                                         [&](const MarkerRow& other) { return other[0] == delta; });
          ASSERT_NE(same, rows.end()) << "reference marker " << delta.ToText() << " not listed";
          EXPECT_EQ(std::vector<CellValue>(same->begin() + 1, same->end()),
                    std::vector<CellValue>(reference->begin() + 1, reference->end()));
        }
        ++marker_row;
        ++listed;
      }
    }
  }
  EXPECT_EQ(markers.ValueAt(marker_row, 1), CellValue()) << "rows beyond the files' markers";
  EXPECT_GT(listed, 10) << "the examples list markers";
}

TEST(SummaryWorkbookTest, TextsStayTextsAndFailedFilesListNoMarkers) {
  FileSummary odd{"/lab/2007-03-05", false, "Not MQD data.", "", "TRUE", "not a day", "1e3", 0};
  FileSummary good{"/lab/meas.xml", true, "", "/out/meas.xlsx", "Z4420", "2007-3-5", "=SUM(A1)", 1};
  good.markers.push_back(
      {1, MarkerListEntry{CellValue(1), "A", {2.5, "MHz"}, {-20.125, "dBm"}, "0.00"}, 0});
  good.markers.push_back(
      {1, MarkerListEntry{CellValue("Reference"), "B", {3, "MHz"}, {1.5, "mV"}, "0.000"}, 2});
  odd.markers.push_back(good.markers[0]);  // never listed for a failed file
  ScratchDir scratch;
  const std::filesystem::path path = scratch / "summary.xlsx";
  std::string error;
  // Written over an older summary, as watch mode rewrites it.
  ASSERT_TRUE(SaveSummaryWorkbook({odd}, path, &error)) << error;
  ASSERT_TRUE(SaveSummaryWorkbook({odd, good}, path, &error)) << error;

  Application application;
  Workbook& book = Open(application, path);
  const Worksheet& files = book.Worksheets()(std::string(kSummaryFilesSheet));
  const std::vector<CellValue> expected_files[] = {
      {CellValue("Source file"), CellValue("Status"), CellValue("Reason"), CellValue("Model"),
       CellValue("Date"), CellValue("Title"), CellValue("Screens"), CellValue("Workbook")},
      {CellValue("/lab/2007-03-05"), CellValue("failed"), CellValue("Not MQD data."),
       CellValue("TRUE"), CellValue("not a day"), CellValue("1e3"), CellValue(0), CellValue()},
      {CellValue("/lab/meas.xml"), CellValue("converted"), CellValue(), CellValue("Z4420"),
       CellValue(DateValue{39146}), CellValue("=SUM(A1)"), CellValue(1),
       CellValue("/out/meas.xlsx")}};
  for (int row = 1; row <= 3; ++row) {
    EXPECT_EQ(RowValues(files, row, 1, 8), expected_files[row - 1]) << "row " << row;
  }
  const Worksheet& markers = book.Worksheets()(std::string(kSummaryMarkersSheet));
  const std::vector<CellValue> expected_markers[] = {
      {CellValue("/lab/meas.xml"), CellValue(1), CellValue(1), CellValue("A"), CellValue(2.5),
       CellValue("MHz"), CellValue(-20.125), CellValue("dBm"), CellValue()},
      {CellValue("/lab/meas.xml"), CellValue(1), CellValue("Reference"), CellValue("B"),
       CellValue(3), CellValue("MHz"), CellValue(1.5), CellValue("mV"), CellValue(2)},
      std::vector<CellValue>(9)};
  for (int row = 2; row <= 4; ++row) {
    EXPECT_EQ(RowValues(markers, row, 1, 9), expected_markers[row - 2]) << "row " << row;
  }
  EXPECT_EQ(markers.ValueAt(1, 9), CellValue("Delta reference"));

  // Each sheet: bold header row, frozen, filter over header and rows (the
  // parts' schema validity is the writer's own test).
  const std::unique_ptr<ZipReader> zip = ZipReader::Open(path, &error);
  ASSERT_NE(zip, nullptr) << error;
  const std::pair<const char*, const char*> filters[] = {{"xl/worksheets/sheet1.xml", "A1:H3"},
                                                         {"xl/worksheets/sheet2.xml", "A1:I3"}};
  for (const auto& [part, filter] : filters) {
    std::string bytes;
    ASSERT_TRUE(zip->Read(part, &bytes, &error)) << error;
    pugi::xml_document sheet;
    ASSERT_TRUE(sheet.load_string(bytes.c_str()));
    const pugi::xml_node root = sheet.child("worksheet");
    EXPECT_STREQ(root.child("autoFilter").attribute("ref").value(), filter) << part;
    EXPECT_STREQ(root.select_node("sheetViews/sheetView/pane/@state").attribute().value(), "frozen")
        << part;
  }
  EXPECT_TRUE(files.StyleAt(1, 3) != 0 && files.StyleAt(2, 3) == 0) << "bold header row";
}

}  // namespace
}  // namespace z4400
