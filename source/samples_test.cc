// Reads every made-up instrument file of the test cases through the
// SourceReader and checks what it returns against the file itself, parsed
// here independently (a plain walk over the XML elements, a plain split of
// the CSV lines) and interpreted with the reading rules stated in the test.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "source/source_reader.h"
#include "testing/instrument_cases.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

using ParameterMap = std::map<std::string, std::string>;

struct ExpectedTrace {
  std::string unit;
  std::vector<std::optional<std::string>> levels;  // by point; nullopt when missing
};

struct ExpectedScreen {
  ParameterMap parameters;
  std::map<int, ParameterMap> markers;
  std::vector<ExpectedTrace> traces;
};

struct ExpectedFile {
  std::string model, date, title, nbctxt, tp;
  std::vector<ExpectedScreen> screens;
  int table_count = 0;
};

double Number(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

ParameterMap Parameters(pugi::xml_node element) {
  ParameterMap map;
  for (pugi::xml_node p : element.children("Parameter")) {
    map.emplace(p.attribute("Id").value(), p.attribute("Value").value());
  }
  return map;
}

ExpectedFile ParseXml(const std::string& text) {
  pugi::xml_document doc;
  EXPECT_TRUE(doc.load_string(text.c_str()));
  const pugi::xml_node root = doc.document_element();
  ExpectedFile file;
  file.model = root.attribute("Model").value();
  file.date = std::string(root.attribute("Year").value()) + "-" + root.attribute("Month").value() +
              "-" + root.attribute("Day").value();
  const ParameterMap top = Parameters(root);
  file.title = top.at("TITLE");
  file.nbctxt = top.at("NBCTXT");
  file.tp = top.at("TP");
  const int points = static_cast<int>(Number(file.tp));
  for (pugi::xml_node context : root.children("Context")) {
    ExpectedScreen screen;
    screen.parameters = Parameters(context);
    for (pugi::xml_node marker : context.children("Marker")) {
      screen.markers[marker.attribute("Nb").as_int()] = Parameters(marker);
    }
    for (pugi::xml_node trace : context.children("Trace")) {
      const pugi::xml_node table = trace.child("Table");
      ExpectedTrace expected;
      expected.unit = table.attribute("Unit").value();
      expected.levels.resize(static_cast<size_t>(points));
      for (pugi::xml_node item : table.children("Item")) {
        expected.levels.at(static_cast<size_t>(item.attribute("Point").as_int())) =
            item.attribute("Lvl").value();
      }
      screen.traces.push_back(expected);
      ++file.table_count;
    }
    file.screens.push_back(screen);
  }
  return file;
}

std::vector<std::vector<std::string>> SplitCsv(const std::string& text) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> cells;
    std::istringstream fields(line);
    std::string cell;
    while (std::getline(fields, cell, ',')) cells.push_back(cell);
    cells.resize(4);
    rows.push_back(cells);
  }
  return rows;
}

ExpectedFile ParseCsv(const std::string& text) {
  const auto rows = SplitCsv(text);
  ExpectedFile file;
  for (const auto& row : rows) {
    if (row[0] == "MODEL") file.model = row[1];
    if (row[0] == "TITLE") file.title = row[1];
    if (row[0] == "NBCTXT") file.nbctxt = row[1];
    if (row[0] == "TP") file.tp = row[1];
    if (row[0].rfind("DAY", 0) == 0) {
      file.date = row[1].substr(5) + "-" + row[2].substr(6) + "-" + row[0].substr(4);
    }
  }
  ExpectedScreen* screen = nullptr;
  ParameterMap* marker = nullptr;
  ExpectedTrace* trace = nullptr;
  for (const auto& row : rows) {
    if (row[0] == "Context Nb") {
      file.screens.emplace_back();
      screen = &file.screens.back();
      marker = nullptr;
      trace = nullptr;
    } else if (screen == nullptr) {
      continue;
    } else if (row[0] == "Marker Nb") {
      marker = &screen->markers[std::stoi(row[1])];
    } else if (row[0] == "Trace Nb") {
      screen->traces.emplace_back();
      trace = &screen->traces.back();
      marker = nullptr;
      ++file.table_count;
    } else if (trace != nullptr) {
      if (row[0] == "UNIT") trace->unit = row[3];
      if (row[0] == "Point") trace->levels.push_back(row[3]);
    } else if (marker != nullptr) {
      marker->emplace(row[0], row[1]);
    } else {
      screen->parameters.emplace(row[0], row[1]);
    }
  }
  return file;
}

/// The level unit and vertical-scale Id of a digital function.
std::pair<std::string, std::string> DigitalUnit(const std::string& function) {
  if (function == "Freq-Time") return {"Hz", "DGT_VERTSCALE_FREQ"};
  if (function == "Phase-Time") return {"deg", "DGT_VERTSCALE_PHASE"};
  if (function == "Power-Time") return {"dBm", "DGT_VERTSCALE_POWER"};
  if (function == "IQ-Time") return {"V", "DGT_VERTSCALE_IQ"};
  if (function == "PartialFFT") return {"dBm", "DGT_VERTSCALE_PARTFFT"};
  return {"deg", "DGT_VERTSCALE_PHAFREQ"};
}

void ExpectNear(double actual, double expected, const std::string& what) {
  EXPECT_NEAR(actual, expected, 1e-9 * std::max(1.0, std::fabs(expected))) << what;
}

/// Reads the whole file with `reader` and compares it with `file`.
void CheckFile(SourceReader& reader, const ExpectedFile& file, const std::string& name) {
  SCOPED_TRACE(name);
  GeneralInfo info;
  ASSERT_EQ(reader.ReadGeneralInfo(info), 0) << reader.ErrorText();
  EXPECT_EQ(info.Model, file.model);
  EXPECT_EQ(info.Date, file.date);
  EXPECT_EQ(info.Title, file.title);
  EXPECT_EQ(info.ContextCount, static_cast<int>(Number(file.nbctxt)));
  EXPECT_EQ(info.TracePoints, static_cast<int>(Number(file.tp)));
  EXPECT_EQ(info.TraceTableCount, file.table_count);
  EXPECT_EQ(info.FixedA, 14592);
  EXPECT_EQ(info.FixedB, 1792);
  EXPECT_EQ(info.FixedC, 10);
  ASSERT_EQ(info.ContextCount, static_cast<int>(file.screens.size()));
  const int points = info.TracePoints;

  for (int s = 0; s < info.ContextCount; ++s) {
    SCOPED_TRACE("screen " + std::to_string(s));
    const ExpectedScreen& expected = file.screens[static_cast<size_t>(s)];
    const ParameterMap& p = expected.parameters;
    auto number = [&](const char* id) { return Number(p.at(id)); };
    ScreenInfo screen;
    ASSERT_EQ(reader.ReadScreenConfig(s, screen), 0);
    const bool digital = p.at("DGT_EXE") == "ON";
    EXPECT_EQ(screen.CenterFrequency, number("CF"));
    EXPECT_EQ(screen.Span, number("SP"));
    EXPECT_EQ(screen.StartFrequency, number("FA"));
    EXPECT_EQ(screen.StopFrequency, number("FB"));
    EXPECT_EQ(screen.SweepTime, number("SW") / 1000000);
    EXPECT_EQ(screen.ResolutionBandwidth, number("RB"));
    EXPECT_EQ(screen.VideoBandwidth, number("VB"));
    EXPECT_EQ(screen.FrequencyOffset, p.at("FOON") == "ON" ? number("FO") : 0);
    EXPECT_EQ(screen.ReferenceOffset, p.at("ROON") == "ON" ? number("RO") : 0);
    EXPECT_EQ(screen.DualChannelImpedance, static_cast<int>(number("OHMDUALCH")));
    EXPECT_EQ(screen.LogScale, p.at("VS") == "LOG" ? -1 : 0);
    if (digital) {
      const auto [unit, scale_id] = DigitalUnit(p.at("DGT_MEASFUNCTION"));
      EXPECT_EQ(screen.LevelUnit, unit);
      EXPECT_EQ(screen.VerticalScale, number(scale_id.c_str()));
    } else {
      EXPECT_EQ(screen.LevelUnit, p.at("AUNITS"));
      EXPECT_EQ(screen.VerticalScale, number("DD"));
    }
    if (number("RL") > 0 || (screen.LevelUnit != "Volts" && screen.LevelUnit != "Watts")) {
      EXPECT_EQ(screen.ReferenceLevel, number("RL"));
    }
    const XAxisKind kind = reader.SetTimeAxis(screen, s);
    EXPECT_EQ(kind.IsTime, screen.Span == 0 ? -1 : 0);
    const MarkersInfo markers = reader.ReadMarkers(s);
    int16_t log_x_in_use = 0;
    const XAxisScale scale = reader.SetXScaleType(s, screen, XScaleSettings{}, log_x_in_use);
    EXPECT_EQ(scale.LogX, p.at("HS") == "LOG" ? -1 : 0);

    const int32_t trace_count = reader.ScreenTraceCount(s);
    ASSERT_EQ(trace_count, static_cast<int>(expected.traces.size()));
    const XAxisValues x = reader.XAxisData(s);
    ASSERT_EQ(x.Values.size(), static_cast<size_t>(points));
    std::vector<TraceData> traces;
    for (int t = 0; t < trace_count; ++t) {
      const ExpectedTrace& want = expected.traces[static_cast<size_t>(t)];
      const TraceData trace = reader.ReadTraceY(s, t);
      EXPECT_EQ(trace.Unit, want.unit);
      EXPECT_EQ(trace.ScreenUnit, screen.LevelUnit);
      ASSERT_EQ(trace.Values.size(), static_cast<size_t>(points));
      EXPECT_EQ(trace.Copy, trace.Values);
      for (int i = 0; i < points; ++i) {
        const auto& level = want.levels[static_cast<size_t>(i)];
        EXPECT_EQ(trace.Values[static_cast<size_t>(i)], level ? Number(*level) : -200.0)
            << "trace " << t << " point " << i;
      }
      traces.push_back(trace);
    }

    // Marker header and records.
    const int on = static_cast<int>(number("MKRNBON"));
    const bool delta = p.at("MKRDLT") == "ON";
    EXPECT_EQ(markers.DeltaMode, on >= 1 ? (delta ? 2 : 1) : 0);
    EXPECT_EQ(markers.MarkerCount, on - (delta ? 1 : 0));
    EXPECT_EQ(markers.SelectedMarker, p.at("MKRSEL") == "Ref" ? 0 : number("MKRSEL"));
    EXPECT_EQ(markers.FixedMarker, p.at("MKRFIX") == "ON" ? -1 : 0);
    const bool time_function = digital && p.at("DGT_MEASFUNCTION") != "PartialFFT" &&
                               p.at("DGT_MEASFUNCTION") != "Phase-Freq";
    for (int m = 0; m < kMarkerSlots; ++m) {
      const MarkerRecord& record = markers.Markers[static_cast<size_t>(m)];
      const auto found = expected.markers.find(m + 1);
      if (found == expected.markers.end()) {
        EXPECT_EQ(record.Screen, -1) << "slot " << m;
        EXPECT_EQ(record.On, 0);
        continue;
      }
      const ParameterMap& mp = found->second;
      SCOPED_TRACE("marker " + std::to_string(m + 1));
      EXPECT_EQ(record.Screen, s);
      EXPECT_EQ(record.On, mp.at("MKRON") == "ON" ? -1 : 0);
      EXPECT_EQ(record.TraceName, mp.at("MKRTRACE"));
      EXPECT_EQ(record.Trace, std::string("ABC").find(mp.at("MKRTRACE")));
      EXPECT_EQ(record.PointIndex, static_cast<int>(Number(mp.at("MKRINDEX"))));
      EXPECT_EQ(record.PosY, Number(mp.at("MKRPOSY")));
      EXPECT_EQ(record.PosYDisplay, Number(mp.at("MKRPOSYGUI")));
      EXPECT_EQ(record.PosX, Number(mp.at("MKRPOSX")) / (time_function ? 1000000 : 1));
      // Markers sit on real points: the X of their point, the level of
      // their trace there.
      const auto index = static_cast<size_t>(record.PointIndex);
      ASSERT_LT(index, x.Values.size());
      ExpectNear(x.Values[index], Number(mp.at("MKRPOSX")), "X of the marker's point");
      ASSERT_GE(record.Trace, 0);
      ASSERT_LT(record.Trace, trace_count);
      EXPECT_EQ(traces[static_cast<size_t>(record.Trace)].Values[index], record.PosY);
    }
  }
}

TEST(SamplesTest, EveryAcceptedSampleReadsAsTheFileStates) {
  testing::ScratchDir scratch;
  int checked = 0;
  for (const testing::InstrumentCase& sample : testing::InstrumentCases()) {
    if (!sample.converts) continue;
    const std::filesystem::path path = testing::WriteInstrumentCase(scratch.path(), sample.name);
    SourceReader reader;
    ASSERT_EQ(reader.OpenSource(path.string()), 0) << sample.name;
    const std::string text = ReadFile(path);
    CheckFile(reader, path.extension() == ".xml" ? ParseXml(text) : ParseCsv(text), sample.name);
    ++checked;
  }
  EXPECT_GE(checked, 8);
}

TEST(SamplesTest, RejectedModelIsNotConverted) {
  testing::ScratchDir scratch;
  const std::filesystem::path path =
      testing::WriteInstrumentCase(scratch.path(), "rejected_model.xml");
  SourceReader reader;
  ASSERT_EQ(reader.OpenSource(path.string()), 0);
  GeneralInfo info;
  EXPECT_EQ(reader.ReadGeneralInfo(info), 1);
  EXPECT_EQ(reader.ErrorText(), "Not MQD data.");
  EXPECT_EQ(info.Model, "Z4450");
  EXPECT_EQ(info.SourcePath, path.string());
  EXPECT_TRUE(info.Title.empty());
}

TEST(SamplesTest, NotesOfTheSamples) {
  testing::ScratchDir scratch;
  auto open = [&](const char* name, GeneralInfo& info) {
    auto reader = std::make_unique<SourceReader>();
    EXPECT_EQ(reader->OpenSource(testing::WriteInstrumentCase(scratch.path(), name).string()), 0);
    EXPECT_EQ(reader->ReadGeneralInfo(info), 0);
    return reader;
  };
  {
    SCOPED_TRACE("linear_delta_gaps.xml: missing items read -200");
    GeneralInfo info;
    auto reader = open("linear_delta_gaps.xml", info);
    ScreenInfo screen;
    ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
    ASSERT_EQ(reader->ScreenTraceCount(1), 2);
    const TraceData a = reader->ReadTraceY(1, 0);
    const TraceData b = reader->ReadTraceY(1, 1);
    for (const size_t i : {5, 120}) {
      EXPECT_EQ(a.Values[i], -200) << i;
      EXPECT_NE(b.Values[i], -200) << "trace B has point " << i;
    }
    EXPECT_NE(a.Values[4], -200);
    EXPECT_NE(a.Values[6], -200);
    EXPECT_EQ(screen.LevelUnit, "Volts");
  }
  {
    SCOPED_TRACE("mixed_screens.xml: zero span and Freq-Time");
    GeneralInfo info;
    auto reader = open("mixed_screens.xml", info);
    ScreenInfo screen;
    ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
    EXPECT_EQ(screen.Span, 0);
    EXPECT_DOUBLE_EQ(screen.SweepTime, 0.004615);
    EXPECT_EQ(reader->SetTimeAxis(screen, 1).IsTime, -1);
    EXPECT_DOUBLE_EQ(reader->TimeAxis(1).Stop, 0.004615);
    EXPECT_DOUBLE_EQ(reader->XAxisData(1).Values.back(), 0.004615);
    ASSERT_EQ(reader->ReadScreenConfig(2, screen), 0);
    EXPECT_EQ(screen.LevelUnit, "Hz");
    EXPECT_EQ(screen.LevelUnitCode, 7);
    EXPECT_EQ(screen.VerticalScale, 25000);
    EXPECT_EQ(reader->Digital(2).MeasurementFunction, "Freq-Time");
    EXPECT_EQ(reader->XAxisData(2).Values.back(), 577);  // microseconds
  }
  {
    SCOPED_TRACE("log_x_axis.csv: logarithmic X with a negative start");
    GeneralInfo info;
    auto reader = open("log_x_axis.csv", info);
    ScreenInfo screen;
    int16_t log_x_in_use = 0;
    ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
    XAxisScale scale = reader->SetXScaleType(0, screen, XScaleSettings{}, log_x_in_use);
    EXPECT_EQ(scale.LogX, -1);
    EXPECT_EQ(scale.DataMin, 9000);
    EXPECT_EQ(scale.AxisMin, 1000);  // the power of ten below 9000
    EXPECT_EQ(scale.AxisMax, 1e9);   // version 16: the data maximum itself
    EXPECT_EQ(scale.StartNegative, 0);
    ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
    scale = reader->SetXScaleType(1, screen, XScaleSettings{}, log_x_in_use);
    EXPECT_EQ(scale.DataMin, -10000000);
    EXPECT_EQ(scale.AxisMin, 1000);  // the X scale threshold, log-X option on
    EXPECT_EQ(scale.StartNegative, -1);
    EXPECT_EQ(screen.StartNegative, -1);
    EXPECT_EQ(log_x_in_use, 0);  // only set with the log-X option off
  }
  {
    SCOPED_TRACE("linear_delta_gaps.xml: linear scales");
    GeneralInfo info;
    auto reader = open("linear_delta_gaps.xml", info);
    ScreenInfo screen;
    ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
    EXPECT_EQ(screen.LevelUnit, "Watts");
    EXPECT_EQ(screen.LevelUnitCode, 5);
    // 10 mW is 10 dBm, which is 10^(10/20 - 0.6505149) V at 50 ohms.
    EXPECT_NEAR(screen.ScaledReferenceLevel, std::pow(10.0, 0.5 - 0.6505149), 1e-12);
    EXPECT_EQ(reader->Vertical(0).VerticalUnit, "mV");
    EXPECT_NEAR(reader->Vertical(0).VerticalFactor, 1000, 1e-9);
    ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
    EXPECT_EQ(screen.LevelUnitCode, 6);
    EXPECT_EQ(screen.DualChannelImpedance, 75);
    EXPECT_NEAR(screen.ScaledReferenceLevel, 0.5, 1e-6);  // volts through dBm and back
  }
  {
    SCOPED_TRACE("power_phase_no_markers.xml: Power-Time and Phase-Freq, no marker");
    GeneralInfo info;
    auto reader = open("power_phase_no_markers.xml", info);
    ScreenInfo screen;
    ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
    EXPECT_EQ(screen.LevelUnit, "dBm");
    EXPECT_EQ(screen.LevelUnitCode, 9);
    EXPECT_EQ(screen.VerticalScale, 10);
    EXPECT_EQ(reader->XAxisData(0).Values.back(), 577);  // microseconds
    ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
    EXPECT_EQ(screen.LevelUnit, "deg");
    EXPECT_EQ(screen.LevelUnitCode, 12);
    EXPECT_EQ(screen.VerticalScale, 45);
    // A frequency axis: from the start to the stop frequency, in Hz.
    EXPECT_EQ(reader->XAxisData(1).Values.front(), 2397500000);
    EXPECT_EQ(reader->XAxisData(1).Values.back(), 2402500000);
    for (const int s : {0, 1}) {
      const MarkersInfo markers = reader->ReadMarkers(s);
      EXPECT_EQ(markers.DeltaMode, 0) << s;
      EXPECT_EQ(markers.MarkerCount, 0) << s;
    }
  }
}

}  // namespace
}  // namespace z4400
