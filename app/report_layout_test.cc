// End-to-end: the examples and made-up files of every screen kind are
// converted by z4400conv --batch, and the workbooks must read and print
// well: every configuration and marker-list text shows whole in its column,
// every sheet carries the print layout, the Y axis follows the instrument's
// screen, and LibreOffice Calc prints "Report" one screen per page with no
// chart cut by a page edge and no "###".
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "app/converted_files_test_util.h"
#include "app/instrument_sample_test_util.h"
#include "app/shell_commands_test_util.h"
#include "testing/instrument_generator.h"
#include "testing/test_files.h"
#include "workbook/model/text_width.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

using testing::HaveProgram;
using testing::Quoted;
using testing::ReadText;
using testing::RunShell;

/// Made-up files covering every screen kind but the negative logarithmic X
/// axis (the example log_x_axis.csv has it), with gaps, ten markers and
/// delta mode; written into `folder`.
std::vector<std::filesystem::path> WriteGeneratedFiles(const std::filesystem::path& folder) {
  const std::vector<std::vector<ScreenKind>> groups = {
      {ScreenKind::kSpectrum, ScreenKind::kZeroSpan, ScreenKind::kLogX},
      {ScreenKind::kLinearWatts, ScreenKind::kLinearVolts, ScreenKind::kSpectrum},
      {ScreenKind::kFreqTime, ScreenKind::kPhaseTime, ScreenKind::kPowerTime},
      {ScreenKind::kIqTime, ScreenKind::kPartialFft, ScreenKind::kPhaseFreq}};
  std::vector<std::filesystem::path> files;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    GeneratorOptions options;
    options.seed = 100 + i;
    options.points = 101;
    options.markers = 10;
    options.delta = i % 2 == 1;
    options.gaps = {7, 50};
    options.screens = groups[i];
    const GeneratedFile file = GenerateInstrumentFile(options);
    const bool csv = i == 2;
    files.push_back(folder / ("generated_" + std::to_string(i) + (csv ? ".csv" : ".xml")));
    std::ofstream(files.back(), std::ios::binary)
        << (csv ? InstrumentCsv(file) : InstrumentXml(file));
  }
  return files;
}

/// The examples and the generated files, converted once for the suite.
class ReportLayoutTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const char* program = std::getenv("Z4400_CONV");
    if (program == nullptr) return;
    scratch_ = std::make_unique<testing::ScratchDir>();
    out_ = scratch_->path() / "out";
    std::filesystem::create_directories(out_);
    std::vector<std::filesystem::path> sources = WriteGeneratedFiles(scratch_->path());
    for (const auto& entry :
         std::filesystem::directory_iterator(testing::SourceDir() / "examples")) {
      const std::string extension = entry.path().extension().string();
      if (extension == ".xml" || extension == ".csv") sources.push_back(entry.path());
    }
    converted_ = std::make_unique<testing::ConvertedFiles>(
        testing::ConvertWithBatch(program, sources, scratch_->path(), out_));
  }
  static void TearDownTestSuite() {
    converted_.reset();
    scratch_.reset();
  }
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
    ASSERT_EQ(converted_->status, 0) << converted_->errors;
    ASSERT_EQ(converted_->files.size(), 9u);
  }

  static std::unique_ptr<testing::ScratchDir> scratch_;
  static std::filesystem::path out_;
  static std::unique_ptr<testing::ConvertedFiles> converted_;
};

std::unique_ptr<testing::ScratchDir> ReportLayoutTest::scratch_;
std::filesystem::path ReportLayoutTest::out_;
std::unique_ptr<testing::ConvertedFiles> ReportLayoutTest::converted_;

/// Checks that every cell of columns `first_column` to `last_column` from
/// row `first_row` shows whole: a number within its column (else the
/// spreadsheet shows "###"); a text within its column, or running into an
/// empty cell beside it where `overflow` allows that.
void ExpectCellsShowWhole(const Worksheet& sheet, int first_row, int first_column, int last_column,
                          bool overflow) {
  for (int row = first_row; row <= sheet.grid().RowCount(); ++row) {
    for (int column = first_column; column <= last_column; ++column) {
      const CellValue value = sheet.ValueAt(row, column);
      if (value.IsEmpty()) continue;
      const double needed = ColumnWidthForCell(sheet, row, column);
      const double width = sheet.ColumnWidthAt(column);
      if (needed <= width) continue;
      const bool runs_on =
          overflow && !value.IsNumber() && sheet.ValueAt(row, column + 1).IsEmpty();
      EXPECT_TRUE(runs_on) << sheet.Name() << " row " << row << " column " << column << " \""
                           << value.ToText() << "\" needs " << needed << ", column is " << width;
    }
  }
}

TEST_F(ReportLayoutTest, ConfigurationAndMarkerListCellsShowWhole) {
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(c.read_error.empty()) << c.read_error;
    const Worksheet& report = c.cells->Worksheets()("Report");
    const Worksheet& raw = c.cells->Worksheets()("Raw Data");
    const Worksheet& details = c.cells->Worksheets()("Markers Details");
    // "Report": the blocks in A to C beside the charts, the lists in J to O.
    ExpectCellsShowWhole(report, 9, 1, 3, false);
    ExpectCellsShowWhole(report, 9, 10, 15, false);
    // "Raw Data": the blocks above and beside the X values; its unit column
    // keeps the width the sheet layout gives it, the empty D beside it.
    ExpectCellsShowWhole(raw, 9, 1, 3, true);
    ExpectCellsShowWhole(details, 3, 1, 6, false);
  }
}

TEST_F(ReportLayoutTest, EverySheetHasThePrintLayout) {
  for (auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    const std::string file_name = c.source.filename().string();
    for (const std::string& sheet : c.package->SheetNames()) {
      SCOPED_TRACE(sheet);
      const auto xml = c.package->Xml(c.package->SheetPart(sheet));
      const pugi::xml_node root = xml->child("worksheet");
      ASSERT_TRUE(root);
      EXPECT_STREQ(root.child("sheetPr").child("pageSetUpPr").attribute("fitToPage").value(), "1");
      const pugi::xml_node setup = root.child("pageSetup");
      EXPECT_STREQ(setup.attribute("orientation").value(), "landscape");
      EXPECT_STREQ(setup.attribute("fitToWidth").value(), "1");
      EXPECT_STREQ(setup.attribute("fitToHeight").value(), "0");
      EXPECT_EQ(std::string(root.child("headerFooter").child_value("oddFooter")),
                "&L" + file_name + "&C&A&RPage &P of &N");
      std::vector<int> breaks;
      for (const pugi::xml_node brk : root.child("rowBreaks").children("brk")) {
        breaks.push_back(brk.attribute("id").as_int() + 1);
      }
      std::vector<int> expected;
      const int screens = static_cast<int>(c.sample.screens.size());
      for (int s = 1; s < screens && sheet == "Report"; ++s) expected.push_back(17 * s + 9);
      EXPECT_EQ(breaks, expected) << "pages start at the blocks of screens 2 and 3";
    }
  }
}

/// The Y axis scaling of chart `index` (from 0) of "Report".
struct YScaling {
  double min = NAN, max = NAN, major = NAN;
};

YScaling YScalingOf(const testing::ConvertedFile& c, std::size_t index) {
  const auto charts = c.package->ChartsOf("Report");
  if (index >= charts.size()) return {};
  const auto xml = c.package->Xml(charts[index].part);
  // Both axes of an XY chart are value axes; the Y axis stands at the left.
  const pugi::xml_node axis = xml->select_node("//c:valAx[c:axPos/@val='l']").node();
  YScaling y;
  const auto number = [](pugi::xml_node node) {
    return node ? node.attribute("val").as_double() : NAN;
  };
  y.min = number(axis.child("c:scaling").child("c:min"));
  y.max = number(axis.child("c:scaling").child("c:max"));
  y.major = number(axis.child("c:majorUnit"));
  return y;
}

/// Display units per volt of the engineering unit a level in volts is shown
/// in (1 for "V", 1000 for "mV" …).
double VoltPrefixFactor(double volts) {
  const double m = std::abs(volts);
  if (m >= 1) return 1;
  if (m > 0.001) return 1e3;
  if (m > 0.000001) return 1e6;
  return 1e9;
}

TEST_F(ReportLayoutTest, YAxisIsTheInstrumentScreen) {
  // A linear screen with gaps: from 0 to the reference level in the plotted
  // unit, the -200 of the missing points left outside.
  const testing::ConvertedFile& linear = converted_->files.at("linear_delta_gaps.xml");
  ASSERT_EQ(linear.sample.screens.size(), 2u);
  for (std::size_t s = 0; s < 2; ++s) {
    SCOPED_TRACE(s);
    const auto& screen = linear.sample.screens[s];
    const double reference = screen.Number("RL");
    const double volts = screen.Text("AUNITS") == "Watts"
                             ? std::sqrt(reference * screen.Number("OHMDUALCH"))
                             : reference;
    const double top = reference * VoltPrefixFactor(volts);
    const YScaling y = YScalingOf(linear, s);
    EXPECT_DOUBLE_EQ(y.min, 0);
    EXPECT_NEAR(y.max, top, 1e-9 * top);
    EXPECT_NEAR(y.major, top / 10, 1e-9 * top);
  }
  // dB screens with a logarithmic scale: ten divisions below the reference.
  for (const char* name : {"band_scan_markers.xml", "mixed_screens.xml"}) {
    SCOPED_TRACE(name);
    const testing::ConvertedFile& c = converted_->files.at(name);
    const auto& screen = c.sample.screens[0];
    const YScaling y = YScalingOf(c, 0);
    EXPECT_DOUBLE_EQ(y.max, screen.Number("RL"));
    EXPECT_DOUBLE_EQ(y.min, screen.Number("RL") - 10 * screen.Number("DD"));
    EXPECT_DOUBLE_EQ(y.major, screen.Number("DD"));
  }
  // Digital screens give no usable scale: automatic.
  const YScaling digital = YScalingOf(converted_->files.at("digital_functions.csv"), 0);
  EXPECT_TRUE(std::isnan(digital.min));
  EXPECT_TRUE(std::isnan(digital.max));
}

TEST_F(ReportLayoutTest, ZeroVerticalScaleSaysSoOnTheCommandLine) {
  GeneratorOptions options;
  options.points = 21;
  GeneratedFile file = GenerateInstrumentFile(options);
  for (auto& [id, value] : file.screens[0].parameters) {
    if (id == "DD") value = "0";
  }
  const std::filesystem::path source = scratch_->path() / "zero_scale.xml";
  std::ofstream(source) << InstrumentXml(file);
  std::string err;
  const int status =
      RunShell(Quoted(std::getenv("Z4400_CONV")) + " --batch --overwrite --settings-dir " +
                   Quoted(scratch_->path().string()) + " --output-dir " + Quoted(out_.string()) +
                   " " + Quoted(source.string()) + " >/dev/null",
               &err);
  EXPECT_NE(status, 0);
  EXPECT_NE(err.find("Vertical-axis scale is 0"), std::string::npos) << err;
}

/// The pages of a PDF as text, one entry per page.
std::vector<std::string> PdfPages(const std::filesystem::path& pdf) {
  const std::filesystem::path text = pdf.string() + ".txt";
  const std::string command =
      "pdftotext -layout " + Quoted(pdf.string()) + " " + Quoted(text.string()) + " 2>/dev/null";
  if (std::system(command.c_str()) != 0) return {};
  std::vector<std::string> pages;
  std::istringstream all(ReadText(text));
  std::string page;
  while (std::getline(all, page, '\f')) pages.push_back(page);
  if (!pages.empty() && pages.back().find_first_not_of(" \n") == std::string::npos)
    pages.pop_back();
  return pages;
}

bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(ReportLayoutTest, LibreOfficePrintsOneScreenPerReportPage) {
  if (!HaveProgram("soffice") || !HaveProgram("pdftotext")) {
    GTEST_SKIP() << "LibreOffice (soffice) or poppler-utils are not installed";
  }
  const std::filesystem::path pdfs = scratch_->path() / "pdf";
  std::string command =
      "timeout 300 soffice --headless --norestore '-env:UserInstallation=file://" +
      (scratch_->path() / "profile").string() + "' --convert-to pdf --outdir " +
      Quoted(pdfs.string());
  for (const auto& [name, c] : converted_->files) command += " " + Quoted(c.workbook.string());
  std::string err;
  ASSERT_EQ(RunShell(command + " >/dev/null", &err), 0) << err;

  for (const auto& [name, c] : converted_->files) {
    SCOPED_TRACE(name);
    const std::vector<std::string> pages = PdfPages(pdfs / (c.workbook.stem().string() + ".pdf"));
    ASSERT_FALSE(pages.empty());
    const int screens = static_cast<int>(c.sample.screens.size());
    const std::string file_name = c.source.filename().string();
    std::map<std::string, std::vector<int>> pages_of_sheet;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      const std::string& page = pages[i];
      EXPECT_FALSE(Has(page, "###")) << "page " << i + 1 << ":\n" << page;
      // The footer: source file, sheet and "Page n of m".
      EXPECT_TRUE(Has(page, file_name)) << "page " << i + 1;
      EXPECT_TRUE(
          Has(page, "Page " + std::to_string(i + 1) + " of " + std::to_string(pages.size())));
      for (const char* sheet : {"Markers Details", "Raw Data", "Report"}) {
        const std::size_t footer = page.rfind(file_name);
        if (footer != std::string::npos &&
            Has(page.substr(footer), std::string("  ") + sheet + "  ")) {
          pages_of_sheet[sheet].push_back(static_cast<int>(i));
          break;
        }
      }
    }
    // "Report": one page per screen, each holding its block, its whole chart
    // (title, axis title, legend) and its marker list.
    const std::vector<int>& report = pages_of_sheet["Report"];
    ASSERT_EQ(static_cast<int>(report.size()), std::max(screens, 1));
    for (int s = 0; s < screens; ++s) {
      const std::string& page = pages[report[s]];
      SCOPED_TRACE(page);
      const std::string number = std::to_string(s + 1);
      EXPECT_TRUE(Has(page, "Screen " + number + " Traces"));
      EXPECT_FALSE(Has(page, "Screen " + std::to_string(s + 2) + " Traces"));
      EXPECT_TRUE(Has(page, "Frequency (") || Has(page, "Time ("));
      EXPECT_TRUE(Has(page, "Trace 1"));
      EXPECT_TRUE(Has(page, "Attenuation"));
      EXPECT_TRUE(Has(page, "Marker List Screen"));
    }
    // One page wide: the first "Raw Data" page carries the X values and the
    // last trace's header together.
    ASSERT_FALSE(pages_of_sheet["Raw Data"].empty());
    const std::string& raw = pages[pages_of_sheet["Raw Data"].front()];
    EXPECT_TRUE(Has(raw, "X raw"));
    const std::string last_trace = c.sample.screens[0].traces.size() > 1 ? "Y(B) raw" : "Y(A) raw";
    EXPECT_TRUE(Has(raw, last_trace)) << raw;
    EXPECT_FALSE(pages_of_sheet["Markers Details"].empty());
    EXPECT_EQ(pages_of_sheet["Report"].size() + pages_of_sheet["Raw Data"].size() +
                  pages_of_sheet["Markers Details"].size(),
              pages.size());
  }
}

}  // namespace
}  // namespace z4400
