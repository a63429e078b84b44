// The made-up instrument files of the test cases read by the source reader
// and written by the report writers in the driver's order, checked against
// what each file's settings make the workbook show.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "source/source_reader.h"
#include "testing/instrument_cases.h"
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

/// One test case written into a scratch folder and converted.
class Case {
 public:
  explicit Case(std::string_view name)
      : converted_(Convert(testing::WriteInstrumentCase(scratch_.path(), name))) {}
  Converted* operator->() const { return converted_.get(); }

 private:
  testing::ScratchDir scratch_;
  std::unique_ptr<Converted> converted_;
};

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

TEST(ReportSamplesTest, BandScanMarkers) {
  const Case c("band_scan_markers.xml");
  for (const std::string_view name : {kReportSheet, kRawDataSheet}) {
    Worksheet& sheet = SheetOf(c->excel, name);
    EXPECT_EQ(sheet.Range("B2").Value(), CellValue("band_scan_markers.xml"));
    EXPECT_EQ(sheet.Range("B4").Value(), CellValue("Z4420"));
    ExpectRow(sheet, 0, "Center frequency", 900, "MHz");
    ExpectRow(sheet, 0, "Span", 50, "MHz");
    ExpectRow(sheet, 0, "Start frequency", 875, "MHz");
    ExpectRow(sheet, 0, "Stop frequency", 925, "MHz");
    ExpectRow(sheet, 0, "RBW", 50, "kHz");
    // An exact power of a thousand shows in the unit below it.
    ExpectRow(sheet, 0, "Frequency offset", 1000, "kHz");
    ExpectRow(sheet, 0, "Reference level", 60, "dBmV");
    ExpectRow(sheet, 0, "Reference offset", 3, "dB");
    ExpectRow(sheet, 0, "Scale", 10, "dB/div");
  }
  EXPECT_EQ(c->units[0].XUnit, "MHz");
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  EXPECT_EQ(raw.Range("E11").Value(), CellValue("X raw MHz"));
  EXPECT_NEAR(raw.Range("F12").Value().Number(), 875, 1e-9);
  EXPECT_NEAR(raw.Cells(12 + 400, 6).Value().Number(), 925, 1e-9);
  EXPECT_EQ(raw.Range("I11").Value(), CellValue("Y(A) raw dBmV"));
  EXPECT_EQ(raw.Range("M11").Value(), CellValue("Y(B) raw dBmV"));

  // Markers 1 to 4 on traces A, B, A, B, at the X of their points, in MHz.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  const MarkersInfo& markers = c->markers[0];
  for (int k = 0; k < 4; ++k) {
    const int row = 5 + k;
    EXPECT_EQ(details.Cells(row, 1).Value(), CellValue(k + 1));
    EXPECT_EQ(details.Cells(row, 2).Value(), CellValue(k % 2 == 0 ? "A" : "B"));
    const MarkerRecord& m = markers.Markers[static_cast<size_t>(k)];
    EXPECT_NEAR(details.Cells(row, 3).Value().Number(), m.PosX / 1e6, 1e-9);
    EXPECT_EQ(details.Cells(row, 4).Value(), CellValue("MHz"));
    EXPECT_DOUBLE_EQ(details.Cells(row, 5).Value().Number(), m.PosY);
    // The marker sits on its point: the X column of "Raw Data" shows the
    // same value on the point's row, and its trace's block the same level.
    EXPECT_NEAR(raw.Cells(12 + m.PointIndex, 6).Value().Number(), m.PosX / 1e6, 1e-9);
    EXPECT_DOUBLE_EQ(raw.Cells(12 + m.PointIndex, 9 + 4 * (k % 2)).Value().Number(), m.PosY);
  }
  EXPECT_TRUE(details.Cells(9, 1).Value().IsEmpty());
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  EXPECT_EQ(report.Range("J9").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(report.Range("J11").Value(), CellValue(1));
}

TEST(ReportSamplesTest, MixedScreens) {
  const Case c("mixed_screens.xml");
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

  // 301 points: blocks on "Raw Data" start at rows 9, 316 and 623.
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  ASSERT_EQ(points, 301);
  for (const int top : {9, 316, 623}) {
    EXPECT_EQ(raw.Cells(top, 5).Value(), CellValue("Screen ")) << top;
  }
  // Zero span: header "X raw sec", values in msec up to the sweep time.
  EXPECT_EQ(raw.Cells(318, 5).Value(), CellValue("X raw sec"));
  EXPECT_NEAR(raw.Cells(319 + points - 1, 6).Value().Number(), 4.615, 1e-9);
  // Freq-Time: X in usec, up to the stop time; the second table is trace B.
  EXPECT_EQ(raw.Cells(625, 5).Value(), CellValue("X raw usec"));
  EXPECT_NEAR(raw.Cells(626 + points - 1, 6).Value().Number(), 577, 1e-9);
  EXPECT_EQ(raw.Cells(625, 13).Value(), CellValue("Y(B) raw kHz"));
  // Its levels (Hz) are shown in kHz in the first column.
  const double level_hz = raw.Cells(626, 14).Value().Number();
  EXPECT_NEAR(raw.Cells(626, 13).Value().Number(), level_hz / 1000,
              1e-9 * std::max(1.0, std::abs(level_hz)));

  // Two markers on every screen; the lists follow each other.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  for (const int screen : {1, 2, 3}) {
    const int header = 3 + 5 * (screen - 1);
    EXPECT_EQ(details.Cells(header, 1).Value(), CellValue("Marker List Screen")) << screen;
    EXPECT_EQ(details.Cells(header, 2).Value(), CellValue(screen));
    EXPECT_EQ(details.Cells(header + 3, 1).Value(), CellValue(2)) << screen;
    EXPECT_TRUE(details.Cells(header + 4, 1).Value().IsEmpty()) << screen;
  }
  // Zero-span markers in msec, Freq-Time markers in usec.
  EXPECT_EQ(details.Cells(10, 4).Value(), CellValue("msec"));
  EXPECT_EQ(details.Cells(15, 4).Value(), CellValue("usec"));
}

TEST(ReportSamplesTest, LinearWattsVolts) {
  const Case c("linear_delta_gaps.xml");
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
  const Case c("digital_functions.csv");
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  ExpectRow(report, 0, "Scale", 100, "mV/div");
  EXPECT_EQ(c->units[0].VerticalUnit, "mV");
  ExpectRow(report, 2, "Span", 20, "MHz");
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  const struct {
    int screen;
    const char* x_unit;
  } kScreens[] = {{0, "usec"}, {1, "msec"}, {2, "MHz"}};
  for (const auto& s : kScreens) {
    EXPECT_EQ(raw.Cells((points + 6) * s.screen + 11, 5).Value(),
              CellValue(std::string("X raw ") + s.x_unit))
        << s.screen;
  }
  // IQ-Time levels in mV: volts ÷ 0.001.
  const double volts = raw.Cells(12, 10).Value().Number();
  EXPECT_NEAR(raw.Cells(12, 9).Value().Number(), volts * 1000, 1e-9);
  // PartialFFT X from the start to the stop frequency (890 to 910 MHz).
  const int fft_top = (points + 6) * 2 + 12;
  EXPECT_NEAR(raw.Cells(fft_top, 6).Value().Number(), 890, 1e-9);
  EXPECT_NEAR(raw.Cells(fft_top + points - 1, 6).Value().Number(), 910, 1e-9);
  // IQ markers: positions in usec, levels in mV (the file's 109 us and
  // 0.18996 V).
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  EXPECT_EQ(details.Range("D5").Value(), CellValue("usec"));
  EXPECT_NEAR(details.Range("C5").Value().Number(), 109, 1e-9);
  EXPECT_EQ(details.Range("F5").Value(), CellValue("mV"));
  EXPECT_NEAR(details.Range("E5").Value().Number(), 189.96, 1e-9);
}

TEST(ReportSamplesTest, LogXAxis) {
  const Case c("log_x_axis.csv");
  ASSERT_EQ(c->general.TracePoints, 301);
  // Screen 2 runs from −10 to 90 MHz: its series start at the first point
  // that reaches the 1000 Hz threshold, point 31 (row 350), instead of
  // the block's first row 319.
  EXPECT_EQ(c->log_x_first_row[1], 350);
  EXPECT_EQ(c->log_x_first_row[0], 0);
  EXPECT_EQ(c->scales[1].LogX, -1);
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  EXPECT_GE(raw.Cells(350, 6).Value().Number() * c->units[1].XFactor, 1000);
  EXPECT_LT(raw.Cells(349, 6).Value().Number() * c->units[1].XFactor, 1000);
}

TEST(ReportSamplesTest, TwoScreensMarkersAndGaps) {
  {
    const Case c("two_screens_markers.csv");
    Worksheet& report = SheetOf(c->excel, kReportSheet);
    EXPECT_EQ(ShownRow(report, 0, "Reference level").unit, "dBuV");
    EXPECT_EQ(ShownRow(report, 1, "Reference level").unit, "dBmV");
    ExpectRow(report, 1, "Reference offset", 3, "dB");
    // Screen 1 lists markers on traces A, B, C.
    Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
    EXPECT_EQ(details.Range("B5").Value(), CellValue("A"));
    EXPECT_EQ(details.Range("B6").Value(), CellValue("B"));
    EXPECT_EQ(details.Range("B7").Value(), CellValue("C"));
    EXPECT_EQ(details.Range("A9").Value(), CellValue("Marker List Screen"));
    EXPECT_EQ(details.Range("A11").Value(), CellValue(1));
    EXPECT_EQ(details.Range("A13").Value(), CellValue(3));
    EXPECT_EQ(details.Range("B13").Value(), CellValue("A"));
    EXPECT_EQ(details.Range("F11").Value(), CellValue("dBmV"));
  }
  {
    const Case c("linear_delta_gaps.xml");
    Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
    const int points = c->general.TracePoints;
    for (int s = 0; s < 2; ++s) {
      const int first = (points + 6) * s + 12;
      for (const int point : {5, 120}) {
        EXPECT_EQ(raw.Cells(first + point, 10).Value(), CellValue(-200.0)) << s << " " << point;
        EXPECT_NE(raw.Cells(first + point, 14).Value(), CellValue(-200.0)) << "trace B";
      }
      EXPECT_NE(raw.Cells(first + 4, 10).Value(), CellValue(-200.0));
    }
  }
  {
    // Delta markers: the reference (marker 3) gets its own row.
    const Case c("delta_markers.xml");
    Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
    EXPECT_EQ(details.Range("A8").Value(), CellValue("Reference"));
    EXPECT_EQ(details.Range("C8").Value(), details.Range("C7").Value());
  }
}

TEST(ReportSamplesTest, PowerAndPhaseWithoutMarkers) {
  const Case c("power_phase_no_markers.xml");
  Worksheet& report = SheetOf(c->excel, kReportSheet);
  EXPECT_EQ(report.Cells(RowOf(report, 0, "Meas. Function"), 2).Value(), CellValue("Power-Time"));
  ExpectRow(report, 0, "Scale", 10, "dBm/div");
  EXPECT_EQ(report.Cells(RowOf(report, 1, "Meas. Function"), 2).Value(), CellValue("Phase-Freq"));
  ExpectRow(report, 1, "Scale", 45, "deg/div");
  Worksheet& raw = SheetOf(c->excel, kRawDataSheet);
  const int points = c->general.TracePoints;
  EXPECT_EQ(raw.Cells(11, 5).Value(), CellValue("X raw usec"));
  EXPECT_EQ(raw.Cells(points + 6 + 11, 5).Value(), CellValue("X raw GHz"));
  // A list without markers is its heading, its column titles and a gap.
  Worksheet& details = SheetOf(c->excel, kMarkersDetailsSheet);
  EXPECT_EQ(details.Range("A3").Value(), CellValue("Marker List Screen"));
  EXPECT_TRUE(details.Range("A5").Value().IsEmpty());
  EXPECT_EQ(details.Range("A6").Value(), CellValue("Marker List Screen"));
  EXPECT_EQ(details.Range("B6").Value(), CellValue(2));
  EXPECT_TRUE(details.Range("A8").Value().IsEmpty());
}

}  // namespace
}  // namespace z4400
