#include "workbook/reports/markers_details_sheet.h"

#include <gtest/gtest.h>

#include <string>

#include "common/runtime_failure.h"
#include "workbook/reports/report_sheets_test_util.h"

namespace z4400 {
namespace {

using testing::At;
using testing::SheetOf;
using testing::StartWithResultSheets;

MarkerRecord Marker(int32_t trace, double x, double level, const std::string& name = "") {
  MarkerRecord m;
  m.On = -1;
  m.Trace = trace;
  m.TraceName = name.empty() && trace >= 0 ? std::string(1, "ABC"[trace]) : name;
  m.PosX = x;
  m.PosY = level;
  return m;
}

/// Markers 1, 2 and 4 on (3 off), delta off, all markers candidates.
MarkersInfo FourMarkers() {
  MarkersInfo info;
  info.DeltaMode = 1;
  info.MarkerCount = 3;
  info.Markers[0] = Marker(0, 2.37525e9, -8.62);
  info.Markers[1] = Marker(1, 2.41625e9, -20.5);
  info.Markers[2] = Marker(0, 2.4e9, -30);
  info.Markers[2].On = 0;
  info.Markers[3] = Marker(0, 2.43e9, -45.25);
  return info;
}

const MarkerAxes kSpectrumDbm{false, "dBm"};

TEST(MarkersDetailsSheetTest, ListsOnBothSheetsFollowEachOther) {
  ExcelApp excel = StartWithResultSheets();
  MarkerListRows rows;
  WriteMarkersDetails(excel, FourMarkers(), kSpectrumDbm, 0, rows);
  MarkersInfo none;  // no marker on: heading and column headers only
  WriteMarkersDetails(excel, none, kSpectrumDbm, 1, rows);
  WriteMarkersDetails(excel, FourMarkers(), kSpectrumDbm, 2, rows);

  Worksheet& details = SheetOf(excel, "Markers Details");
  Worksheet& report = SheetOf(excel, "Report");
  EXPECT_EQ(&excel.application()->ActiveSheet(), &report);
  EXPECT_EQ(At(details, "A1"), CellValue("Markers Detailed Report"));
  EXPECT_TRUE(details.Range("A1").Font().Bold());
  EXPECT_TRUE(details.Range("A1").Font().Italic());
  EXPECT_TRUE(At(report, "A1").IsEmpty());

  // "Markers Details": screen 1's heading, column headers, three markers;
  // one empty row; screen 2's heading and column headers; one empty row;
  // screen 3. "Report": each list beside its screen's configuration block.
  const struct {
    Worksheet* sheet;
    int first_row;
    int column;
    int screen_rows[3];
    int next_row;
  } kPlaces[] = {{&details, 3, 1, {3, 3 + 6, 3 + 6 + 3}, 3 + 15},
                 {&report, 9, 10, {9, 26, 43}, 43 + 6}};
  for (const auto& place : kPlaces) {
    Worksheet& sheet = *place.sheet;
    const int c = place.column;
    const int r = place.first_row;
    const int* screen_rows = place.screen_rows;
    for (int s = 0; s < 3; ++s) {
      EXPECT_EQ(sheet.Cells(screen_rows[s], c).Value(), CellValue("Marker List Screen"))
          << sheet.Name() << " " << s;
      EXPECT_EQ(sheet.Cells(screen_rows[s], c + 1).Value(), CellValue(s + 1));
      EXPECT_TRUE(sheet.Cells(screen_rows[s], c).Font().Bold());
      EXPECT_EQ(sheet.Cells(screen_rows[s] + 1, c).Value(), CellValue("Marker"));
      EXPECT_TRUE(sheet.Cells(screen_rows[s] - 1, c).Value().IsEmpty());
    }
    // Wide enough for "Marker List Screen" beside the screen number.
    EXPECT_GE(sheet.ColumnWidthAt(c), 18.0) << sheet.Name();
    EXPECT_EQ(sheet.Name() == "Report" ? rows.report_row : rows.details_row, place.next_row);
    EXPECT_TRUE(sheet.Cells(screen_rows[1] + 2, c).Value().IsEmpty());
    // Markers 1, 2 and 4 of the first screen.
    const struct {
      int number;
      const char* trace;
      double x;
      double level;
    } kExpected[] = {{1, "A", 2.37525, -8.62}, {2, "B", 2.41625, -20.5}, {4, "A", 2.43, -45.25}};
    for (int i = 0; i < 3; ++i) {
      const int row = r + 2 + i;
      const auto& e = kExpected[i];
      EXPECT_EQ(sheet.Cells(row, c).Value(), CellValue(e.number)) << sheet.Name();
      EXPECT_EQ(sheet.Cells(row, c + 1).Value(), CellValue(e.trace));
      EXPECT_NEAR(sheet.Cells(row, c + 2).Value().Number(), e.x, 1e-12);
      EXPECT_EQ(sheet.Cells(row, c + 2).NumberFormat(), "0.#########");
      EXPECT_EQ(sheet.Cells(row, c + 3).Value(), CellValue("GHz"));
      EXPECT_DOUBLE_EQ(sheet.Cells(row, c + 4).Value().Number(), e.level);
      EXPECT_EQ(sheet.Cells(row, c + 4).NumberFormat(), "0.00");
      EXPECT_EQ(sheet.Cells(row, c + 5).Value(), CellValue("dBm"));
    }
  }
}

TEST(MarkersDetailsSheetTest, ColumnsShowEveryTextAndNumberWhole) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& sheet = SheetOf(excel, "Markers Details");
  MarkersInfo info;
  info.DeltaMode = 1;
  // Position 93.133333333 MHz; level 0.52475 mW, shown as 524750.000 nW.
  info.Markers[0] = Marker(0, 93133333.333, 0.00052475);
  info.Markers[1] = Marker(1, 1e6, 0.0001);  // 100000.000 nW
  WriteMarkerList(sheet, 3, 1, info, MarkerAxes{false, "Watts"}, 0);
  // Needed widths, in digit widths plus the cell margin: "93.133333333" is
  // 11.5 digits wide (13 characters), "524750.000" 9.5 (11), the bold
  // "Position" 6.9 (9); "Marker List Screen" in bold needs 17 of the 18
  // the label column has anyway.
  const struct {
    int column;
    double width;
  } kWidths[] = {{1, 18}, {2, kStandardColumnWidth}, {3, 13}, {4, kStandardColumnWidth},
                 {5, 11}, {6, kStandardColumnWidth}};
  for (const auto& w : kWidths) EXPECT_EQ(sheet.ColumnWidthAt(w.column), w.width) << w.column;

  // A list never narrows a column.
  sheet.Columns(3).SetColumnWidth(40);
  WriteMarkerList(sheet, 20, 1, info, MarkerAxes{false, "Watts"}, 0);
  EXPECT_EQ(sheet.ColumnWidthAt(3), 40);
}

TEST(MarkersDetailsSheetTest, DeltaModeAddsReferenceRow) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& details = SheetOf(excel, "Markers Details");
  MarkersInfo info = FourMarkers();
  info.DeltaMode = 2;
  info.MarkerCount = 3;  // marker 4 is the reference (0-based 3)
  const int16_t next = WriteMarkerList(details, 3, 1, info, kSpectrumDbm, 0);
  EXPECT_EQ(next, 3 + 2 + 3 + 1);
  EXPECT_EQ(details.Cells(8, 1).Value(), CellValue("Reference"));
  EXPECT_EQ(details.Cells(8, 2).Value(), CellValue("A"));
  EXPECT_NEAR(details.Cells(8, 3).Value().Number(), 2.43, 1e-12);
  EXPECT_DOUBLE_EQ(details.Cells(8, 5).Value().Number(), -45.25);

  // A reference number outside the ten markers, or a reference that is
  // off, has no row.
  for (const int32_t reference : {2, 10, -1}) {
    info.MarkerCount = reference;
    EXPECT_EQ(WriteMarkerList(details, 20, 1, info, kSpectrumDbm, 0), 20 + 2 + 3) << reference;
  }
}

TEST(MarkersDetailsSheetTest, UnitsOfPositionsAndLevels) {
  const struct {
    const char* name;
    MarkerAxes axes;
    double x, level;
    double shown_x;
    const char* x_unit;
    double shown_level;
    const char* level_unit;
    const char* level_format;
  } kCases[] = {
      {"dBm", {false, "dBm"}, 98.1e6, -8.62, 98.1, "MHz", -8.62, "dBm", "0.00"},
      {"volts", {false, "Volts"}, 433.9e6, 0.16168, 433.9, "MHz", 161.68, "mV", "0.000"},
      {"IQ volts", {true, "V"}, 102.5e-6, 0.16168, 102.5, "usec", 161.68, "mV", "0.000"},
      // 1 mW and less show in nW (the watt formatter has no uW).
      {"watts", {false, "Watts"}, 1.5e9, 0.00052475, 1.5, "GHz", 524750, "nW", "0.000"},
      {"freq-time", {true, "Hz"}, 0.0015, 12500, 1.5, "msec", 12.5, "kHz", "0.000"},
      {"zero span", {true, "dBm"}, 2, -50, 2, "sec", -50, "dBm", "0.00"},
      {"degrees", {false, "deg"}, 2e3, 45.5, 2, "kHz", 45.5, "deg", "0.00"},
  };
  for (const auto& c : kCases) {
    ExcelApp excel = StartWithResultSheets();
    Worksheet& sheet = SheetOf(excel, "Report");
    MarkersInfo info;
    info.DeltaMode = 1;
    info.Markers[0] = Marker(0, c.x, c.level);
    WriteMarkerList(sheet, 9, 10, info, c.axes, 0);
    EXPECT_NEAR(At(sheet, "L11").Number(), c.shown_x, 1e-9 * std::abs(c.shown_x)) << c.name;
    EXPECT_EQ(At(sheet, "M11"), CellValue(c.x_unit)) << c.name;
    EXPECT_NEAR(At(sheet, "N11").Number(), c.shown_level, 1e-9 * std::abs(c.shown_level)) << c.name;
    EXPECT_EQ(sheet.Range("N11").NumberFormat(), c.level_format) << c.name;
    EXPECT_EQ(At(sheet, "O11"), CellValue(c.level_unit)) << c.name;
  }
}

TEST(MarkersDetailsSheetTest, CandidatesAxesAndTraceNames) {
  {
    // With only the active marker a candidate, the selection decides:
    // "Ref" (0) is marker 1, 4 is marker 4.
    EXPECT_EQ(ActiveMarkerOf(MarkersInfo{}), 0);
    MarkersInfo info = FourMarkers();
    info.Reserved = 0;
    info.SelectedMarker = 4;
    EXPECT_EQ(ActiveMarkerOf(info), 3);
    ExcelApp excel = StartWithResultSheets();
    Worksheet& sheet = SheetOf(excel, "Report");
    EXPECT_EQ(WriteMarkerList(sheet, 9, 10, info, kSpectrumDbm, 0), 12);
    EXPECT_EQ(At(sheet, "J11"), CellValue(4));
  }
  {
    // A marker on a trace the instrument names otherwise shows that name.
    ExcelApp excel = StartWithResultSheets();
    Worksheet& sheet = SheetOf(excel, "Report");
    MarkersInfo info;
    info.DeltaMode = 1;
    info.Markers[9] = Marker(-1, 1e6, -3, "D");
    WriteMarkerList(sheet, 9, 10, info, kSpectrumDbm, 0);
    EXPECT_EQ(At(sheet, "J11"), CellValue(10));
    EXPECT_EQ(At(sheet, "K11"), CellValue("D"));
  }
  {
    // Time positions: zero span, and digital functions other than the two
    // frequency ones.
    const struct {
      int16_t is_time;
      const char* mode;
      const char* function;
      bool time_x;
    } kCases[] = {
        {0, "", "", false},
        {-1, "", "", true},
        {0, "ON", "IQ-Time", true},
        {0, "ON", "Freq-Time", true},
        {0, "ON", "PartialFFT", false},
        {0, "ON", "Phase-Freq", false},
        {0, "OFF", "IQ-Time", false},
    };
    for (const auto& c : kCases) {
      DigitalValues digital;
      digital.DigitalMode = c.mode;
      digital.MeasurementFunction = c.function;
      const MarkerAxes axes = MarkerAxesOf(XAxisKind{c.is_time, "dBm"}, digital);
      EXPECT_EQ(axes.time_x, c.time_x) << c.mode << " " << c.function << " " << c.is_time;
      EXPECT_EQ(axes.level_unit, "dBm");
    }
  }
  {
    ExcelApp excel = StartWithResultSheets();
    excel.application()->ActiveWorkbook().Worksheets()("Markers Details").Delete();
    MarkerListRows rows;
    EXPECT_THROW(WriteMarkersDetails(excel, FourMarkers(), kSpectrumDbm, 0, rows), RuntimeFailure);
  }
}

}  // namespace
}  // namespace z4400
