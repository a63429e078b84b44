// Generated instrument files, in both layouts, read back into what the
// generator put in them.
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "source/source_test_util.h"
#include "testing/instrument_cases.h"
#include "testing/instrument_generator.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

double Number(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void CheckReadsBack(const GeneratedFile& file, const std::string& name, const std::string& text,
                    bool gaps_apply) {
  SCOPED_TRACE(name);
  SourceReader reader;
  ASSERT_EQ(reader.OpenSourceBytes(name, text), 0);
  GeneralInfo info;
  ASSERT_EQ(reader.ReadGeneralInfo(info), 0) << reader.ErrorText();
  EXPECT_EQ(info.Model, file.model);
  EXPECT_EQ(info.Date, file.year + "-" + file.month + "-" + file.day);
  EXPECT_EQ(info.Title, file.title);
  EXPECT_EQ(info.TracePoints, file.points);
  ASSERT_EQ(info.ContextCount, static_cast<int>(file.screens.size()));
  ScreenInfo screen;
  for (int s = 0; s < info.ContextCount; ++s) {
    const GeneratedScreen& want = file.screens[static_cast<size_t>(s)];
    SCOPED_TRACE(std::string(ScreenKindName(want.kind)));
    ASSERT_EQ(reader.ReadScreenConfig(s, screen), 0);
    EXPECT_EQ(screen.CenterFrequency, Number(ParameterValue(want.parameters, "CF")));
    EXPECT_EQ(screen.StopFrequency, Number(ParameterValue(want.parameters, "FB")));
    EXPECT_EQ(screen.LogScale, ParameterValue(want.parameters, "VS") == "LOG" ? -1 : 0);
    const MarkersInfo markers = reader.ReadMarkers(s);
    int16_t in_use = 0;
    const XAxisScale scale = reader.SetXScaleType(s, screen, XScaleSettings{}, in_use);
    EXPECT_EQ(scale.LogX, ParameterValue(want.parameters, "HS") == "LOG" ? -1 : 0);
    ASSERT_EQ(reader.ScreenTraceCount(s), static_cast<int>(want.traces.size()));
    const XAxisValues x = reader.XAxisData(s);
    for (size_t t = 0; t < want.traces.size(); ++t) {
      const GeneratedTrace& trace = want.traces[t];
      const TraceData read = reader.ReadTraceY(s, static_cast<int>(t));
      EXPECT_EQ(read.Unit, trace.unit);
      ASSERT_EQ(read.Values.size(), trace.values.size());
      for (size_t i = 0; i < trace.values.size(); ++i) {
        const double expected = gaps_apply && !trace.present[i] ? -200.0 : trace.values[i];
        ASSERT_EQ(read.Values[i], expected) << "trace " << t << " point " << i;
      }
    }
    EXPECT_EQ(markers.MarkerCount, static_cast<int>(want.markers.size()) -
                                       (ParameterValue(want.parameters, "MKRDLT") == "ON" ? 1 : 0));
    const bool time_function = ParameterValue(want.parameters, "DGT_EXE") == "ON" &&
                               want.kind != ScreenKind::kPartialFft &&
                               want.kind != ScreenKind::kPhaseFreq;
    for (const GeneratedMarker& marker : want.markers) {
      const MarkerRecord& record = markers.Markers[static_cast<size_t>(marker.number - 1)];
      const auto index = static_cast<size_t>(Number(ParameterValue(marker.parameters, "MKRINDEX")));
      EXPECT_EQ(record.PointIndex, static_cast<int>(index));
      EXPECT_EQ(record.TraceName, ParameterValue(marker.parameters, "MKRTRACE"));
      const double file_x = Number(ParameterValue(marker.parameters, "MKRPOSX"));
      EXPECT_EQ(record.PosX, file_x / (time_function ? 1000000 : 1));
      // The generated marker sits on the X the reader computes for its point.
      EXPECT_NEAR(x.Values[index], file_x, 1e-9 * std::max(1.0, std::fabs(file_x)));
    }
  }
}

TEST(GeneratedFilesTest, EveryScreenKindReadsBackInBothLayouts) {
  const std::vector<ScreenKind> kinds = AllScreenKinds();
  for (size_t first = 0; first < kinds.size(); first += 3) {
    GeneratorOptions options;
    options.seed = 100 + first;
    options.points = 101;
    options.traces = 3;
    options.markers = 4;
    options.delta = first % 2 == 0;
    options.gaps = {5, 50};
    options.screens.assign(kinds.begin() + static_cast<long>(first),
                           kinds.begin() + static_cast<long>(std::min(first + 3, kinds.size())));
    const GeneratedFile file = GenerateInstrumentFile(options);
    CheckReadsBack(file, "gen.xml", InstrumentXml(file), true);
    CheckReadsBack(file, "gen.csv", InstrumentCsv(file), false);
    CheckReadsBack(file, "gen_lf.csv", InstrumentCsv(file, true), false);
  }
}

TEST(GeneratedFilesTest, LargestLayoutAndCsvTraceLimit) {
  GeneratorOptions options;
  options.points = 1001;
  options.traces = 5;
  options.markers = 10;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kZeroSpan, ScreenKind::kFreqTime};
  const GeneratedFile file = GenerateInstrumentFile(options);
  CheckReadsBack(file, "big.xml", InstrumentXml(file), true);
  CheckReadsBack(file, "big.csv", InstrumentCsv(file), true);

  options.points = 3;
  options.traces = 10;
  options.screens = {ScreenKind::kSpectrum};
  const GeneratedFile ten = GenerateInstrumentFile(options);
  CheckReadsBack(ten, "ten.csv", InstrumentCsv(ten), false);
}

TEST(GeneratedFilesTest, TheSeedDecidesTheContent) {
  GeneratorOptions options;
  const std::string a = InstrumentXml(GenerateInstrumentFile(options));
  EXPECT_EQ(a, InstrumentXml(GenerateInstrumentFile(options)));
  options.seed = 2;
  EXPECT_NE(a, InstrumentXml(GenerateInstrumentFile(options)));
  EXPECT_EQ(PlainDecimal(2400000000), "2400000000");
  EXPECT_EQ(PlainDecimal(0.0001025), "0.0001025");
  EXPECT_EQ(PlainDecimal(-10000000), "-10000000");
}

TEST(GeneratedFilesTest, ExamplesAreTheGeneratorsOutput) {
  // The test cases marked as examples are made with the commands of
  // examples/README.md.
  int examples = 0;
  for (const testing::InstrumentCase& example : testing::InstrumentCases()) {
    if (!example.example) continue;
    ++examples;
    const std::filesystem::path path = testing::SourceDir() / "examples" / example.name;
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << path;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    const std::string expected = testing::InstrumentCaseText(example);
    const std::string actual = bytes.str();
    const auto mismatch =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    EXPECT_TRUE(actual == expected)
        << example.name << " differs from the generator's output at byte "
        << (mismatch.first - actual.begin()) << " (sizes " << actual.size() << " and "
        << expected.size() << ")";
    CheckReadsBack(GenerateInstrumentFile(example.options), path.string(), actual,
                   path.extension() == ".xml");
  }
  // And every instrument file of examples/ is one of them.
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(testing::SourceDir() / "examples")) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() != ".xml" && entry.path().extension() != ".csv") continue;
    ++files;
    EXPECT_TRUE(testing::InstrumentCaseNamed(name).example) << name;
  }
  EXPECT_EQ(files, examples);
}

}  // namespace
}  // namespace z4400
