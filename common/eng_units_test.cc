#include "common/eng_units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace z4400 {
namespace {

struct Case {
  double value;
  double scaled;
  const char* unit;
};

void ExpectConversions(EngValue (*convert)(double), const char* name,
                       std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    const EngValue result = convert(c.value);
    EXPECT_EQ(result.Unit, c.unit) << name << "(" << c.value << ")";
    EXPECT_NEAR(result.Scaled, c.scaled, 1e-9 * std::max(1.0, std::fabs(c.scaled)))
        << name << "(" << c.value << ")";
  }
}

TEST(EngUnitsTest, Hertz) {
  ExpectConversions(MakeEngHz, "MakeEngHz",
                    {
                        {0, 0, "Hz"},
                        {0.5, 0.5, "Hz"},
                        {999.9999, 999.9999, "Hz"},
                        // Exact powers of 1000 stay one prefix short.
                        {1000, 1000, "Hz"},
                        {1500, 1.5, "kHz"},
                        {1000000, 1000, "kHz"},
                        {1000000000, 1000, "MHz"},
                        {2000000000, 2, "GHz"},
                        {2400000000, 2.4, "GHz"},
                        {1e12, 1000, "GHz"},
                        {5e15, 5000000, "GHz"},  // nothing above GHz
                        {-1500, -1.5, "kHz"},
                        {-0.001, -0.001, "Hz"},
                    });
}

TEST(EngUnitsTest, Seconds) {
  ExpectConversions(MakeEngSec, "MakeEngSec",
                    {
                        {0, 0, "sec"},
                        {2, 2, "sec"},
                        {1, 1, "sec"},
                        {0.001, 1, "msec"},  // exactly 1 ms is in msec
                        {0.004615, 4.615, "msec"},
                        {0.0005, 500, "usec"},
                        {1e-9, 0.001, "usec"},  // nothing below usec
                        {-0.02, -20, "msec"},
                        {-3, -3, "sec"},
                    });
}

TEST(EngUnitsTest, Volts) {
  ExpectConversions(MakeEngV, "MakeEngV",
                    {
                        {0, 0, "V"},
                        {1, 1, "V"},
                        {0.5, 500, "mV"},
                        {0.001, 1000, "uV"},  // exactly 1 mV is in uV
                        {0.0011, 1.1, "mV"},
                        {0.000001, 1000, "nV"},  // exactly 1 uV is in nV
                        {0.0000005, 500, "nV"},
                        {0.00002, 20, "uV"},
                        {-0.25, -250, "mV"},
                    });
}

TEST(EngUnitsTest, Watts) {
  ExpectConversions(MakeEngW, "MakeEngW",
                    {
                        {0, 0, "W"},
                        {2, 2, "W"},
                        {0.5, 500, "mW"},
                        {0.01, 10, "mW"},
                        // From 1 mW down everything is nW; "uW" is never produced.
                        {0.001, 1000000, "nW"},
                        {0.0005, 500000, "nW"},
                        {0.0000005, 500, "nW"},
                        {-0.5, -500, "mW"},
                    });
}

TEST(EngUnitsTest, UnitNamesByCode) {
  const UnitNameTable names = InitUnitNames();
  const char* expected[] = {"dBm", "dBmV", "dBuV",   "dBuVemf", "dBpW", "W",
                            "V",   "Hz",   "degree", "mV",      "dB"};
  for (size_t code = 0; code < names.size(); ++code) {
    EXPECT_EQ(names[code], expected[code]) << "code " << code;
  }
}

}  // namespace
}  // namespace z4400
