#include "source/whole_source.h"

#include <gtest/gtest.h>

#include "source/source_test_util.h"
#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

using testing::XmlParameters;
using testing::XmlText;

TEST(WholeSourceTest, ReadsEveryScreenOrSaysWhyNot) {
  GeneratorOptions options;
  options.points = 11;
  options.traces = 3;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kLogXNegative, ScreenKind::kPowerTime};
  const GeneratedFile file = GenerateInstrumentFile(options);
  struct Case {
    const char* what;
    const char* name;
    std::string bytes;
    std::string error;
    size_t screens;
  };
  const Case cases[] = {
      {"generated XML", "a.xml", InstrumentXml(file), "", 3},
      {"generated CSV", "a.csv", InstrumentCsv(file), "", 3},
      {"not an instrument file", "a.txt", "",
       "Not an instrument file (the name must end in xml or csv).", 0},
      {"rejected model", "a.xml", XmlText("", "Z4450"), "Not MQD data.", 0},
      {"unknown function on screen 2", "a.xml",
       XmlText(XmlParameters({{"NBCTXT", "2"}, {"TP", "3"}}) + "<Context Nb=\"0\"/>" +
               "<Context Nb=\"1\">" +
               XmlParameters({{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", "Noise"}}) + "</Context>"),
       "Unknown digital measurement function \"Noise\" on screen 2.", 1},
  };
  for (const Case& c : cases) {
    SourceReader reader;
    const WholeSource whole = ReadWholeSourceBytes(reader, c.name, c.bytes);
    EXPECT_EQ(whole.Error, c.error) << c.what;
    ASSERT_EQ(whole.Screens.size(), c.screens) << c.what;
    for (const ScreenRead& screen : whole.Screens) {
      if (c.screens == 3) {
        EXPECT_EQ(screen.TraceCount, 3) << c.what;
        EXPECT_EQ(screen.Traces.size(), 3u) << c.what;
        EXPECT_EQ(screen.X.Values.size(), 11u) << c.what;
      }
    }
  }
}

TEST(WholeSourceTest, TheLogXFlagIsHandedOnOnlyWithTheOptionOn) {
  GeneratorOptions options;
  options.points = 11;
  options.screens = {ScreenKind::kLogXNegative, ScreenKind::kLogXNegative};
  const std::string xml = InstrumentXml(GenerateInstrumentFile(options));
  for (const bool option : {true, false}) {
    XScaleSettings settings;
    settings.LogXOption = option;
    SourceReader reader;
    const WholeSource whole = ReadWholeSourceBytes(reader, "a.xml", xml, settings);
    ASSERT_EQ(whole.Screens.size(), 2u);
    // With the option off, the first screen sets the flag and the driver
    // clears it again before the next screen, which then starts below 0 too.
    EXPECT_EQ(whole.Screens[0].Scale.StartNegative, -1) << option;
    EXPECT_EQ(whole.Screens[1].Scale.StartNegative, -1) << option;
  }
}

}  // namespace
}  // namespace z4400
