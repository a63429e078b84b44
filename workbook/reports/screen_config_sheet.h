// The configuration block of one screen on "Report" and "Raw Data": the
// measurement function, frequencies or times, bandwidths, reference level,
// scale and attenuation, each with its value, number format and
// engineering unit. Writing it also settles the units and factors of the
// screen's axes for the raw data and the chart.
#ifndef Z4400_WORKBOOK_REPORTS_SCREEN_CONFIG_SHEET_H_
#define Z4400_WORKBOOK_REPORTS_SCREEN_CONFIG_SHEET_H_

#include <cstdint>

#include "source/records.h"
#include "source/screen_tables.h"
#include "workbook/excel_app.h"
#include "workbook/reports/screen_units.h"

namespace z4400 {

/// First row of the block of screen `screen_index`: 9, 26, 43 (17 rows per
/// screen).
int16_t ScreenConfigRow(int16_t screen_index);

/// Writes the block of screen `screen_index` (0 to 2) on the active
/// worksheet from column A, the "Screen" row bold. `digital` holds the
/// screen's digital settings as the screen reader read them (times in
/// microseconds). Columns B and C (not C on "Raw Data", whose width the
/// sheet layout fixes) are widened where a value or unit of the block would
/// not show whole.
///
/// Fills record `screen_index` of `units`: the time unit and factor of a
/// digital screen, the X unit and factor of a spectrum screen, the vertical
/// unit and factor of a digital screen. For a zero-span screen it also puts
/// the sweep time's unit and factor (display units per second) into
/// `zero_span`, the screen's entry of the time-axis table.
///
/// Returns 0, or 1 when the vertical scale is 0: the block then stops after
/// "Reference level" and the record's Message is "Vertical-axis scale is 0".
/// A screen outside 0 to 2, or a factor that divides by zero (a zero stop
/// frequency or sweep time), throws `RuntimeFailure`.
int16_t WriteScreenConfig(const ExcelApp& excel, int16_t screen_index, const ScreenInfo& screen,
                          const DigitalValues& digital, ScreenUnitTable& units,
                          TimeAxisEntry& zero_span);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_SCREEN_CONFIG_SHEET_H_
