#include "workbook/xlsx/xlsx_chart_part.h"

#include <gtest/gtest.h>

#include <limits>
#include <pugixml.hpp>
#include <string>

#include "workbook/model/application.h"
#include "workbook/model/cell_address.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_chart_axes.h"
#include "workbook/xlsx/xlsx_chart_series.h"
#include "workbook/xlsx/xlsx_chart_shapes.h"
#include "workbook/xlsx/xlsx_package_checks_test_util.h"

namespace z4400 {
namespace {

// A worksheet "Raw Data" with X values in F2:F11 and values in I2:I11, and
// one embedded chart.
class ChartPartTest : public ::testing::Test {
 protected:
  ChartPartTest() : book_(app_.Workbooks().Add()), sheet_(book_.Worksheets()(1)) {
    sheet_.SetName("Raw Data");
    for (int row = 2; row <= 11; ++row) {
      sheet_.Cells(row, 6).SetValue(row * 1.5);
      sheet_.Cells(row, 9).SetValue(-row * 0.25);
    }
    chart_ = &sheet_.ChartObjects().Add(0, 0, 300, 200).Chart();
    chart_->SetChartType(kXlXYScatterLinesNoMarkers);
  }

  Series& AddSeries() {
    Series& series = chart_->SeriesCollection().NewSeries();
    series.SetXValues(sheet_.Range("F2:F11"));
    series.SetValues(sheet_.Range("I2:I11"));
    return series;
  }

  // The chart part, parsed.
  pugi::xml_document& Written() {
    NumberTexts numbers;
    const std::string xml = WriteChartPart(*chart_, numbers);
    EXPECT_TRUE(document_.load_string(xml.c_str())) << xml;
    return document_;
  }

  pugi::xml_node Select(const char* query) { return Written().select_node(query).node(); }

  Application app_;
  Workbook& book_;
  Worksheet& sheet_;
  Chart* chart_ = nullptr;
  pugi::xml_document document_;
};

TEST_F(ChartPartTest, ChartTypesDrawLinesAndMarkers) {
  struct Case {
    int32_t type;
    const char* style;
    bool line_hidden;
    bool no_markers;
    bool smooth;
  };
  const Case cases[] = {
      {kXlXYScatter, "lineMarker", true, false, false},
      {kXlXYScatterLines, "lineMarker", false, false, false},
      {kXlXYScatterLinesNoMarkers, "lineMarker", false, true, false},
      {kXlXYScatterSmooth, "smoothMarker", false, false, true},
      {kXlXYScatterSmoothNoMarkers, "smoothMarker", false, true, true},
  };
  AddSeries();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    chart_->SetChartType(c.type);
    pugi::xml_document& xml = Written();
    const pugi::xml_node scatter = xml.select_node("//c:plotArea/c:scatterChart").node();
    EXPECT_STREQ(scatter.child("c:scatterStyle").attribute("val").value(), c.style);
    const pugi::xml_node ser = scatter.child("c:ser");
    EXPECT_EQ(static_cast<bool>(ser.select_node("c:spPr/a:ln/a:noFill")), c.line_hidden);
    EXPECT_EQ(std::string(ser.select_node("c:marker/c:symbol/@val").attribute().value()),
              c.no_markers ? "none" : "");
    EXPECT_EQ(ser.child("c:smooth").attribute("val").as_int(), c.smooth ? 1 : 0);
  }
}

TEST_F(ChartPartTest, SeriesNameLineAndCachedValues) {
  Series& series = AddSeries();
  series.SetName("Trace 1");
  series.Border().SetColor(RgbColor(255, 128, 0));
  series.Border().SetWeight(kXlMedium);
  const pugi::xml_node ser = Select("//c:ser");
  EXPECT_STREQ(ser.select_node("c:tx/c:v").node().text().get(), "Trace 1");
  EXPECT_EQ(ser.select_node("c:spPr/a:ln/@w").attribute().as_llong(), 2 * 12700);
  EXPECT_STREQ(ser.select_node("c:spPr/a:ln/a:solidFill/a:srgbClr/@val").attribute().value(),
               "FF8000");
  EXPECT_STREQ(ser.select_node("c:xVal/c:numRef/c:f").node().text().get(), "'Raw Data'!$F$2:$F$11");
  const pugi::xml_node cache = ser.select_node("c:yVal/c:numRef/c:numCache").node();
  EXPECT_EQ(cache.child("c:ptCount").attribute("val").as_int(), 10);
  int index = 0;
  for (pugi::xml_node pt : cache.children("c:pt")) {
    EXPECT_EQ(pt.attribute("idx").as_int(), index);
    EXPECT_EQ(pt.child("c:v").text().as_double(), -(index + 2) * 0.25);
    ++index;
  }
  EXPECT_EQ(index, 10);
}

TEST_F(ChartPartTest, MarkedPointsAndLabels) {
  Series& series = AddSeries();
  ChartPoint normal = series.Points(3);  // cyan border, red fill, label "N(1)"
  normal.SetMarkerForegroundColor(RgbColor(0, 255, 255));
  normal.SetMarkerBackgroundColor(RgbColor(255, 0, 0));
  normal.SetMarkerSize(6);
  normal.SetMarkerStyle(kXlMarkerStyleDiamond);
  normal.SetHasDataLabel(true);
  normal.DataLabel().SetText("N(1)");
  ChartPoint reference = series.Points(5);  // magenta star without fill
  reference.SetMarkerForegroundColor(RgbColor(255, 0, 255));
  reference.SetMarkerBackgroundColorIndex(kXlColorIndexNone);
  reference.SetMarkerStyle(kXlMarkerStyleStar);
  ChartPoint valued = series.Points(7);  // automatic marker, value label
  valued.SetMarkerStyle(kXlMarkerStyleAutomatic);
  valued.ApplyDataLabels(kXlDataLabelsShowValue, true, false);
  series.DataLabels().SetNumberFormat("0.000");

  pugi::xml_document& xml = Written();
  const pugi::xml_node first = xml.select_node("//c:ser/c:dPt[c:idx/@val='2']").node();
  ASSERT_TRUE(first);
  EXPECT_STREQ(first.select_node("c:marker/c:symbol/@val").attribute().value(), "diamond");
  EXPECT_EQ(first.select_node("c:marker/c:size/@val").attribute().as_int(), 6);
  EXPECT_STREQ(first.select_node("c:marker/c:spPr/a:solidFill/a:srgbClr/@val").attribute().value(),
               "FF0000");
  EXPECT_STREQ(
      first.select_node("c:marker/c:spPr/a:ln/a:solidFill/a:srgbClr/@val").attribute().value(),
      "00FFFF");
  const pugi::xml_node star = xml.select_node("//c:ser/c:dPt[c:idx/@val='4']").node();
  EXPECT_STREQ(star.select_node("c:marker/c:symbol/@val").attribute().value(), "star");
  EXPECT_TRUE(star.select_node("c:marker/c:spPr/a:noFill"));
  // Automatic on a chart without markers shows the first series' symbol.
  EXPECT_STREQ(
      xml.select_node("//c:ser/c:dPt[c:idx/@val='6']/c:marker/c:symbol/@val").attribute().value(),
      "diamond");

  const pugi::xml_node labels = xml.select_node("//c:ser/c:dLbls").node();
  const pugi::xml_node text = labels.select_node("c:dLbl[c:idx/@val='2']").node();
  EXPECT_STREQ(text.select_node("c:tx/c:rich/a:p/a:r/a:t").node().text().get(), "N(1)");
  EXPECT_EQ(text.child("c:showVal").attribute("val").as_int(), 1);
  const pugi::xml_node value = labels.select_node("c:dLbl[c:idx/@val='6']").node();
  EXPECT_STREQ(value.select_node("c:numFmt/@formatCode").attribute().value(), "0.000");
  EXPECT_FALSE(labels.select_node("c:dLbl[c:idx/@val='4']"));
  EXPECT_STREQ(labels.select_node("c:numFmt/@formatCode").attribute().value(), "0.000");
  EXPECT_EQ(labels.child("c:showVal").attribute("val").as_int(), 0);  // only the points
}

TEST_F(ChartPartTest, AxesTitleAndLegend) {
  AddSeries();
  Axis& x = chart_->Axes(kXlCategory);
  x.SetHasTitle(true);
  x.AxisTitle().SetText("Frequency (MHz)");
  x.SetMinimumScale(100);
  x.SetMaximumScale(200);
  x.SetMajorUnit(10);
  x.SetScaleType(kXlScaleLogarithmic);
  x.TickLabels().SetNumberFormat("0.00");
  x.SetCrosses(kXlAxisCrossesMaximum);  // the Y axis stands at the right
  Axis& y = chart_->Axes(kXlValue);
  y.SetTickLabelPosition(kXlTickLabelPositionLow);
  y.MajorGridlines().Border().SetColor(RgbColor(0, 0, 255));
  chart_->SetHasTitle(true);
  chart_->ChartTitle().SetText("Screen 1 Traces");
  chart_->PlotArea().Interior().SetColor(RgbColor(0, 0, 0));

  pugi::xml_document& xml = Written();
  EXPECT_STREQ(xml.select_node("//c:chart/c:title//a:t").node().text().get(), "Screen 1 Traces");
  EXPECT_FALSE(xml.select_node("//c:autoTitleDeleted"));
  const pugi::xml_node bottom = xml.select_node("//c:valAx[c:axPos/@val='b']").node();
  EXPECT_EQ(bottom.select_node("c:scaling/c:logBase/@val").attribute().as_double(), 10);
  EXPECT_EQ(bottom.select_node("c:scaling/c:min/@val").attribute().as_double(), 100);
  EXPECT_EQ(bottom.select_node("c:scaling/c:max/@val").attribute().as_double(), 200);
  EXPECT_EQ(bottom.child("c:majorUnit").attribute("val").as_double(), 10);
  EXPECT_STREQ(bottom.select_node("c:title//a:t").node().text().get(), "Frequency (MHz)");
  EXPECT_STREQ(bottom.child("c:numFmt").attribute("formatCode").value(), "0.00");
  EXPECT_STREQ(bottom.child("c:numFmt").attribute("sourceLinked").value(), "0");
  EXPECT_FALSE(bottom.child("c:majorGridlines"));
  EXPECT_STREQ(bottom.child("c:crosses").attribute("val").value(), "autoZero");
  const pugi::xml_node left = xml.select_node("//c:valAx[c:axPos/@val='l']").node();
  EXPECT_FALSE(left.select_node("c:scaling/c:min"));
  EXPECT_FALSE(left.child("c:majorUnit"));
  EXPECT_STREQ(left.child("c:tickLblPos").attribute("val").value(), "low");
  EXPECT_STREQ(left.select_node("c:majorGridlines/c:spPr/a:ln/a:solidFill/a:srgbClr/@val")
                   .attribute()
                   .value(),
               "0000FF");
  EXPECT_STREQ(left.child("c:crosses").attribute("val").value(), "max");
  EXPECT_EQ(left.child("c:crossAx").attribute("val").as_int(),
            bottom.child("c:axId").attribute("val").as_int());
  EXPECT_STREQ(
      xml.select_node("//c:plotArea/c:spPr/a:solidFill/a:srgbClr/@val").attribute().value(),
      "000000");

  struct Legend {
    int32_t code;
    const char* position;
  };
  const Legend legends[] = {{kXlLegendPositionBottom, "b"},
                            {kXlLegendPositionLeft, "l"},
                            {kXlLegendPositionRight, "r"},
                            {kXlLegendPositionTop, "t"},
                            {kXlLegendPositionCorner, "tr"}};
  for (const Legend& legend : legends) {
    chart_->Legend().SetPosition(legend.code);
    EXPECT_STREQ(Select("//c:legend/c:legendPos").attribute("val").value(), legend.position);
  }
  chart_->SetHasLegend(false);
  chart_->SetHasTitle(false);
  EXPECT_FALSE(Select("//c:legend"));
  EXPECT_STREQ(Select("//c:chart/c:dispBlanksAs").attribute("val").value(), "gap");
  // One series and no title: the series name must not turn into a title.
  EXPECT_EQ(Select("//c:autoTitleDeleted").attribute("val").as_int(), 1);
}

// Values the file cannot hold fall back to automatic instead of making a
// chart the spreadsheet refuses.
TEST_F(ChartPartTest, OddValuesStayWithinTheFileFormat) {
  Series& series = AddSeries();
  series.SetMarkerSize(500);
  Axis& x = chart_->Axes(kXlCategory);
  x.SetMinimumScale(std::numeric_limits<double>::quiet_NaN());
  x.SetMaximumScale(std::numeric_limits<double>::infinity());
  x.SetMajorUnit(std::numeric_limits<double>::infinity());
  chart_->Axes(kXlValue).SetCrossesAt(std::numeric_limits<double>::quiet_NaN());
  NumberTexts numbers;
  const std::string part = WriteChartPart(*chart_, numbers);
  EXPECT_EQ(part.find("NaN"), std::string::npos);
  EXPECT_EQ(part.find("INF"), std::string::npos);
  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(part.c_str()));
  EXPECT_EQ(xml.select_node("//c:ser/c:marker/c:size/@val").attribute().as_int(), 72);
  EXPECT_FALSE(xml.select_node("//c:valAx[c:axPos/@val='b']/c:scaling/c:min"));
  EXPECT_FALSE(xml.select_node("//c:valAx[c:axPos/@val='b']/c:majorUnit"));
  EXPECT_STREQ(xml.select_node("//c:valAx[c:axPos/@val='b']/c:crosses/@val").attribute().value(),
               "autoZero");
  if (const auto why = testing::SchemaValidationUnavailable()) GTEST_SKIP() << *why;
  EXPECT_EQ(testing::ValidateAgainstSchemas({{"xl/charts/chart1.xml", part}}), "");
}

TEST(ChartPartValuesTest, CodesAndReferences) {
  EXPECT_EQ(HexColor(RgbColor(255, 0, 0)), "FF0000");
  EXPECT_EQ(HexColor(RgbColor(0, 255, 255)), "00FFFF");
  EXPECT_EQ(HexColor(RgbColor(18, 52, 86)), "123456");
  const std::pair<int32_t, int64_t> widths[] = {
      {kXlHairline, 3175}, {kXlThin, 12700}, {kXlMedium, 25400}, {kXlThick, 38100}, {7, 12700}};
  for (const auto& [weight, emu] : widths) EXPECT_EQ(LineWidthEmu(weight), emu) << weight;
  EXPECT_EQ(MarkerSymbol(kXlMarkerStyleDiamond, 3), "diamond");
  EXPECT_EQ(MarkerSymbol(kXlMarkerStyleStar, 0), "star");
  EXPECT_EQ(MarkerSymbol(kXlMarkerStyleNone, 0), "none");
  EXPECT_EQ(MarkerSymbol(kXlMarkerStyleAutomatic, 1), "square");
  EXPECT_EQ(MarkerSymbol(kXlMarkerStyleAutomatic, 8), "square");  // the cycle repeats
  EXPECT_EQ(TickLabelPosition(kXlTickLabelPositionHigh), "high");
  EXPECT_EQ(TickLabelPosition(kXlTickLabelPositionNone), "none");
  EXPECT_EQ(TickLabelPosition(12345), "nextTo");

  const CellArea column{12, 6, 412, 6};
  const std::pair<const char*, const char*> references[] = {
      {"Sheet1", "Sheet1!$F$12:$F$412"}, {"Raw Data", "'Raw Data'!$F$12:$F$412"},
      {"It's", "'It''s'!$F$12:$F$412"},  {"A1", "'A1'!$F$12:$F$412"},  // reads as a cell
      {"R1C1", "'R1C1'!$F$12:$F$412"},  // reads as a cell the other way
      {"R", "'R'!$F$12:$F$412"},         {"Report", "Report!$F$12:$F$412"},
      {"2007", "'2007'!$F$12:$F$412"},
  };
  for (const auto& [sheet, reference] : references) {
    EXPECT_EQ(SheetReference(sheet, column), reference);
  }
}

}  // namespace
}  // namespace z4400
