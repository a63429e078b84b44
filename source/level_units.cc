#include "source/level_units.h"

#include <cmath>
#include <optional>

#include "common/numeric_text.h"

namespace z4400 {
namespace {

struct DbOffset {
  double offset;
  double extra_at_75_ohms;
};

// The dB units and their offsets from dBm; the micro units have different
// spellings into and out of dBm.
std::optional<DbOffset> IntoDbmOffset(std::string_view unit) {
  if (unit == "dBm") return DbOffset{0, 0};
  if (unit == "dBmV") return DbOffset{47, 1.75};
  if (unit == "dBuV") return DbOffset{107, 1.75};
  if (unit == "dBuVemf") return DbOffset{113, 1.75};
  if (unit == "dBpW") return DbOffset{90, 0};
  return std::nullopt;
}

std::optional<DbOffset> OutOfDbmOffset(std::string_view unit) {
  if (unit == "dBm") return DbOffset{0, 0};
  if (unit == "dBmV") return DbOffset{47, 1.75};
  if (unit == "dB\uFF75V") return DbOffset{107, 1.75};
  if (unit == "dB\uFF75Vemf") return DbOffset{113, 1.75};
  if (unit == "dBpW") return DbOffset{90, 0};
  return std::nullopt;
}

/// The decimal logarithm the way the instrument software takes it.
double Log10(double value) { return std::log(value) / std::log(10.0); }

}  // namespace

ConvertedLevel LevelConverter::ConvertLevel(double value, std::string_view from_unit,
                                            std::string_view to_unit) const {
  const ConvertedLevel dbm = ToDbm(value, from_unit);
  return {FromDbm(dbm.Value, to_unit), dbm.Input};
}

ConvertedLevel LevelConverter::ToDbm(double value, std::string_view unit) const {
  if (const auto db = IntoDbmOffset(unit)) {
    if (At75Ohms())
      return {value - (db->offset + db->extra_at_75_ohms + impedance_correction_), value};
    return {value - db->offset, value};
  }
  if (unit == "Volts") {
    if (value <= 0) value = FromDbm(0, "Volts");
    if (At75Ohms()) return {20 * Log10(value) + 11.24938 + impedance_correction_, value};
    return {20 * Log10(value) + 13.01029, value};
  }
  if (unit == "Watts") {
    if (value <= 0) value = FromDbm(0, "Watts");
    if (At75Ohms()) return {10 * Log10(value) + 30 + impedance_correction_, value};
    return {10 * Log10(value) + 30, value};
  }
  return {0, value};
}

double LevelConverter::FromDbm(double value, std::string_view unit) const {
  if (const auto db = OutOfDbmOffset(unit)) {
    if (At75Ohms()) return value + db->offset + db->extra_at_75_ohms + impedance_correction_;
    return value + db->offset;
  }
  if (unit == "Volts") {
    const double exponent =
        At75Ohms() ? (value + impedance_correction_) / 20 - 0.562469 : value / 20 - 0.6505149;
    return CheckedFinite(std::pow(10.0, exponent), "a level in volts");
  }
  if (unit == "Watts") {
    const double dbm = At75Ohms() ? value + impedance_correction_ : value;
    return CheckedFinite(std::pow(10.0, dbm / 10 - 3), "a level in watts");
  }
  return 0;
}

}  // namespace z4400
