// Engineering-unit formatting: a value in hertz, seconds, volts or watts
// scaled into a prefixed unit ("MHz", "msec", "uV", "mW") for the report
// cells, and the table of level-unit names shown by unit code.
#ifndef Z4400_COMMON_ENG_UNITS_H_
#define Z4400_COMMON_ENG_UNITS_H_

#include <array>
#include <string>

namespace z4400 {

/// A value scaled to its display unit and the unit's text.
struct EngValue {
  double Scaled = 0;
  std::string Unit;
};

/// Hertz by decades of thousands ("Hz", "kHz", "MHz", "GHz"). The decade is
/// taken through natural logarithms, so exact powers of 1000 stay one prefix
/// short (1 MHz shows as 1000 "kHz"), as the reports have always shown them.
EngValue MakeEngHz(double value);
/// Seconds: "sec" from 1 s, "msec" from 1 ms, "usec" below.
EngValue MakeEngSec(double value);
/// Volts: "V" from 1 V, "mV" above 1 mV, "uV" above 1 uV, "nV" below.
EngValue MakeEngV(double value);
/// Watts: "W" from 1 W, "mW" above 1 mW, "nW" for 1 mW and below ("uW" is
/// never produced).
EngValue MakeEngW(double value);

/// Level-unit names by level-unit code 0..10.
using UnitNameTable = std::array<std::string, 11>;

/// The level-unit name table: 0 "dBm" … 10 "dB".
UnitNameTable InitUnitNames();

}  // namespace z4400

#endif  // Z4400_COMMON_ENG_UNITS_H_
