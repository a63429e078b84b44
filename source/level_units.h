// Level unit conversion: a signal level from one of the instrument's level
// units into another, through dBm, at the input impedance of the screen
// being read (75 ohms, or anything else treated as 50 ohms).
#ifndef Z4400_SOURCE_LEVEL_UNITS_H_
#define Z4400_SOURCE_LEVEL_UNITS_H_

#include <cstdint>
#include <string_view>

namespace z4400 {

/// The result of a level conversion and the input level as it stands after
/// it: a volts or watts level of 0 or below is first replaced by the level
/// of 0 dBm, and the caller keeps that replacement (a reference level of
/// 0 "Volts" becomes 0.2236… V in the screen record).
struct ConvertedLevel {
  double Value = 0;  ///< the level in the target unit
  double Input = 0;  ///< the input level, possibly replaced
};

/// Converts levels between "dBm", "dBmV", "dBuV", "dBuVemf", "dBpW", "Watts"
/// and "Volts". Unknown units give 0, never an error. Into dBm the micro
/// units are spelt "dBuV"/"dBuVemf"; out of dBm they are spelt with the
/// half-width katakana "ｵ" ("dBｵV", "dBｵVemf"), as a Japanese code page shows
/// the instrument's micro sign: the two directions differ on purpose.
class LevelConverter {
 public:
  /// The impedance of the screen being read; only 75 selects the 75-ohm
  /// formulas.
  void SetImpedance(int16_t ohms) { impedance_ = ohms; }
  int16_t Impedance() const { return impedance_; }

  /// `value` in `from_unit` converted to `to_unit`: FromDbm(ToDbm(value)).
  ConvertedLevel ConvertLevel(double value, std::string_view from_unit,
                              std::string_view to_unit) const;
  /// `value` in `unit` as dBm.
  ConvertedLevel ToDbm(double value, std::string_view unit) const;
  /// A dBm level `value` in `unit`.
  double FromDbm(double value, std::string_view unit) const;

 private:
  bool At75Ohms() const { return impedance_ == 75; }

  int16_t impedance_ = 0;
  /// A correction term of every 75-ohm formula; it has always been 0.
  double impedance_correction_ = 0;
};

}  // namespace z4400

#endif  // Z4400_SOURCE_LEVEL_UNITS_H_
