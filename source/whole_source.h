// Everything a conversion reads from one instrument file, read in the
// conversion's order without writing anything: for `--dump`, the fuzzing
// target and the read benchmark.
#ifndef Z4400_SOURCE_WHOLE_SOURCE_H_
#define Z4400_SOURCE_WHOLE_SOURCE_H_

#include <string>
#include <vector>

#include "source/records.h"
#include "source/screen_tables.h"
#include "source/source_reader.h"

namespace z4400 {

/// One screen as read: its configuration, axis steps, markers and traces.
struct ScreenRead {
  ScreenInfo Info;
  XAxisKind Kind;
  MarkersInfo Markers;
  XAxisScale Scale;
  int32_t TraceCount = 0;
  XAxisValues X;  ///< empty when the screen has no traces
  std::vector<TraceData> Traces;
};

/// The outcome of reading a whole file.
struct WholeSource {
  /// Empty when the whole file was read; otherwise why it was not (the
  /// reader's error text, or a description when the reader left none).
  std::string Error;
  GeneralInfo Info;
  std::vector<ScreenRead> Screens;  ///< the screens read before any error
};

/// Opens `path` and reads it as a conversion does: general information,
/// then per screen its configuration, time axis, markers, X scale type,
/// trace count, X values and every trace. `settings` stand in for the
/// driver's settings (default settings, spreadsheet version 16); the
/// log-X-in-use flag starts at 0. Run-time failures are not caught.
WholeSource ReadWholeSource(SourceReader& reader, const std::string& path,
                            const XScaleSettings& settings = {});
/// As ReadWholeSource, with the file's contents given.
WholeSource ReadWholeSourceBytes(SourceReader& reader, const std::string& path,
                                 std::string_view bytes, const XScaleSettings& settings = {});

}  // namespace z4400

#endif  // Z4400_SOURCE_WHOLE_SOURCE_H_
