// The instrument samples read by the source reader and written by the
// report writers in the driver's order, checked against what the samples'
// notes say the workbook shows.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "source/source_reader.h"
#include "testing/test_files.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/markers_details_sheet.h"
#include "workbook/reports/raw_data_sheet.h"
#include "workbook/reports/report_lines.h"
#include "workbook/reports/report_sheets_test_util.h"
#include "workbook/reports/screen_config_sheet.h"

namespace z4400 {
namespace {

using testing::SheetOf;
using testing::StartWithResultSheets;

/// A sample converted through the writers of this folder.
struct Converted {
  ExcelApp excel;
  SourceReader reader;
  GeneralInfo general;
  ScreenUnitTable units{};
  std::array<TimeAxisEntry, kAxisTableSlots> time_axis{};
  std::array<XAxisScale, kAxisTableSlots> scales{};
  std::array<MarkersInfo, kScreenSlots> markers{};
  std::array<int16_t, kScreenSlots> status{};
  std::array<int16_t, kScreenSlots> log_x_first_row{};
  MarkerListRows marker_rows;
};

std::unique_ptr<Converted> Convert(const std::filesystem::path& path) {
  auto c = std::make_unique<Converted>();
  c->excel = StartWithResultSheets();
  EXPECT_EQ(c->reader.OpenSource(path.string()), 0) << path;
  EXPECT_EQ(c->reader.ReadGeneralInfo(c->general), 0) << path;
  const std::string name = path.filename().string();
  EXPECT_EQ(WriteGeneralInfo(c->excel, c->general, name, kReportSheet, kReportHeading), 0);
  EXPECT_EQ(WriteGeneralInfo(c->excel, c->general, name, kRawDataSheet, kRawDataHeading), 0);
  RawDataSettings settings;
  for (int s = 0; s < c->general.ContextCount; ++s) {
    ScreenInfo info;
    EXPECT_EQ(c->reader.ReadScreenConfig(s, info), 0) << path << " screen " << s;
    const XAxisKind kind = c->reader.SetTimeAxis(info, s);
    c->time_axis[static_cast<size_t>(s)] = c->reader.TimeAxis(s);
    c->markers[static_cast<size_t>(s)] = c->reader.ReadMarkers(s);
    for (const std::string_view sheet : {kReportSheet, kRawDataSheet}) {
      ActivateWorksheet(c->excel, sheet);
      c->status[static_cast<size_t>(s)] =
          WriteScreenConfig(c->excel, static_cast<int16_t>(s), info, c->reader.Digital(s), c->units,
                            c->time_axis[static_cast<size_t>(s)]);
    }
    XScaleSettings x_settings;
    x_settings.FrequencyFactor = c->units[static_cast<size_t>(s)].XFactor;
    c->scales[static_cast<size_t>(s)] =
        c->reader.SetXScaleType(s, info, x_settings, settings.LogXInUse);
    const RawScreenTables tables{
        c->reader.Digital(s), c->reader.Vertical(s), c->time_axis[static_cast<size_t>(s)],
        c->units[static_cast<size_t>(s)], c->scales[static_cast<size_t>(s)]};
    const int32_t traces = c->reader.ScreenTraceCount(s);
    RawDataState state;
    if (traces > 0) {
      WriteRawXData(c->excel, s, c->reader.XAxisData(s), info, c->general.TracePoints, tables,
                    settings, state);
      for (int t = 0; t < traces; ++t) {
        const TraceData trace = c->reader.ReadTraceY(s, t);
        ActivateWorksheet(c->excel, kRawDataSheet);
        WriteRawTraceData(c->excel, s, t, trace, c->general.TracePoints, tables, settings, state);
      }
    }
    c->log_x_first_row[static_cast<size_t>(s)] = state.LogXFirstRow;
    WriteMarkersDetails(c->excel, c->markers[static_cast<size_t>(s)],
                        MarkerAxesOf(kind, c->reader.Digital(s)), s, c->marker_rows);
  }
  return c;
}

/// The row of the configuration block of `screen` labelled `label`.
int RowOf(Worksheet& sheet, int screen, std::string_view label) {
  const int first = 9 + 17 * screen;
  for (int row = first; row < first + 17; ++row) {
    if (sheet.Cells(row, 1).Value() == CellValue(label)) return row;
  }
  ADD_FAILURE() << "no row \"" << label << "\" in the block of screen " << screen;
  return first;
}

/// Value and unit of a configuration row, as the user reads them.
struct Shown {
  double value;
  std::string unit;
};

Shown ShownRow(Worksheet& sheet, int screen, std::string_view label) {
  const int row = RowOf(sheet, screen, label);
  return Shown{sheet.Cells(row, 2).Value().Number(), sheet.Cells(row, 3).Value().Text()};
}

void ExpectRow(Worksheet& sheet, int screen, std::string_view label, double value,
               std::string_view unit) {
  const Shown shown = ShownRow(sheet, screen, label);
  EXPECT_NEAR(shown.value, value, 1e-9 * std::max(1.0, std::abs(value)))
      << label << " of screen " << screen + 1;
  EXPECT_EQ(shown.unit, unit) << label << " of screen " << screen + 1;
}

TEST(ReportSamplesTest, SpectrumDbmMarkers) {
  Z4400_REQUIRE_SAMPLES(samples);
  const auto c = Convert(samples / "spectrum_dbm_markers.xml");
  for (const std::string_view name : {kReportSheet, kRawDataSheet}) {
    Worksheet& sheet = SheetOf(c->excel, name);
    EXPECT_EQ(sheet.Range("B2").Value(), CellValue("spectrum_dbm_markers.xml"));
    EXPECT_EQ(sheet.Range("B4").Value(), CellValue(c->general.Model));
    ExpectRow(sheet, 0, "Center frequency", 2.4, "GHz");
    ExpectRow(sheet, 0, "Span", 100, "MHz");
    ExpectRow(sheet, 0, "Start frequency", 2.35, "GHz");
    ExpectRow(sheet, 0, "Stop frequency", 2.45, "GHz");
    ExpectRow(sheet, 0, "RBW", 100, "kHz");
    ExpectRow(sheet, 0, "Reference level", 0, "dBm");
    ExpectRow(sheet, 0, "Scale", 10, "dB/div");
  }
  EXPECT_EQ(c->units[0].XUnit, "GHz");
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  EXPECT_EQ(raw.Range("E11").Value(), CellValue("X raw GHz"));
  EXPECT_NEAR(raw.Range("F12").Value().Number(), 2.35, 1e-12);
  EXPECT_NEAR(raw.Cells(12 + 400, 6).Value().Number(), 2.45, 1e-12);
  EXPECT_EQ(raw.Range("I11").Value(), CellValue("Y(A) raw dBm"));
  EXPECT_EQ(raw.Range("M11").Value(), CellValue("Y(B) raw dBm"));

  // Markers 1 to 4 on trace A, at the X of their points, in GHz.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  const MarkersInfo& markers = c->markers[0];
  for (int k = 0; k < 4; ++k) {
    const int row = 5 + k;
    EXPECT_EQ(details.Cells(row, 1).Value(), CellValue(k + 1));
    EXPECT_EQ(details.Cells(row, 2).Value(), CellValue("A"));
    const MarkerRecord& m = markers.Markers[static_cast<size_t>(k)];
    EXPECT_NEAR(details.Cells(row, 3).Value().Number(), m.PosX / 1e9, 1e-12);
    EXPECT_EQ(details.Cells(row, 4).Value(), CellValue("GHz"));
    EXPECT_DOUBLE_EQ(details.Cells(row, 5).Value().Number(), m.PosY);
    // The marker sits on its point: the X column of "Raw Data" shows the
    // same value on the point's row.
    EXPECT_NEAR(raw.Cells(12 + m.PointIndex, 6).Value().Number(), m.PosX / 1e9, 1e-9);
  }
  EXPECT_TRUE(details.Cells(9, 1).Value().IsEmpty());
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  EXPECT_EQ(report.Range("J9").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(report.Range("J11").Value(), CellValue(1));
}

TEST(ReportSamplesTest, ThreeScreensMixed) {
  Z4400_REQUIRE_SAMPLES(samples);
  const auto c = Convert(samples / "three_screens_mixed.xml");
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  // Screen 2: zero span over 4615 us.
  ExpectRow(report, 1, "Span", 4.615, "msec");
  EXPECT_EQ(report.Cells(RowOf(report, 1, "Span"), 2).NumberFormat(), "0.###");
  EXPECT_EQ(c->time_axis[1].Unit, "msec");
  // Screen 3: digital Freq-Time, levels in kHz.
  ExpectRow(report, 2, "Scale", 25, "kHz/div");
  EXPECT_EQ(c->units[2].VerticalUnit, "kHz");
  EXPECT_EQ(report.Cells(RowOf(report, 2, "Meas. Function"), 2).Value(), CellValue("Freq-Time"));
  ExpectRow(report, 2, "Stop time", 577, "usec");

  // Blocks on "Raw Data" start at rows 9, 516 and 1023.
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  for (const int top : {9, 516, 1023}) {
    EXPECT_EQ(raw.Cells(top, 5).Value(), CellValue("Screen ")) << top;
  }
  // Zero span: header "X raw sec", values in msec up to the sweep time.
  EXPECT_EQ(raw.Cells(518, 5).Value(), CellValue("X raw sec"));
  EXPECT_NEAR(raw.Cells(519 + points - 1, 6).Value().Number(), 4.615, 1e-9);
  // Freq-Time: X in usec, up to the stop time; the second table is trace B.
  EXPECT_EQ(raw.Cells(1025, 5).Value(), CellValue("X raw usec"));
  EXPECT_NEAR(raw.Cells(1026 + points - 1, 6).Value().Number(), c->reader.Digital(2).StopTime,
              1e-9);
  EXPECT_EQ(raw.Cells(1025, 13).Value(), CellValue("Y(B) raw kHz"));
  // Its levels (Hz) are shown in kHz in the first column.
  const double level_hz = raw.Cells(1026, 14).Value().Number();
  EXPECT_NEAR(raw.Cells(1026, 13).Value().Number(), level_hz / 1000,
              1e-9 * std::max(1.0, std::abs(level_hz)));

  // Two markers on screen 1, none on the others; lists do not overlap.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  EXPECT_EQ(details.Range("A3").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(details.Range("A6").Value(), CellValue(2));
  EXPECT_TRUE(details.Range("A7").Value().IsEmpty());
  EXPECT_EQ(details.Range("A8").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(details.Range("B8").Value(), CellValue(2));
  EXPECT_EQ(details.Range("A11").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(details.Range("B11").Value(), CellValue(3));
}

TEST(ReportSamplesTest, LinearWattsVolts) {
  Z4400_REQUIRE_SAMPLES(samples);
  const auto c = Convert(samples / "linear_watts_volts.xml");
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  ExpectRow(report, 0, "Reference level", 10, "mW");
  ExpectRow(report, 0, "Scale", 1, "mW/div");
  ExpectRow(report, 1, "Reference level", 500, "mV");
  ExpectRow(report, 1, "Scale", 50, "mV/div");
  // Trace blocks: the first column holds the level times the vertical
  // factor, the second the level as read.
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  for (int s = 0; s < 2; ++s) {
    const int first = (points + 6) * s + 12;
    const double factor = c->reader.Vertical(s).VerticalFactor;
    const double read = raw.Cells(first + 7, 10).Value().Number();
    EXPECT_NEAR(raw.Cells(first + 7, 9).Value().Number(), read * factor,
                1e-9 * std::abs(read * factor))
        << s;
    EXPECT_EQ(raw.Cells(first - 1, 9).Value(),
              CellValue("Y(A) raw " + c->reader.Vertical(s).VerticalUnit));
  }
}

TEST(ReportSamplesTest, DigitalFunctions) {
  Z4400_REQUIRE_SAMPLES(samples);
  const auto c = Convert(samples / "digital_functions.csv");
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  ExpectRow(report, 0, "Scale", 100, "mV/div");
  EXPECT_EQ(c->units[0].VerticalUnit, "mV");
  ExpectRow(report, 2, "Span", 20, "MHz");
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  const struct {
    int screen;
    const char* x_unit;
  } kScreens[] = {{0, "usec"}, {1, "msec"}, {2, "GHz"}};
  for (const auto& s : kScreens) {
    EXPECT_EQ(raw.Cells((points + 6) * s.screen + 11, 5).Value(),
              CellValue(std::string("X raw ") + s.x_unit))
        << s.screen;
  }
  // IQ-Time levels in mV: volts ÷ 0.001.
  const double volts = raw.Cells(12, 10).Value().Number();
  EXPECT_NEAR(raw.Cells(12, 9).Value().Number(), volts * 1000, 1e-9);
  // PartialFFT X from the start to the stop frequency, in GHz.
  const ScreenSummary& fft = c->reader.Summary(2);
  EXPECT_NEAR(raw.Cells((points + 6) * 2 + 12, 6).Value().Number(), fft.StartFrequency / 1e9, 1e-9);
  // IQ markers: positions in usec, levels in mV.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  EXPECT_EQ(details.Range("D5").Value(), CellValue("usec"));
  EXPECT_NEAR(details.Range("C5").Value().Number(), 102.5, 1e-9);
  EXPECT_EQ(details.Range("F5").Value(), CellValue("mV"));
  EXPECT_NEAR(details.Range("E5").Value().Number(), 161.68, 1e-9);
}

TEST(ReportSamplesTest, LogXAxis) {
  Z4400_REQUIRE_SAMPLES(samples);
  const auto c = Convert(samples / "log_x_axis.csv");
  ASSERT_EQ(c->general.TracePoints, 501);
  // Screen 2 starts at −10 MHz: its series start at the first point that
  // reaches the 1000 Hz threshold, row 570 instead of 519.
  EXPECT_EQ(c->log_x_first_row[1], 570);
  EXPECT_EQ(c->log_x_first_row[0], 0);
  EXPECT_EQ(c->scales[1].LogX, -1);
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  EXPECT_GE(raw.Cells(570, 6).Value().Number() * c->units[1].XFactor, 1000);
  EXPECT_LT(raw.Cells(569, 6).Value().Number() * c->units[1].XFactor, 1000);
}

TEST(ReportSamplesTest, TwoScreensMarkersAndGaps) {
  Z4400_REQUIRE_SAMPLES(samples);
  {
    const auto c = Convert(samples / "two_screens_markers.csv");
    Worksheet& report = SheetOf(c->excel, kReportSheet);
    EXPECT_EQ(ShownRow(report, 0, "Reference level").unit, "dBuV");
    EXPECT_EQ(ShownRow(report, 1, "Reference level").unit, "dBmV");
    ExpectRow(report, 1, "Reference offset", 3, "dB");
    // Screen 1 lists markers on traces A, B, A.
    Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
    EXPECT_EQ(details.Range("B5").Value(), CellValue("A"));
    EXPECT_EQ(details.Range("B6").Value(), CellValue("B"));
    EXPECT_EQ(details.Range("B7").Value(), CellValue("A"));
    EXPECT_EQ(details.Range("A9").Value(), CellValue("Marker List Screen"));
    EXPECT_EQ(details.Range("A11").Value(), CellValue(1));
    EXPECT_EQ(details.Range("A12").Value(), CellValue(2));
    EXPECT_EQ(details.Range("F11").Value(), CellValue("dBmV"));
  }
  {
    const auto c = Convert(samples / "gap_in_trace.xml");
    Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
    for (const int point : {5, 6, 120}) {
      EXPECT_EQ(raw.Cells(12 + point, 9).Value(), CellValue(-200.0)) << point;
    }
    EXPECT_EQ(raw.Cells(12 + 199, 13).Value(), CellValue(-200.0));
    EXPECT_NE(raw.Cells(12 + 4, 9).Value(), CellValue(-200.0));
  }
  {
    // Delta markers: the reference (marker 3) gets its own row.
    const auto c = Convert(samples / "delta_markers.xml");
    Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
    EXPECT_EQ(details.Range("A8").Value(), CellValue("Reference"));
    EXPECT_EQ(details.Range("C8").Value(), details.Range("C7").Value());
  }
}

}  // namespace
}  // namespace z4400
