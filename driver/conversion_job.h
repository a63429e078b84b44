// What the driver holds for the one file it converts. Created empty when the
// file starts and dropped when it ends; nothing of it reaches the next file.
#ifndef Z4400_DRIVER_CONVERSION_JOB_H_
#define Z4400_DRIVER_CONVERSION_JOB_H_

#include <cstdint>
#include <string>

#include "source/records.h"

namespace z4400 {

/// Result of a file that stopped without an error (a cancelled dialog, an
/// output that could not be named).
inline constexpr int16_t kStoppedQuietly = -1;

/// First row of the first screen's block on the result sheets.
inline constexpr int kFirstBlockRow = 12;

/// Rows between the blocks of two screens beyond the trace points.
inline constexpr int kBlockGapRows = 6;

/// The per-file state of `ConvertFile`.
struct ConversionJob {
  std::string SourcePath;
  GeneralInfo General;
  std::string OutputPath;  ///< without extension; empty = not converted
  /// The workbook's full file name, extension included, once the result
  /// sheets were created under the output path; empty before.
  std::string WorkbookFile;
  int16_t SpreadsheetVersion = 0;
  bool WorkbookCreated = false;
  int32_t ScreenIndex = 0;
  ScreenInfo Screen;
  MarkersInfo Markers;
  int32_t TraceCount = 0;
  int32_t TraceIndex = 0;
  TraceData Trace;
  int16_t BlockTopRow = 0;
  int16_t BlockEndRow = 0;
  int16_t Result = 0;  ///< 0 converted, -1 stopped quietly, other = failed
};

/// Rows of a screen's block: top = (points + 6) × screen + 12, end = top +
/// points. Throws RuntimeFailure when a row does not fit 16 bits.
void ComputeBlockRows(int32_t trace_points, int32_t screen, int16_t& top_row, int16_t& end_row);

/// The spreadsheet version as a 16-bit integer: the number at the start of
/// the version text ("16.0" → 16), rounded half to even; 0 when the text
/// does not start with a number. Throws RuntimeFailure beyond 16 bits.
int16_t VersionNumber(const std::string& version_text);

}  // namespace z4400

#endif  // Z4400_DRIVER_CONVERSION_JOB_H_
