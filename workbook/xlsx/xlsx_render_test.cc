// A real spreadsheet program reads our files: LibreOffice Calc converts a
// saved workbook to PDF, and the first page must show the chart (its title,
// axis titles and legend as text, and the trace drawn in its colour).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {
namespace {

bool HasTool(const std::string& tool) {
  return std::system(("command -v " + tool + " > /dev/null 2>&1").c_str()) == 0;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// Number of pixels of a binary PPM (P6, 8 bits) whose colour passes `test`.
template <typename Test>
int CountPixels(const std::string& ppm, Test test) {
  std::istringstream in(ppm);
  std::string magic;
  int width = 0;
  int height = 0;
  int max = 0;
  in >> magic >> width >> height >> max;
  in.get();
  if (magic != "P6" || max != 255) return -1;
  const std::size_t start = static_cast<std::size_t>(in.tellg());
  int count = 0;
  for (std::size_t i = start; i + 2 < ppm.size(); i += 3) {
    const auto channel = [&](std::size_t k) { return static_cast<unsigned char>(ppm[k]); };
    count += test(channel(i), channel(i + 1), channel(i + 2)) ? 1 : 0;
  }
  return count;
}

TEST(XlsxRenderTest, LibreOfficeDrawsTheChart) {
  if (!HasTool("soffice") || !HasTool("pdftoppm") || !HasTool("pdftotext")) {
    GTEST_SKIP() << "LibreOffice (soffice) or poppler-utils are not installed";
  }
  testing::ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& raw = book.Worksheets()(1);
  raw.SetName("Raw Data");
  Worksheet& report = book.Worksheets().Add(&raw);
  report.SetName("Report");
  report.Cells(1, 1).SetValue("Measurement Report");
  for (int k = 0; k < 101; ++k) {
    raw.Cells(12 + k, 6).SetValue(100 + k);
    raw.Cells(12 + k, 9).SetValue(-60 + 20 * std::sin(k / 8.0));
  }
  Chart& chart = report.ChartObjects().Add(20, 40, 420, 260).Chart();
  chart.SetChartType(kXlXYScatterLinesNoMarkers);
  Series& series = chart.SeriesCollection().NewSeries();
  series.SetName("Trace 1");
  series.SetXValues(raw.Range("F12:F112"));
  series.SetValues(raw.Range("I12:I112"));
  series.Border().SetColor(RgbColor(255, 0, 0));
  series.Border().SetWeight(kXlThick);
  chart.SetHasTitle(true);
  chart.ChartTitle().SetText("Screen 1 Traces");
  chart.Axes(kXlCategory).SetHasTitle(true);
  chart.Axes(kXlCategory).AxisTitle().SetText("Frequency (MHz)");
  chart.Axes(kXlValue).SetHasTitle(true);
  chart.Axes(kXlValue).AxisTitle().SetText("Level (dBm)");
  report.Activate();
  std::string error;
  ASSERT_TRUE(SaveXlsx(book, dir / "render.xlsx", &error)) << error;

  const std::string profile = "file://" + (dir / "profile").string();
  const std::string convert = "cd '" + dir.path().string() +
                              "' && timeout 180 soffice --headless --norestore "
                              "'-env:UserInstallation=" +
                              profile + "' --convert-to pdf render.xlsx > soffice.log 2>&1";
  ASSERT_EQ(std::system(convert.c_str()), 0) << ReadFile(dir / "soffice.log");
  ASSERT_TRUE(std::filesystem::exists(dir / "render.pdf")) << ReadFile(dir / "soffice.log");

  const std::string text_command = "pdftotext -f 1 -l 1 '" + (dir / "render.pdf").string() + "' '" +
                                   (dir / "page1.txt").string() + "'";
  ASSERT_EQ(std::system(text_command.c_str()), 0);
  const std::string text = ReadFile(dir / "page1.txt");
  for (const char* expected :
       {"Measurement Report", "Screen 1 Traces", "Frequency (MHz)", "Level (dBm)", "Trace 1"}) {
    EXPECT_NE(text.find(expected), std::string::npos) << expected << " not in:\n" << text;
  }

  const std::string image_command = "pdftoppm -r 50 -f 1 -l 1 -singlefile '" +
                                    (dir / "render.pdf").string() + "' '" +
                                    (dir / "page1").string() + "'";
  ASSERT_EQ(std::system(image_command.c_str()), 0);
  const std::string ppm = ReadFile(dir / "page1.ppm");
  const int red = CountPixels(ppm, [](int r, int g, int b) { return r > 200 && g < 80 && b < 80; });
  EXPECT_GT(red, 100) << "the red trace is not drawn";
}

}  // namespace
}  // namespace z4400
