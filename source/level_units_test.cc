#include "source/level_units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace z4400 {
namespace {

TEST(LevelConverterTest, ConvertsThroughDbm) {
  struct Case {
    int ohms;
    double value;
    const char* from;
    const char* to;
    double expected;
  };
  const double kVoltsAt0Dbm50 = std::pow(10.0, -0.6505149);
  const double kVoltsAt0Dbm75 = std::pow(10.0, -0.562469);
  const Case cases[] = {
      {50, 0, "dBm", "Volts", kVoltsAt0Dbm50},
      {75, 0, "dBm", "Volts", kVoltsAt0Dbm75},
      {50, 47, "dBmV", "dBm", 0},
      {75, 47, "dBmV", "dBm", -1.75},
      {74, 47, "dBmV", "dBm", 0},  // only 75 selects the 75-ohm formulas
      {76, 47, "dBmV", "dBm", 0},
      {50, 107, "dBuV", "dBm", 0},
      {75, 113, "dBuVemf", "dBm", -1.75},
      {50, 90, "dBpW", "dBm", 0},
      {75, 90, "dBpW", "dBm", 0},  // dBpW has no 75-ohm extra
      {50, -10, "dBm", "dBmV", 37},
      {75, -10, "dBm", "dBmV", 38.75},
      {50, 0, "dBm", "dB\uFF75V", 107},
      {75, 0, "dBm", "dB\uFF75Vemf", 114.75},
      {50, 5, "dBm", "dBuV", 0},  // out of dBm the micro unit is spelt with ｵ
      {50, 5, "dBm", "dBuVemf", 0},
      {50, 5, "dB\uFF75V", "dBm", 0},  // and into dBm with u
      {50, 5, "dBm", "furlongs", 0},
      {50, 5, "", "dBm", 0},
      {50, 10, "dBm", "Watts", 0.01},
      {50, 1, "Watts", "dBm", 30},
      {75, 1, "Watts", "dBm", 30},
      {50, 1, "Volts", "dBm", 13.01029},
      {75, 1, "Volts", "dBm", 11.24938},
  };
  for (const Case& c : cases) {
    LevelConverter converter;
    converter.SetImpedance(static_cast<int16_t>(c.ohms));
    const ConvertedLevel result = converter.ConvertLevel(c.value, c.from, c.to);
    EXPECT_NEAR(result.Value, c.expected, 1e-12)
        << c.value << " " << c.from << " -> " << c.to << " at " << c.ohms << " ohms";
  }
}

TEST(LevelConverterTest, NonPositiveVoltsAndWattsBecomeTheLevelOfZeroDbm) {
  LevelConverter converter;
  converter.SetImpedance(50);
  const ConvertedLevel watts = converter.ConvertLevel(-10, "Watts", "dBm");
  EXPECT_NEAR(watts.Value, 0, 1e-12);
  EXPECT_EQ(watts.Input, converter.FromDbm(0, "Watts"));
  EXPECT_NEAR(watts.Input, 0.001, 1e-15);

  const ConvertedLevel volts = converter.ConvertLevel(0, "Volts", "Volts");
  EXPECT_EQ(volts.Input, std::pow(10.0, -0.6505149));
  EXPECT_NEAR(volts.Value, volts.Input, 1e-6);

  // Other units keep the caller's level as it was.
  EXPECT_EQ(converter.ConvertLevel(-10, "dBm", "Volts").Input, -10);
}

}  // namespace
}  // namespace z4400
