#include "workbook/xlsx/xlsx_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <pugixml.hpp>
#include <regex>
#include <sstream>
#include <tuple>
#include <vector>

#include "common/runtime_failure.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_package_checks_test_util.h"

namespace z4400 {
namespace {

using testing::PackageMembers;
using testing::ScratchDir;

constexpr int kPoints = 401;
constexpr int kFirstDataRow = 12;

// A workbook shaped like a converted instrument file: "Report" with one
// chart per screen, "Raw Data" with the X values in F and the traces in
// I, M, Q, and "Markers Details"; points marked, labels, axes formatted.
void FillConverterWorkbook(Workbook& book) {
  Worksheet& raw = book.Worksheets()(1);
  raw.SetName("Raw Data");
  Worksheet& report = book.Worksheets().Add(&raw);
  report.SetName("Report");
  Worksheet& markers = book.Worksheets().Add(nullptr, &raw);
  markers.SetName("Markers Details");

  report.Cells(1, 1).SetValue("Measurement Report");
  report.Cells(1, 1).Font().SetBold(true);
  report.Cells(5, 1).SetValue("Date");
  report.Cells(5, 2).SetNumberFormat("dd/mmmm/yyyy");
  report.Cells(5, 2).SetValue("2007-03-05");
  report.Cells(9, 2).SetNumberFormat("##");
  report.Cells(9, 2).SetValue("1");
  report.Columns(1).SetColumnWidth(18);
  markers.Cells(1, 1).SetValue("Markers Detailed Report & <list>");
  markers.Cells(1, 1).Font().SetItalic(true);
  markers.Cells(3, 1).SetValue(true);

  raw.Cells(11, 5).SetValue("X raw MHz");
  raw.Cells(11, 5).Font().SetBold(true);
  raw.Columns(1).Font().SetItalic(true);
  for (int k = 0; k < kPoints; ++k) {
    const int row = kFirstDataRow + k;
    raw.Cells(row, 5).SetValue(k);
    raw.Cells(row, 6).SetValue(100.0 + k * 0.25);
    raw.Cells(row, 9).SetValue(-80.0 + 10 * std::sin(k / 20.0));
    raw.Cells(row, 13).SetValue(-90.0 + k / 100.0);
  }
  raw.Range("F12:F412").SetNumberFormat("0.000");

  const int32_t colors[] = {RgbColor(255, 255, 0), RgbColor(0, 255, 255)};
  const int32_t weights[] = {kXlHairline, kXlMedium};
  for (int screen = 0; screen < 2; ++screen) {
    ChartObject& object = report.ChartObjects().Add(300, 100 + 250 * screen, 480, 240);
    Chart& chart = object.Chart();
    chart.SetChartType(kXlXYScatterLinesNoMarkers);
    for (int trace = 0; trace < 2 - screen; ++trace) {
      Series& series = chart.SeriesCollection().NewSeries();
      series.SetName("Trace " + std::to_string(trace + 1));
      series.SetXValues(raw.Range("F12:F413"));
      series.SetValues(raw.Range(trace == 0 ? "I12:I413" : "M12:M413"));
      series.Border().SetColor(colors[trace]);
      series.Border().SetWeight(weights[trace]);
    }
    Series& first = chart.SeriesCollection(1);
    ChartPoint normal = first.Points(51);
    normal.SetMarkerForegroundColor(RgbColor(0, 255, 255));
    normal.SetMarkerBackgroundColor(RgbColor(255, 0, 0));
    normal.SetMarkerSize(6);
    normal.SetMarkerStyle(kXlMarkerStyleDiamond);
    normal.SetHasDataLabel(true);
    normal.DataLabel().SetText("N(1)");
    ChartPoint reference = first.Points(101);
    reference.SetMarkerForegroundColor(RgbColor(255, 0, 255));
    reference.SetMarkerBackgroundColorIndex(kXlColorIndexNone);
    reference.SetMarkerSize(6);
    reference.SetMarkerStyle(kXlMarkerStyleStar);
    reference.SetHasDataLabel(true);
    reference.DataLabel().SetText("R");
    ChartPoint valued = first.Points(201);
    valued.SetMarkerStyle(kXlMarkerStyleAutomatic);
    valued.ApplyDataLabels(kXlDataLabelsShowValue, true, false);
    first.DataLabels().SetNumberFormat("0.000");

    chart.SetHasTitle(true);
    chart.ChartTitle().SetText("Screen " + std::to_string(screen + 1) + " Traces");
    chart.Legend().SetPosition(kXlLegendPositionBottom);
    Axis& x = chart.Axes(kXlCategory);
    x.SetHasTitle(true);
    x.AxisTitle().SetText("Frequency (MHz)");
    x.SetMinimumScale(100);
    x.SetMaximumScale(200);
    x.SetMajorUnit(10);
    x.TickLabels().SetNumberFormat("0.00");
    Axis& y = chart.Axes(kXlValue);
    y.SetHasTitle(true);
    y.AxisTitle().SetText("Level (dBm)");
    y.TickLabels().SetNumberFormat("0.0");
    y.SetTickLabelPosition(kXlTickLabelPositionLow);
    y.MajorGridlines().Border().SetColor(RgbColor(128, 128, 128));
    if (screen == 1) {
      x.SetScaleType(kXlScaleLogarithmic);
      x.SetMinimumScale(10);
      x.SetMaximumScale(1000);
      x.SetMajorUnitIsAuto(true);
    }
    chart.PlotArea().Interior().SetColor(RgbColor(255, 255, 255));
  }
  report.Activate();
}

// Saves `book` with fixed options and reads the package back.
PackageMembers SaveAndRead(const Workbook& book, const std::filesystem::path& path) {
  std::string error;
  EXPECT_TRUE(SaveXlsx(book, path, &error)) << error;
  PackageMembers members = testing::ReadPackage(path, &error);
  EXPECT_FALSE(members.empty()) << error;
  return members;
}

void ExpectValidPackage(const PackageMembers& members) {
  EXPECT_EQ(testing::CheckPackageStructure(members), "");
  EXPECT_EQ(testing::CheckChartCaches(members), "");
  if (const auto why = testing::SchemaValidationUnavailable()) {
    std::cout << "schema validation skipped: " << *why << "\n";
    return;
  }
  EXPECT_EQ(testing::ValidateAgainstSchemas(members), "");
}

TEST(XlsxWriterTest, ConverterWorkbookIsValidAndConsistent) {
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  FillConverterWorkbook(book);
  const PackageMembers members = SaveAndRead(book, dir / "converted.xlsx");
  ExpectValidPackage(members);
  for (const char* name :
       {"xl/worksheets/sheet1.xml", "xl/worksheets/sheet3.xml", "xl/drawings/drawing1.xml",
        "xl/charts/chart2.xml", "xl/sharedStrings.xml", "xl/styles.xml"}) {
    EXPECT_TRUE(members.contains(name)) << name;
  }
  EXPECT_FALSE(members.contains("xl/charts/chart3.xml"));
  // "Report" is first and active.
  const std::string& workbook = members.at("xl/workbook.xml");
  EXPECT_NE(workbook.find("<sheet name=\"Report\" sheetId=\"1\""), std::string::npos);
  EXPECT_EQ(workbook.find("activeTab"), std::string::npos);
}

TEST(XlsxWriterTest, ChartSheetsAndEmbeddedChartsTogether) {
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  FillConverterWorkbook(book);
  // A copy of the first chart on a chart sheet of its own, made active.
  ChartSheet& graph = book.Charts().Add(nullptr, book.sheets().back().get());
  graph.SetName("Graph 1");
  Chart& chart = graph.Chart();
  chart.SetChartType(kXlXYScatter);
  Series& series = chart.SeriesCollection().NewSeries();
  Worksheet& raw = book.Worksheets()("Raw Data");
  series.SetXValues(raw.Range("F12:F412"));
  series.SetValues(raw.Range("I12:I412"));
  graph.Activate();

  const PackageMembers members = SaveAndRead(book, dir / "graphs.xlsx");
  ExpectValidPackage(members);
  EXPECT_TRUE(members.contains("xl/chartsheets/sheet1.xml"));
  EXPECT_TRUE(members.contains("xl/drawings/drawing2.xml"));
  EXPECT_NE(members.at("xl/drawings/drawing2.xml").find("xdr:absoluteAnchor"), std::string::npos);
  EXPECT_NE(members.at("xl/workbook.xml").find("activeTab=\"3\""), std::string::npos);
  EXPECT_NE(members.at("xl/chartsheets/sheet1.xml").find("tabSelected=\"1\""), std::string::npos);
}

TEST(XlsxWriterTest, PrintSettingsOfWorksheetsAndChartSheets) {
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  FillConverterWorkbook(book);
  Worksheet& report = book.Worksheets()("Report");
  PageSetup& fitted = report.PageSetup();
  fitted.SetOrientation(kXlLandscape);
  fitted.SetZoom(0);
  fitted.SetFitToPagesWide(1);
  fitted.SetFitToPagesTall(0);
  fitted.SetLeftFooter("R&&D <1>.xml");
  fitted.SetCenterFooter("&A");
  fitted.SetRightFooter("Page &P of &N");
  report.HPageBreaks().Add(43);
  report.HPageBreaks().Add(26);
  report.HPageBreaks().Add(26);
  book.Worksheets()("Raw Data").PageSetup().SetZoom(75);
  ChartSheet& graph = book.Charts().Add(nullptr, book.sheets().back().get());
  graph.PageSetup().SetOrientation(kXlLandscape);
  graph.PageSetup().SetCenterFooter("&A");
  Series& series = graph.Chart().SeriesCollection().NewSeries();
  series.SetXValues(book.Worksheets()("Raw Data").Range("F12:F412"));
  series.SetValues(book.Worksheets()("Raw Data").Range("I12:I412"));

  const PackageMembers members = SaveAndRead(book, dir / "print.xlsx");
  ExpectValidPackage(members);
  const auto parse = [&members](const std::string& part, pugi::xml_document& xml) {
    ASSERT_TRUE(xml.load_string(members.at(part).c_str())) << part;
  };
  pugi::xml_document sheet;
  parse("xl/worksheets/sheet1.xml", sheet);
  const pugi::xml_node root = sheet.child("worksheet");
  EXPECT_STREQ(root.first_child().name(), "sheetPr");
  EXPECT_STREQ(root.child("sheetPr").child("pageSetUpPr").attribute("fitToPage").value(), "1");
  const pugi::xml_node setup = root.child("pageSetup");
  EXPECT_STREQ(setup.attribute("orientation").value(), "landscape");
  EXPECT_STREQ(setup.attribute("fitToWidth").value(), "1");
  EXPECT_STREQ(setup.attribute("fitToHeight").value(), "0");
  EXPECT_STREQ(root.child("headerFooter").child_value("oddFooter"),
               "&LR&&D <1>.xml&C&A&RPage &P of &N");
  // A break is stored at the last row of the page before it.
  const pugi::xml_node breaks = root.child("rowBreaks");
  EXPECT_STREQ(breaks.attribute("count").value(), "2");
  std::vector<std::string> ids;
  for (const pugi::xml_node brk : breaks.children("brk")) {
    ids.push_back(brk.attribute("id").value());
    EXPECT_STREQ(brk.attribute("man").value(), "1");
  }
  EXPECT_EQ(ids, (std::vector<std::string>{"25", "42"}));

  pugi::xml_document raw;
  parse("xl/worksheets/sheet2.xml", raw);
  EXPECT_FALSE(raw.child("worksheet").child("sheetPr"));
  EXPECT_STREQ(raw.child("worksheet").child("pageSetup").attribute("scale").value(), "75");
  EXPECT_FALSE(raw.child("worksheet").child("headerFooter"));
  EXPECT_FALSE(raw.child("worksheet").child("rowBreaks"));

  pugi::xml_document chartsheet;
  parse("xl/chartsheets/sheet1.xml", chartsheet);
  EXPECT_STREQ(chartsheet.child("chartsheet").child("pageSetup").attribute("orientation").value(),
               "landscape");
  EXPECT_STREQ(chartsheet.child("chartsheet").child("headerFooter").child_value("oddFooter"),
               "&C&A");

  // Settings the file cannot hold are refused.
  EXPECT_THROW(fitted.SetOrientation(3), RuntimeFailure);
  EXPECT_THROW(fitted.SetZoom(5), RuntimeFailure);
  EXPECT_THROW(fitted.SetFitToPagesWide(-1), RuntimeFailure);
  EXPECT_THROW(report.HPageBreaks().Add(1), RuntimeFailure);
}

TEST(XlsxWriterTest, FrozenHeaderRowsAndFilters) {
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& plain = book.Worksheets()(1);
  plain.SetName("Files");
  plain.Cells(1, 1).SetValue("Source");
  plain.FreezeTopRows(1);
  plain.SetAutoFilter({1, 1, 4, 3});
  Worksheet& quoted = book.Worksheets().Add(nullptr, &plain);
  quoted.SetName("Marker Rows");
  quoted.Cells(2, 2).SetValue(1);
  quoted.FreezeTopRows(2);
  quoted.SetAutoFilter({2, 2, 9, 7});
  Worksheet& neither = book.Worksheets().Add(nullptr, &quoted);
  neither.SetName("Notes");
  neither.Cells(1, 1).SetValue("none");
  plain.Activate();

  const PackageMembers members = SaveAndRead(book, dir / "filters.xlsx");
  ExpectValidPackage(members);
  pugi::xml_document workbook;
  ASSERT_TRUE(workbook.load_string(members.at("xl/workbook.xml").c_str()));
  const pugi::xpath_node_set names = workbook.select_nodes("//definedName");
  ASSERT_EQ(names.size(), 2u);
  const std::pair<const char*, const char*> expected_names[] = {{"0", "Files!$A$1:$C$4"},
                                                                {"1", "'Marker Rows'!$B$2:$G$9"}};
  for (std::size_t i = 0; i < names.size(); ++i) {
    const pugi::xml_node name = names[i].node();
    EXPECT_STREQ(name.attribute("name").value(), "_xlnm._FilterDatabase");
    EXPECT_STREQ(name.attribute("hidden").value(), "1");
    EXPECT_STREQ(name.attribute("localSheetId").value(), expected_names[i].first);
    EXPECT_STREQ(name.text().get(), expected_names[i].second);
  }
  // Sheet part, filter, frozen rows and the first row that scrolls.
  const std::tuple<const char*, const char*, const char*, const char*> sheets[] = {
      {"xl/worksheets/sheet1.xml", "A1:C4", "1", "A2"},
      {"xl/worksheets/sheet2.xml", "B2:G9", "2", "A3"},
      {"xl/worksheets/sheet3.xml", "", "", ""}};
  for (const auto& [part, filter, split, top_left] : sheets) {
    pugi::xml_document sheet;
    ASSERT_TRUE(sheet.load_string(members.at(part).c_str()));
    const pugi::xml_node root = sheet.child("worksheet");
    EXPECT_STREQ(root.child("autoFilter").attribute("ref").value(), filter) << part;
    const pugi::xml_node pane = root.child("sheetViews").child("sheetView").child("pane");
    EXPECT_STREQ(pane.attribute("ySplit").value(), split) << part;
    EXPECT_STREQ(pane.attribute("topLeftCell").value(), top_left) << part;
    EXPECT_STREQ(pane.attribute("state").value(), *split ? "frozen" : "") << part;
  }
}

TEST(XlsxWriterTest, SavingTwiceGivesTheSameBytes) {
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  FillConverterWorkbook(book);
  std::string error;
  ASSERT_TRUE(SaveXlsx(book, dir / "a.xlsx", &error)) << error;
  ASSERT_TRUE(SaveXlsx(book, dir / "b.xlsx", &error)) << error;
  const auto read = [](const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
  const std::string first = read(dir / "a.xlsx");
  EXPECT_FALSE(first.empty());
  EXPECT_EQ(first, read(dir / "b.xlsx"));
}

TEST(XlsxWriterTest, FailuresLeaveTheOldFileAndSayWhy) {
  ScratchDir dir;
  Application app;
  const std::filesystem::path target = dir / "book.xlsx";
  std::ofstream(target) << "previous contents";
  {
    // A series whose sheet was deleted cannot be cached.
    Workbook& book = app.Workbooks().Add();
    Worksheet& data = book.Worksheets()(1);
    data.SetName("Data");
    data.Cells(1, 1).SetValue(1);
    Worksheet& report = book.Worksheets().Add();
    Chart& chart = report.ChartObjects().Add(0, 0, 100, 100).Chart();
    chart.SeriesCollection().NewSeries().SetValues(data.Range("A1:A2"));
    data.Delete();
    std::string error;
    EXPECT_FALSE(SaveXlsx(book, target, &error));
    EXPECT_FALSE(error.empty());
  }
  {
    // A folder that does not exist.
    Workbook& book = app.Workbooks().Add();
    std::string error;
    EXPECT_FALSE(SaveXlsx(book, dir / "missing" / "book.xlsx", &error));
    EXPECT_FALSE(error.empty());
  }
  std::ifstream in(target);
  std::string contents;
  std::getline(in, contents);
  EXPECT_EQ(contents, "previous contents");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

// --- Comparison with workbooks saved by the spreadsheet application. -----

// The XML of a part split between elements, as one element per line.
std::vector<std::string> SplitXml(const std::string& xml) {
  static const std::regex kBetween(">\\s*<");
  const std::string lines = std::regex_replace(xml, kBetween, ">\n<");
  std::vector<std::string> result;
  std::istringstream in(lines);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

// Rewrites what legitimately differs: axis ids (the spreadsheet picks them at
// random), the window's size and place, page margins (written with rounding noise), relationship
// ids and the theme, which this writer does not produce (so fonts name no theme colour or scheme).
// Relationship and content-type lists are sorted.
std::vector<std::string> Normalize(const std::string& name, const std::string& xml) {
  static const std::regex kAxisId("(<c:(axId|crossAx) val=)\"\\d+\"");
  static const std::regex kRelationshipId(" Id=\"rId\\d+\"");
  std::vector<std::string> lines;
  for (std::string line : SplitXml(xml)) {
    if (line.find("theme") != std::string::npos && line.find("<color") == std::string::npos) {
      continue;  // theme part, its content type and relationship
    }
    if (line == "<color theme=\"1\"/>" || line == "<scheme val=\"minor\"/>") continue;
    // Gaps for empty cells: the spreadsheet's default, written out for
    // readers whose default differs.
    if (line == "<c:dispBlanksAs val=\"gap\"/>") continue;
    line = std::regex_replace(line, kAxisId, "$1\"ID\"");
    if (line.starts_with("<workbookView")) {  // window geometry; the active tab counts
      const std::size_t tab = line.find("activeTab=");
      line = "<workbookView " + (tab == std::string::npos ? "" : line.substr(tab));
    }
    if (line.starts_with("<c:pageMargins") || line.starts_with("<pageMargins")) line = "<margins>";
    if (name.ends_with(".rels")) line = std::regex_replace(line, kRelationshipId, "");
    lines.push_back(line);
  }
  if (name.ends_with(".rels") || name == "[Content_Types].xml")
    std::sort(lines.begin(), lines.end());
  return lines;
}

void ExpectSameAsSpreadsheetMade(const std::string& reference, const PackageMembers& ours) {
  std::string error;
  const PackageMembers theirs =
      testing::ReadPackage(*testing::OoxmlDir() / "excel-made" / (reference + ".xlsx"), &error);
  ASSERT_FALSE(theirs.empty()) << error;
  std::vector<std::string> their_names;
  for (const auto& [name, bytes] : theirs) {
    if (name != "xl/theme/theme1.xml") their_names.push_back(name);
  }
  std::vector<std::string> our_names;
  for (const auto& [name, bytes] : ours) our_names.push_back(name);
  EXPECT_EQ(our_names, their_names);
  for (const auto& [name, bytes] : theirs) {
    if (!ours.contains(name) || name.starts_with("docProps/")) continue;  // properties vary
    EXPECT_EQ(Normalize(name, ours.at(name)), Normalize(name, bytes)) << reference << " " << name;
  }
}

TEST(XlsxWriterTest, SameAsSpreadsheetMadeSimpleWorkbook) {
  if (!testing::OoxmlDir()) GTEST_SKIP() << testing::OoxmlDirMissing();
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  sheet.Cells(1, 1).SetValue("Hello");
  sheet.Cells(2, 1).SetValue(123);
  ExpectSameAsSpreadsheetMade("simple01", SaveAndRead(book, dir / "simple01.xlsx"));
}

TEST(XlsxWriterTest, SameAsSpreadsheetMadeTimesDatesAndWidths) {
  if (!testing::OoxmlDir()) GTEST_SKIP() << testing::OoxmlDirMissing();
  ScratchDir dir;
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  sheet.Cells(1, 1).SetNumberFormat("h:mm");  // a built-in format, saved by id
  sheet.StoreValue(1, 1, CellValue(0.5));
  sheet.StoreValue(2, 1, CellValue(DateValue{41301}));  // a date in a general cell
  sheet.Columns(1).SetColumnWidth(12);
  ExpectSameAsSpreadsheetMade("simple04", SaveAndRead(book, dir / "simple04.xlsx"));
}

// The spreadsheet's scatter charts of Sheet1!A1:C5 (X in A, two series in B
// and C), 480 × 288 pixels at E9, each with one feature of its own.
TEST(XlsxWriterTest, SameAsSpreadsheetMadeScatterCharts) {
  if (!testing::OoxmlDir()) GTEST_SKIP() << testing::OoxmlDirMissing();
  struct Case {
    const char* reference;
    int32_t type;
    void (*format)(Chart& chart);
  };
  const Case cases[] = {
      {"chart_scatter01", kXlXYScatter, [](Chart&) {}},
      {"chart_scatter02", kXlXYScatterLines, [](Chart&) {}},
      {"chart_scatter03", kXlXYScatterLinesNoMarkers, [](Chart&) {}},
      {"chart_scatter14", kXlXYScatterLines,
       [](Chart& chart) {
         chart.SeriesCollection(1).SetMarkerStyle(kXlMarkerStyleStar);
         chart.SeriesCollection(1).SetMarkerSize(5);
         chart.SeriesCollection(2).SetMarkerStyle(kXlMarkerStylePlus);
         chart.SeriesCollection(2).SetMarkerSize(5);
       }},
      {"chart_points04", kXlXYScatter,
       [](Chart& chart) {
         chart.SeriesCollection(1).Points(1).SetMarkerBackgroundColor(RgbColor(255, 0, 0));
         chart.SeriesCollection(1).Points(2).SetMarkerBackgroundColor(RgbColor(255, 255, 0));
         chart.SeriesCollection(2).Points(3).SetMarkerBackgroundColor(RgbColor(255, 255, 0));
       }},
      {"chart_axis04", kXlXYScatter,
       [](Chart& chart) {
         chart.Axes(kXlCategory).SetHasTitle(true);
         chart.Axes(kXlCategory).AxisTitle().SetText("XXX");
         chart.Axes(kXlValue).SetHasTitle(true);
         chart.Axes(kXlValue).AxisTitle().SetText("YYY");
       }},
      {"chart_axis13", kXlXYScatter,
       [](Chart& chart) {
         chart.Axes(kXlCategory).SetMinimumScale(0);
         chart.Axes(kXlCategory).SetMaximumScale(6);
         chart.Axes(kXlValue).SetMinimumScale(0);
         chart.Axes(kXlValue).SetMaximumScale(16);
       }},
      {"chart_gridlines06", kXlXYScatter,
       [](Chart& chart) {
         for (int32_t type : {kXlCategory, kXlValue}) {
           chart.Axes(type).SetHasMajorGridlines(true);
           chart.Axes(type).SetHasMinorGridlines(true);
         }
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.reference);
    ScratchDir dir;
    Application app;
    Workbook& book = app.Workbooks().Add();
    Worksheet& sheet = book.Worksheets()(1);
    for (int row = 1; row <= 5; ++row) {
      for (int column = 1; column <= 3; ++column) sheet.Cells(row, column).SetValue(row * column);
    }
    Chart& chart = sheet.ChartObjects().Add(192, 120, 360, 216).Chart();
    chart.SetChartType(c.type);
    for (const char* values : {"B1:B5", "C1:C5"}) {
      Series& series = chart.SeriesCollection().NewSeries();
      series.SetXValues(sheet.Range("A1:A5"));
      series.SetValues(sheet.Range(values));
    }
    c.format(chart);
    ExpectSameAsSpreadsheetMade(c.reference, SaveAndRead(book, dir / "chart.xlsx"));
  }
}

}  // namespace
}  // namespace z4400
