#include <gtest/gtest.h>

#include "source/source_test_util.h"

namespace z4400 {
namespace {

using testing::CsvHeader;
using testing::CsvText;
using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

std::string XmlMarker(int number, const char* trace, const char* x) {
  return "<Marker Nb=\"" + std::to_string(number) + "\">" +
         XmlParameters({{"MKRON", "ON"},
                        {"MKRTRACE", trace},
                        {"MKRINDEX", "2.5"},
                        {"MKRPOSX", x},
                        {"MKRPOSY", "-8.5"},
                        {"MKRPOSYGUI", "1.25"}}) +
         "</Marker>";
}

TEST(MarkersTest, HeaderFields) {
  struct Case {
    const char* on;
    const char* delta;
    const char* selected;
    const char* fixed;
    int32_t delta_mode, count, selected_marker;
    int16_t fixed_marker;
  };
  const Case cases[] = {
      {"3", "ON", "Ref", "ON", 2, 2, 0, -1},    {"3", "OFF", "4", "OFF", 1, 3, 4, 0},
      {"0", "ON", "ref", "on", 0, -1, 0, 0},    {"", "", "", "", 0, 0, 0, 0},
      {"2.5", "OFF", "2.5", "OFF", 1, 2, 2, 0},
  };
  for (const Case& c : cases) {
    auto reader = OpenText("a.xml", XmlText("<Context Nb=\"0\">" +
                                            XmlParameters({{"MKRNBON", c.on},
                                                           {"MKRDLT", c.delta},
                                                           {"MKRSEL", c.selected},
                                                           {"MKRFIX", c.fixed}}) +
                                            "</Context>"));
    const MarkersInfo info = reader->ReadMarkers(0);
    EXPECT_EQ(info.DeltaMode, c.delta_mode) << c.on << " " << c.delta;
    EXPECT_EQ(info.MarkerCount, c.count) << c.on << " " << c.delta;
    EXPECT_EQ(info.SelectedMarker, c.selected_marker) << c.selected;
    EXPECT_EQ(info.FixedMarker, c.fixed_marker) << c.fixed;
    EXPECT_EQ(info.Reserved, -1);
    EXPECT_EQ(info.Spare, 0);
  }
  auto reader = OpenText("a.xml", XmlText("<Context Nb=\"0\">" +
                                          XmlParameters({{"MKRNBON", "40000"}}) + "</Context>"));
  EXPECT_THROW(reader->ReadMarkers(0), RuntimeFailure);  // a 16-bit overflow
}

TEST(MarkersTest, XmlRecords) {
  const std::string body = "<Context Nb=\"0\">" + XmlMarker(1, "A", "1000") +
                           XmlMarker(3, "C", "2000") + XmlMarker(4, "D", "3000") +
                           XmlMarker(11, "B", "1") + "</Context>";
  auto reader = OpenText("a.xml", XmlText(body));
  const MarkersInfo info = reader->ReadMarkers(0);
  const MarkerRecord& first = info.Markers[0];
  EXPECT_EQ(first.On, -1);
  EXPECT_EQ(first.Trace, 0);
  EXPECT_EQ(first.TraceName, "A");
  EXPECT_EQ(first.Screen, 0);
  EXPECT_EQ(first.PointIndex, 2);  // 2.5 rounds half to even
  EXPECT_EQ(first.PosX, 1000);
  EXPECT_EQ(first.PosY, -8.5);
  EXPECT_EQ(first.PosYDisplay, 1.25);
  EXPECT_EQ(info.Markers[1].Screen, -1);  // marker 2 absent: blank
  EXPECT_EQ(info.Markers[2].Trace, 2);
  EXPECT_EQ(info.Markers[3].Trace, -1);  // "D" leaves the trace unidentified
  EXPECT_EQ(info.Markers[3].TraceName, "D");
  for (const size_t slot : {10, 11}) {  // marker 11 is never read
    EXPECT_EQ(info.Markers[slot].Screen, -1);
    EXPECT_EQ(info.Markers[slot].TraceName, "");
  }
  EXPECT_EQ(reader->MarkerRow(0)[2].PosX, 2000);
}

TEST(MarkersTest, DigitalTimeFunctionsHoldMicroseconds) {
  for (const char* function : {"Power-Time", "IQ-Time", "PartialFFT", "Phase-Freq"}) {
    const std::string body =
        XmlParameters({{"TP", "3"}}) + "<Context Nb=\"0\">" +
        XmlParameters({{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", function}, {"VS", "LOG"}}) +
        XmlMarker(1, "A", "1500") + "</Context>";
    auto reader = OpenText("a.xml", XmlText(body));
    ScreenInfo screen;
    ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
    const bool frequency =
        std::string(function) == "PartialFFT" || std::string(function) == "Phase-Freq";
    EXPECT_DOUBLE_EQ(reader->ReadMarkers(0).Markers[0].PosX, frequency ? 1500 : 0.0015) << function;
  }
}

TEST(MarkersTest, BlankSlotsKeepTheirTraceName) {
  SourceReader reader;
  ASSERT_EQ(reader.OpenSourceBytes(
                "a.xml", XmlText("<Context Nb=\"0\">" + XmlMarker(1, "B", "1") + "</Context>")),
            0);
  EXPECT_EQ(reader.ReadMarkers(0).Markers[0].TraceName, "B");
  // The next file has no marker 1: the slot is blank but keeps the name.
  ASSERT_EQ(reader.OpenSourceBytes("b.xml", XmlText("<Context Nb=\"0\"/>")), 0);
  const MarkerRecord slot = reader.ReadMarkers(0).Markers[0];
  EXPECT_EQ(slot.Trace, -1);
  EXPECT_EQ(slot.Screen, -1);
  EXPECT_EQ(slot.TraceName, "B");
}

testing::Rows CsvMarker(int number, const char* trace) {
  return {"Marker Nb," + std::to_string(number),
          "MKRON,ON",
          std::string("MKRTRACE,") + trace,
          "MKRINDEX,7",
          "MKRPOSX,95800000",
          "MKRPOSY,95.12",
          "MKRPOSYGUI,95.12"};
}

TEST(MarkersTest, CsvRecordsWithinTheirScreen) {
  testing::Rows rows = CsvHeader("Z4510", 2);
  rows.insert(rows.end(), {"Context Nb,0", "MKRNBON,2", "MKRDLT,OFF", "MKRSEL,Ref", "MKRFIX,OFF"});
  for (const auto& block : {CsvMarker(1, "A"), CsvMarker(2, "B")}) {
    rows.insert(rows.end(), block.begin(), block.end());
  }
  rows.insert(rows.end(), {"Context Nb,1", "MKRNBON,1", "MKRDLT,OFF"});
  const testing::Rows third = CsvMarker(1, "C");
  rows.insert(rows.end(), third.begin(), third.end());
  rows.push_back("end,0");
  auto reader = OpenText("a.csv", CsvText(rows));
  const MarkersInfo first = reader->ReadMarkers(0);
  EXPECT_EQ(first.Markers[0].Trace, 0);
  EXPECT_EQ(first.Markers[1].Trace, 1);
  EXPECT_EQ(first.Markers[1].PosX, 95800000);
  EXPECT_EQ(first.Markers[1].PointIndex, 7);
  EXPECT_EQ(first.Markers[2].Screen, -1);  // screen 1's marker is not screen 0's
  const MarkersInfo second = reader->ReadMarkers(1);
  EXPECT_EQ(second.Markers[0].TraceName, "C");
  EXPECT_EQ(second.Markers[0].Screen, 1);
  EXPECT_EQ(second.MarkerCount, 1);
  EXPECT_EQ(second.SelectedMarker, 0);  // "MKRSEL" missing on the last screen reads 0
}

TEST(MarkersTest, CsvMarkerWithoutItsRowsStopsTheRead) {
  testing::Rows rows = CsvHeader("Z4510", 1);
  rows.push_back("Context Nb,0");
  const testing::Rows good = CsvMarker(1, "A");
  rows.insert(rows.end(), good.begin(), good.end());
  rows.insert(rows.end(), {"Marker Nb,2", "MKRON,ON", "MKRTRACE,B", "end,0"});
  auto reader = OpenText("a.csv", CsvText(rows));
  EXPECT_THROW(reader->ReadMarkers(0), RuntimeFailure);
  // Marker 1, read before the failure, stays in the table.
  EXPECT_EQ(reader->MarkerRow(0)[0].Screen, 0);
  EXPECT_EQ(reader->MarkerRow(0)[0].TraceName, "A");
}

}  // namespace
}  // namespace z4400
