// End-to-end: every made-up instrument file of the test cases is converted
// by z4400conv --batch as a user runs it, and the saved workbooks are read
// back (cells through our .xlsx reader, charts from the package's XML) and
// checked against what the conversion rules make of the file's own text. A
// real spreadsheet application, LibreOffice Calc, must open every workbook
// and draw it, and every XML part must validate against the OOXML schemas.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "app/converted_files_test_util.h"
#include "app/instrument_sample_test_util.h"
#include "app/shell_commands_test_util.h"
#include "driver/settings.h"
#include "testing/instrument_cases.h"
#include "testing/test_files.h"
#include "workbook/model/column_letters.h"

namespace z4400 {
namespace {

using testing::ConvertedPackage;
using testing::HaveProgram;
using testing::InstrumentSample;
using testing::Quoted;
using testing::ReadText;
using testing::RunShell;
using testing::SampleScreen;

/// "RRGGBB" of a colour stored as red + 256 × green + 65536 × blue.
std::string Hex(int32_t color) {
  char text[8];
  std::snprintf(text, sizeof text, "%02X%02X%02X", color & 0xff, (color >> 8) & 0xff,
                (color >> 16) & 0xff);
  return text;
}

/// The smallest power of ten p, from 10^10 down, with x × 1.1 ≥ p.
double PowerOfTenBelow(double x) {
  double p = 1e10;
  while (x * 1.1 < p && p > 0) p /= 10;
  return p;
}

bool IsDbUnit(const std::string& unit) {
  return unit == "dBm" || unit == "dBmV" || unit == "dBuV" || unit == "dBuVemf" || unit == "dBpW";
}

/// Level-unit code of a digital screen's function (7 to 12); −1 for others.
int DigitalUnitCode(const std::string& function) {
  const std::map<std::string, int> codes = {{"Freq-Time", 7},   {"Phase-Time", 8},
                                            {"Power-Time", 9},  {"IQ-Time", 10},
                                            {"PartialFFT", 11}, {"Phase-Freq", 12}};
  const auto found = codes.find(function);
  return found == codes.end() ? -1 : found->second;
}

std::string YTitlePrefix(const SampleScreen& screen) {
  const int code = screen.IsDigital() ? DigitalUnitCode(screen.Text("DGT_MEASFUNCTION")) : 0;
  if (code == 7) return "Freq (";
  if (code == 8 || code == 12) return "Degree (";
  if (code == 10) return "Volts (";
  return "Level (";
}

/// First data row of screen `s`'s block on "Raw Data".
int TopRow(const InstrumentSample& sample, int s) { return (sample.points + 6) * s + 12; }

/// X value of point k of a spectrum screen with a frequency axis, in Hz.
double SpectrumX(const SampleScreen& screen, int k, int points) {
  const double start = screen.Number("FA");
  const double stop = screen.Number("FB");
  return start + (stop - start) * k / (points - 1);
}

/// What the rules make of one screen's X axis on a chart (default
/// settings: log-X option on, log-X-in-use flag off).
struct ExpectedX {
  bool log = false;
  int first_row = 0;  ///< first row of the X values and values of every series
};

ExpectedX ExpectedXOf(const InstrumentSample& sample, int s) {
  const SampleScreen& screen = sample.screens[static_cast<size_t>(s)];
  ExpectedX x;
  x.first_row = TopRow(sample, s);
  x.log = screen.Text("HS") == "LOG";
  if (x.log && !screen.IsDigital() && screen.Number("SP") != 0 && screen.Number("FA") < 0) {
    // A negative start: the series begin at the first X at or above the X
    // scale threshold (1000 by default).
    for (int k = 0; k < sample.points; ++k) {
      if (SpectrumX(screen, k, sample.points) >= 1000) {
        x.first_row += k;
        break;
      }
    }
  }
  return x;
}

/// The reference to rows `first` to `end` of column `letter` of "Raw Data".
std::string RawDataColumn(const std::string& letter, int first, int end) {
  std::string reference = "'Raw Data'!$";
  reference.append(letter).append("$").append(std::to_string(first));
  reference.append(":$").append(letter).append("$").append(std::to_string(end));
  return reference;
}

/// Every case that converts, converted once for the whole suite.
class ConvertSamplesTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const char* program = std::getenv("Z4400_CONV");
    if (program == nullptr) return;
    scratch_ = std::make_unique<testing::ScratchDir>();
    const std::filesystem::path sources = scratch_->path() / "sources";
    const std::filesystem::path out = scratch_->path() / "out";
    std::filesystem::create_directories(sources);
    std::filesystem::create_directories(out);
    const std::vector<std::filesystem::path> paths = testing::WriteConvertedCases(sources);
    converted_ = std::make_unique<testing::ConvertedFiles>(
        testing::ConvertWithBatch(program, paths, scratch_->path(), out));
  }
  static void TearDownTestSuite() {
    converted_.reset();
    scratch_.reset();
  }
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
    ASSERT_EQ(converted_->status, 0) << converted_->errors;
    ASSERT_GE(converted_->files.size(), 8u);
  }

  static std::unique_ptr<testing::ScratchDir> scratch_;
  static std::unique_ptr<testing::ConvertedFiles> converted_;
};

std::unique_ptr<testing::ScratchDir> ConvertSamplesTest::scratch_;
std::unique_ptr<testing::ConvertedFiles> ConvertSamplesTest::converted_;

TEST_F(ConvertSamplesTest, ResultSheetsAndRawDataLayout) {
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(c.read_error.empty()) << c.read_error;
    EXPECT_EQ(c.package->SheetNames(),
              (std::vector<std::string>{"Report", "Raw Data", "Markers Details"}));
    Worksheet& raw = c.cells->Worksheets()("Raw Data");
    Worksheet& report = c.cells->Worksheets()("Report");
    Worksheet& details = c.cells->Worksheets()("Markers Details");

    // The result sheets' column settings all went to "Raw Data"; the charted screens
    // widen D and every trace block, narrow H and the block separators.
    size_t most_traces = 0;
    for (const SampleScreen& screen : c.sample.screens) {
      most_traces = std::max(most_traces, screen.traces.size());
    }
    // The general information then fixes A at 18 on both sheets and fits B.
    for (const int column : {3, 5, 6}) {
      EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(column), 10) << "Raw Data column " << column;
    }
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(1), 18);
    EXPECT_DOUBLE_EQ(report.ColumnWidthAt(1), 18);
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(4), most_traces > 0 ? 12 : 10);
    if (most_traces > 0) {
      EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(8), 1);
    }
    for (size_t t = 0; t < most_traces; ++t) {
      const int block = 4 * static_cast<int>(t) + 9;
      for (int column = block; column < block + 3; ++column) {
        EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(column), 12) << ExcelColNumber2ColLetter(column);
      }
      EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(block + 3), 1) << ExcelColNumber2ColLetter(block + 3);
    }
    EXPECT_TRUE(raw.Cells(c.sample.points + 20, 1).Font().Italic()) << "column A is italic";

    // One configuration block per screen on "Report" and a block of X
    // values and traces per screen on "Raw Data".
    for (size_t s = 0; s < c.sample.screens.size(); ++s) {
      const int row = static_cast<int>(s) * 17 + 9;
      EXPECT_EQ(report.ValueAt(row, 1).ToText(), "Screen") << "row " << row;
      EXPECT_EQ(report.ValueAt(row, 2).ToText(), std::to_string(s + 1));
      EXPECT_TRUE(report.Cells(row, 1).Font().Bold());
      const int block_row = (c.sample.points + 6) * static_cast<int>(s) + 9;
      EXPECT_EQ(raw.ValueAt(block_row, 5).ToText(), "Screen ") << "row " << block_row;
      EXPECT_EQ(raw.ValueAt(block_row, 6).ToText(), std::to_string(s + 1));
    }
    EXPECT_EQ(details.ValueAt(1, 1).ToText(), "Markers Detailed Report");
    EXPECT_TRUE(details.Cells(1, 1).Font().Bold());
    EXPECT_TRUE(details.Cells(1, 1).Font().Italic());
  }
}

TEST_F(ConvertSamplesTest, XValuesAndPlottedLevelsFollowTheSource) {
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(c.read_error.empty()) << c.read_error;
    Worksheet& raw = c.cells->Worksheets()("Raw Data");
    const int points = c.sample.points;
    for (size_t s = 0; s < c.sample.screens.size(); ++s) {
      SCOPED_TRACE(s);
      const SampleScreen& screen = c.sample.screens[s];
      const int top = TopRow(c.sample, static_cast<int>(s));
      // The X values are evenly spaced from the screen's start to its stop.
      const double first = raw.ValueAt(top, 6).Number();
      const double last = raw.ValueAt(top + points - 1, 6).Number();
      ASSERT_TRUE(raw.ValueAt(top, 6).IsNumber());
      ASSERT_LT(first, last);
      for (const int k : {1, points / 3, points - 2}) {
        EXPECT_NEAR(raw.ValueAt(top + k, 6).Number(), first + (last - first) * k / (points - 1),
                    1e-9 * std::fabs(last - first))
            << "point " << k;
      }
      if (!screen.IsDigital() && screen.Number("SP") != 0 && screen.Number("FA") > 0) {
        // Same unit for start and stop: their ratio is the file's.
        EXPECT_NEAR(last / first, screen.Number("FB") / screen.Number("FA"), 1e-9 * last / first);
      }
      // A logarithmic dB scale plots the levels as the file holds them.
      const bool log_db =
          !screen.IsDigital() && screen.Text("VS") == "LOG" && IsDbUnit(screen.Text("AUNITS"));
      if (!log_db) continue;
      for (size_t t = 0; t < screen.traces.size(); ++t) {
        const int column = 4 * static_cast<int>(t) + 10;
        const std::vector<double>& levels = screen.traces[t].levels;
        ASSERT_EQ(static_cast<int>(levels.size()), points);
        for (int k = 0; k < points; ++k) {
          ASSERT_DOUBLE_EQ(raw.ValueAt(top + k, column).Number(), levels[static_cast<size_t>(k)])
              << ExcelColNumber2ColLetter(column) << top + k;
        }
      }
    }
  }
}

TEST_F(ConvertSamplesTest, OneChartPerScreenWithItsTracesTitlesAndScales) {
  const Settings defaults;
  const std::vector<int32_t> trace_colors = {defaults.TraceAColor, defaults.TraceBColor,
                                             defaults.TraceCColor, defaults.TraceMColor,
                                             defaults.TraceOColor};
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(c.read_error.empty()) << c.read_error;
    Worksheet& raw = c.cells->Worksheets()("Raw Data");
    const auto charts = c.package->ChartsOf("Report");
    ASSERT_EQ(charts.size(), c.sample.screens.size()) << "every sample screen has traces";
    for (size_t s = 0; s < charts.size(); ++s) {
      SCOPED_TRACE("screen " + std::to_string(s + 1));
      const SampleScreen& screen = c.sample.screens[s];
      const int top = TopRow(c.sample, static_cast<int>(s));
      const int end = top + c.sample.points;
      const ExpectedX expected_x = ExpectedXOf(c.sample, static_cast<int>(s));
      const auto xml = c.package->Xml(charts[s].part);
      const pugi::xml_node chart = xml->select_node("/c:chartSpace/c:chart").node();
      ASSERT_TRUE(chart) << charts[s].part;

      // Beside the screen's configuration block, within columns D to I.
      EXPECT_EQ(charts[s].from_column, 3);
      EXPECT_EQ(charts[s].to_column, 8);
      EXPECT_EQ(charts[s].from_row, static_cast<int>(s) * 17 + 8);
      EXPECT_GE(charts[s].to_row, charts[s].from_row + 12);
      EXPECT_LE(charts[s].to_row, charts[s].from_row + 16);

      EXPECT_EQ(std::string(chart.select_node("c:title//a:t").node().text().get()),
                "Screen " + std::to_string(s + 1) + " Traces");
      const pugi::xml_node scatter = chart.select_node("c:plotArea/c:scatterChart").node();
      ASSERT_TRUE(scatter);
      EXPECT_STREQ(scatter.child("c:scatterStyle").attribute("val").value(), "lineMarker");
      EXPECT_EQ(
          Hex(defaults.PlotAreaColor),
          chart.select_node("c:plotArea/c:spPr/a:solidFill/a:srgbClr/@val").attribute().value());

      std::vector<pugi::xml_node> series;
      for (const pugi::xml_node ser : scatter.children("c:ser")) series.push_back(ser);
      ASSERT_EQ(series.size(), screen.traces.size());
      const bool shifted =
          !screen.IsDigital() && screen.Text("VS") == "LOG" && IsDbUnit(screen.Text("AUNITS"));
      for (size_t t = 0; t < series.size(); ++t) {
        SCOPED_TRACE("trace " + std::to_string(t));
        const pugi::xml_node ser = series[t];
        EXPECT_EQ(std::string(ser.select_node("c:tx//c:v").node().text().get()),
                  "Trace " + std::to_string(t + 1));
        EXPECT_STREQ(ser.select_node("c:marker/c:symbol/@val").attribute().value(), "none");
        EXPECT_EQ(Hex(trace_colors[t]),
                  ser.select_node("c:spPr/a:ln/a:solidFill/a:srgbClr/@val").attribute().value());
        EXPECT_EQ(ser.select_node("c:spPr/a:ln/@w").attribute().as_int(), 12700)
            << "thin line (1 pt) by default";
        const std::string y_letter =
            ExcelColNumber2ColLetter(4 * static_cast<int>(t) + 9 + (shifted ? 1 : 0));
        EXPECT_EQ(std::string(ser.select_node("c:xVal//c:f").node().text().get()),
                  RawDataColumn("F", expected_x.first_row, end));
        EXPECT_EQ(std::string(ser.select_node("c:yVal//c:f").node().text().get()),
                  RawDataColumn(y_letter, expected_x.first_row, end));
      }

      const pugi::xml_node x_axis =
          chart.select_node("c:plotArea/c:valAx[c:axPos/@val='b']").node();
      const pugi::xml_node y_axis =
          chart.select_node("c:plotArea/c:valAx[c:axPos/@val='l']").node();
      ASSERT_TRUE(x_axis);
      ASSERT_TRUE(y_axis);
      const std::string x_title = x_axis.select_node("c:title//a:t").node().text().get();
      const std::string y_title = y_axis.select_node("c:title//a:t").node().text().get();
      const std::string x_prefix = screen.Number("SP") != 0 ? "Frequency (" : "Time (";
      EXPECT_EQ(x_title.rfind(x_prefix, 0), 0u) << x_title;
      EXPECT_EQ(y_title.rfind(YTitlePrefix(screen), 0), 0u) << y_title;
      EXPECT_GT(x_title.size(), x_prefix.size() + 1) << "a unit in the title";
      EXPECT_EQ(x_title.back(), ')');
      EXPECT_EQ(y_title.back(), ')');
      EXPECT_STREQ(x_axis.child("c:numFmt").attribute("formatCode").value(), "0.00");
      EXPECT_STREQ(y_axis.child("c:numFmt").attribute("formatCode").value(), "0.0");
      for (const pugi::xml_node axis : {x_axis, y_axis}) {
        EXPECT_EQ(Hex(defaults.DivisionLineColor),
                  axis.select_node("c:majorGridlines/c:spPr/a:ln/a:solidFill/a:srgbClr/@val")
                      .attribute()
                      .value());
      }

      const pugi::xml_node scaling = x_axis.child("c:scaling");
      const double first_x = raw.ValueAt(expected_x.first_row, 6).Number();
      const double last_x = raw.ValueAt(end - 1, 6).Number();
      if (expected_x.log) {
        EXPECT_TRUE(scaling.child("c:logBase")) << "logarithmic X axis";
        EXPECT_DOUBLE_EQ(scaling.child("c:min").attribute("val").as_double(),
                         PowerOfTenBelow(first_x));
        EXPECT_DOUBLE_EQ(scaling.child("c:max").attribute("val").as_double(), last_x);
      } else {
        EXPECT_FALSE(scaling.child("c:logBase"));
        EXPECT_DOUBLE_EQ(scaling.child("c:min").attribute("val").as_double(), first_x);
        EXPECT_DOUBLE_EQ(scaling.child("c:max").attribute("val").as_double(), last_x);
        EXPECT_NEAR(x_axis.child("c:majorUnit").attribute("val").as_double(),
                    (last_x - first_x) / 10, 1e-12 * std::fabs(last_x));
      }
    }
  }
}

/// How a marked point looks in a chart part.
struct MarkedPoint {
  std::string symbol;
  int size = 0;
  std::string line;  ///< border colour
  std::string fill;  ///< fill colour, "none" for no fill
  std::string label;
  friend bool operator==(const MarkedPoint&, const MarkedPoint&) = default;
  friend std::ostream& operator<<(std::ostream& out, const MarkedPoint& p) {
    return out << p.symbol << " " << p.size << " " << p.line << "/" << p.fill << " '" << p.label
               << "'";
  }
};

/// (series from 1, point from 0) → look.
using MarkedPoints = std::map<std::pair<int, int>, MarkedPoint>;

MarkedPoints PointsOfChart(const pugi::xml_document& xml) {
  MarkedPoints points;
  int number = 0;
  for (const pugi::xpath_node ser : xml.select_nodes("//c:scatterChart/c:ser")) {
    ++number;
    std::map<int, std::string> labels;
    for (const pugi::xml_node label : ser.node().child("c:dLbls").children("c:dLbl")) {
      labels[label.child("c:idx").attribute("val").as_int()] =
          label.select_node("c:tx//a:t").node().text().get();
    }
    for (const pugi::xml_node point : ser.node().children("c:dPt")) {
      const int index = point.child("c:idx").attribute("val").as_int();
      const pugi::xml_node marker = point.child("c:marker");
      MarkedPoint look;
      look.symbol = marker.child("c:symbol").attribute("val").value();
      look.size = marker.child("c:size").attribute("val").as_int();
      look.line = marker.select_node("c:spPr/a:ln/a:solidFill/a:srgbClr/@val").attribute().value();
      look.fill = marker.select_node("c:spPr/a:noFill")
                      ? "none"
                      : marker.select_node("c:spPr/a:solidFill/a:srgbClr/@val").attribute().value();
      look.label = labels.count(index) ? labels[index] : "";
      points[{number, index}] = look;
    }
  }
  return points;
}

/// The marked points the rules give for one screen of a sample.
MarkedPoints ExpectedMarkers(const SampleScreen& screen, int s) {
  MarkedPoints points;
  const int on = static_cast<int>(std::lround(screen.Number("MKRNBON")));
  const bool delta = screen.Text("MKRDLT") == "ON";
  const int mode = on >= 1 ? (delta ? 2 : 1) : 0;
  const int marker_count = on - (delta ? 1 : 0);
  const int counted = marker_count + (mode == 2 ? 1 : 0);
  if (mode == 0 || counted < 1 || (mode == 2 && counted < 2)) return points;
  const int selected =
      screen.Text("MKRSEL") == "Ref" ? 0 : static_cast<int>(std::lround(screen.Number("MKRSEL")));
  const int active = selected >= 1 ? selected - 1 : 0;
  // Where marker number k (0-based) sits, when it is drawn.
  auto place = [&](int k) -> std::optional<std::pair<int, int>> {
    const auto found = screen.markers.find(k + 1);
    if (found == screen.markers.end()) return std::nullopt;
    const testing::Parameters& marker = found->second;
    if (marker.at("MKRON") != "ON") {
      return std::nullopt;
    }
    const std::string trace = marker.at("MKRTRACE");
    if (trace != "A" && trace != "B" && trace != "C") return std::nullopt;  // warned
    const int series = s == 0 ? trace[0] - 'A' + 1 : 1;
    return std::make_pair(series, std::atoi(marker.at("MKRINDEX").c_str()));
  };
  for (int k = 0; k < 10; ++k) {  // every marker is a candidate
    const auto where = place(k);
    if (!where) continue;
    points[*where] = {"diamond", 6, "00FFFF", k == active ? "00FFFF" : "FF0000",
                      std::to_string(k + 1)};
  }
  if (mode == 2 && screen.Text("MKRFIX") != "ON") {
    if (const auto where = place(marker_count)) points[*where] = {"star", 6, "FF00FF", "none", "R"};
  }
  return points;
}

TEST_F(ConvertSamplesTest, MarkersAreDrawnOnTheirTracePoints) {
  int drawn = 0;
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    const auto charts = c.package->ChartsOf("Report");
    ASSERT_EQ(charts.size(), c.sample.screens.size());
    for (size_t s = 0; s < charts.size(); ++s) {
      SCOPED_TRACE("screen " + std::to_string(s + 1));
      const MarkedPoints expected = ExpectedMarkers(c.sample.screens[s], static_cast<int>(s));
      EXPECT_EQ(PointsOfChart(*c.package->Xml(charts[s].part)), expected);
      drawn += static_cast<int>(expected.size());
    }
  }
  EXPECT_GE(drawn, 10) << "the samples mark points";
}

TEST_F(ConvertSamplesTest, ARejectedModelWritesNoWorkbook) {
  testing::ScratchDir scratch;
  const std::filesystem::path source =
      testing::WriteInstrumentCase(scratch.path(), "rejected_model.xml");
  std::string err;
  const int status =
      RunShell(Quoted(std::getenv("Z4400_CONV")) + " --batch --settings-dir " +
                   Quoted(scratch.path().string()) + " --output-dir " +
                   Quoted(scratch.path().string()) + " " + Quoted(source.string()) + " >/dev/null",
               &err);
  EXPECT_EQ(status, 1);
  EXPECT_NE(err.find("Not MQD data."), std::string::npos) << err;
  EXPECT_FALSE(std::filesystem::exists(scratch / "rejected_model.xlsx"));
}

/// The schema of a package part, relative to the schemas folder; "" for a
/// part that is not XML.
std::string SchemaOf(const std::string& part) {
  auto ends_with = [&](const std::string& tail) {
    return part.size() >= tail.size() &&
           part.compare(part.size() - tail.size(), tail.size(), tail) == 0;
  };
  if (part == "[Content_Types].xml") return "opc-contentTypes.xsd";
  if (ends_with(".rels")) return "opc-relationships.xsd";
  if (part == "docProps/core.xml") return "opc-coreProperties-offline.xsd";
  if (part == "docProps/app.xml") return "shared-documentPropertiesExtended.xsd";
  if (part.rfind("xl/charts/", 0) == 0) return "dml-chart.xsd";
  if (part.rfind("xl/drawings/", 0) == 0) return "dml-spreadsheetDrawing.xsd";
  if (part.rfind("xl/theme/", 0) == 0) return "dml-main.xsd";
  if (ends_with(".xml")) return "sml.xsd";
  return "";
}

/// The lines of xmllint's report that are problems. Left out: the verdict
/// lines, and the one attribute the schema's plain-text `t` element does
/// not declare but the spreadsheet application itself writes on texts with
/// leading or trailing blanks (xml:space="preserve", as on "Screen ").
std::string SchemaProblems(const std::string& report) {
  std::istringstream lines(report);
  std::string problems;
  for (std::string line; std::getline(lines, line);) {
    const bool verdict = line.find(" validates") != std::string::npos ||
                         line.find(" fails to validate") != std::string::npos ||
                         line.find("Skipping import") != std::string::npos;
    const bool preserved_blanks =
        line.find("element t: Schemas validity error") != std::string::npos &&
        line.find("XML/1998/namespace}space' is not allowed") != std::string::npos;
    if (!verdict && !preserved_blanks) problems += line + "\n";
  }
  return problems;
}

TEST_F(ConvertSamplesTest, EveryPartValidatesAgainstTheSchemas) {
  const auto ooxml = testing::OoxmlDir();
  if (!ooxml) GTEST_SKIP() << testing::OoxmlDirMissing();
  if (!HaveProgram("xmllint")) GTEST_SKIP() << "xmllint is not installed";
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(c.package->error().empty()) << c.package->error();
    testing::ScratchDir parts;
    std::map<std::string, std::vector<std::filesystem::path>> by_schema;
    int count = 0;
    for (const auto& [part, bytes] : c.package->members()) {
      const std::string schema = SchemaOf(part);
      if (schema.empty()) continue;
      const std::filesystem::path file = parts / (std::to_string(++count) + ".xml");
      std::ofstream(file, std::ios::binary) << bytes;
      by_schema[schema].push_back(file);
    }
    EXPECT_GT(by_schema["dml-chart.xsd"].size(), 0u);
    for (const auto& [schema, files] : by_schema) {
      std::string command =
          "xmllint --noout --nonet --schema " + Quoted((*ooxml / "schemas" / schema).string());
      for (const auto& file : files) command += " " + Quoted(file.string());
      std::string err;
      RunShell(command, &err);
      EXPECT_EQ(SchemaProblems(err), "") << schema;
    }
  }
}

TEST_F(ConvertSamplesTest, LibreOfficeOpensAndDrawsEveryWorkbook) {
  if (!HaveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
  testing::ScratchDir pdf;
  std::string command =
      "timeout 600 soffice -env:UserInstallation=file://" + (pdf.path() / "profile").string() +
      " --headless --norestore --convert-to pdf --outdir " + Quoted(pdf.path().string());
  for (auto& [name, c] : converted_->files) command += " " + Quoted(c.workbook.string());
  std::string err;
  ASSERT_EQ(RunShell(command + " >/dev/null", &err), 0) << err;
  const bool can_read_text = HaveProgram("pdftotext");
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    const std::filesystem::path file = pdf / (c.workbook.stem().string() + ".pdf");
    ASSERT_TRUE(std::filesystem::exists(file));
    EXPECT_GT(std::filesystem::file_size(file), 10000u);
    if (!can_read_text) continue;
    const std::filesystem::path text = pdf / (c.workbook.stem().string() + ".txt");
    ASSERT_EQ(RunShell("pdftotext " + Quoted(file.string()) + " " + Quoted(text.string())), 0);
    const std::string shown = ReadText(text);
    // The charts are drawn: their titles and legends are on the pages.
    for (size_t s = 0; s < c.sample.screens.size(); ++s) {
      EXPECT_NE(shown.find("Screen " + std::to_string(s + 1) + " Traces"), std::string::npos)
          << "chart of screen " << s + 1;
    }
    EXPECT_NE(shown.find("Trace 1"), std::string::npos);
    EXPECT_NE(shown.find("Measurement Report"), std::string::npos);
  }
}

TEST_F(ConvertSamplesTest, OldVersionsCopyEveryChartToASheetOfItsOwn) {
  // Spreadsheet version 11: an .xls workbook (saved through LibreOffice),
  // with the graph-sheets option on by default. Calc turns it back into
  // .xlsx so that its sheets and charts can be counted.
  if (!HaveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
  testing::ScratchDir scratch;
  const std::filesystem::path source =
      testing::WriteInstrumentCase(scratch.path(), "mixed_screens.xml");
  const InstrumentSample sample = testing::ReadSample(source);
  std::string err;
  ASSERT_EQ(
      RunShell(Quoted(std::getenv("Z4400_CONV")) +
                   " --batch --overwrite --excel-version 11 --settings-dir " +
                   Quoted(scratch.path().string()) + " --output-dir " +
                   Quoted(scratch.path().string()) + " " + Quoted(source.string()) + " >/dev/null",
               &err),
      0)
      << err;
  const std::filesystem::path xls = scratch / "mixed_screens.xls";
  ASSERT_TRUE(std::filesystem::exists(xls));
  const std::filesystem::path back = scratch / "back";
  ASSERT_EQ(RunShell("timeout 300 soffice -env:UserInstallation=file://" +
                     (scratch.path() / "profile").string() +
                     " --headless --norestore --convert-to xlsx --outdir " + Quoted(back.string()) +
                     " " + Quoted(xls.string()) + " >/dev/null"),
            0);
  const ConvertedPackage package(back / "mixed_screens.xlsx");
  ASSERT_TRUE(package.error().empty()) << package.error();
  std::vector<std::string> names = {"Report", "Raw Data", "Markers Details"};
  for (size_t s = 0; s < sample.screens.size(); ++s) {
    names.push_back("Screen " + std::to_string(s + 1) + " Traces");
  }
  EXPECT_EQ(package.SheetNames(), names);
  int charts = 0;
  for (const auto& [part, bytes] : package.members()) {
    if (part.rfind("xl/charts/chart", 0) == 0) ++charts;
  }
  EXPECT_EQ(charts, 2 * static_cast<int>(sample.screens.size()));
}

}  // namespace
}  // namespace z4400
