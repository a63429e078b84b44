#include "common/eng_units.h"

#include <cmath>

namespace z4400 {
namespace {

/// Splits off the sign so that the magnitude can be classified.
struct Magnitude {
  double value;
  double sign;
};

Magnitude SplitSign(double value) {
  return value < 0 ? Magnitude{-value, -1.0} : Magnitude{value, 1.0};
}

}  // namespace

EngValue MakeEngHz(double value) {
  static const std::array<const char*, 4> kUnits = {"Hz", "kHz", "MHz", "GHz"};
  if (value == 0) return {0, "Hz"};
  const Magnitude m = SplitSign(value);
  // Two natural logarithms and their quotient, each rounded to a double,
  // then a third of it: this is what keeps 10^9 at 8.999999999999998.
  volatile double decades = std::log(m.value) / std::log(10.0);
  volatile double thousands = decades / 3;
  int k = static_cast<int>(std::floor(thousands));
  if (k < 0) k = 0;
  if (k > 3) k = 3;
  return {(m.sign * m.value) / std::pow(10.0, 3 * k), kUnits[k]};
}

EngValue MakeEngSec(double value) {
  if (value == 0) return {0, "sec"};
  const Magnitude m = SplitSign(value);
  if (m.value >= 1) return {value, "sec"};
  if (m.value >= 0.001) return {m.sign * m.value * 1000, "msec"};
  return {m.sign * m.value * 1000000, "usec"};
}

EngValue MakeEngV(double value) {
  if (value == 0) return {0, "V"};
  const Magnitude m = SplitSign(value);
  if (m.value >= 1) return {value, "V"};
  if (m.value > 0.001) return {m.sign * m.value * 1000, "mV"};
  if (m.value > 0.000001) return {m.sign * m.value * 1000000, "uV"};
  return {m.sign * m.value * 1000000000, "nV"};
}

EngValue MakeEngW(double value) {
  if (value == 0) return {0, "W"};
  const Magnitude m = SplitSign(value);
  if (m.value >= 1) return {value, "W"};
  if (m.value > 0.001) return {m.sign * m.value * 1000, "mW"};
  // The micro/nano test compares with a million, not a millionth, so every
  // level of 1 mW or less lands in "nW"; reports have always shown it so.
  if (m.value > 1000000) return {m.sign * m.value * 1000000, "uW"};
  return {m.sign * m.value * 1000000000, "nW"};
}

UnitNameTable InitUnitNames() {
  return {"dBm", "dBmV", "dBuV", "dBuVemf", "dBpW", "W", "V", "Hz", "degree", "mV", "dB"};
}

}  // namespace z4400
