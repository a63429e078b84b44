// What the summary workbook lists about each source file of a run: its
// outcome, what the file says about itself, and the markers that are on, as
// the file's own marker lists show them.
#ifndef Z4400_SUMMARY_RUN_SUMMARY_H_
#define Z4400_SUMMARY_RUN_SUMMARY_H_

#include <string>
#include <vector>

#include "source/source_reader.h"
#include "workbook/reports/markers_details_sheet.h"

namespace z4400 {

/// One marker that is on, one row of its screen's marker list.
struct SummaryMarker {
  int screen = 0;  ///< from 1, as "Marker List Screen" numbers it
  MarkerListEntry entry;
  /// The number of the marker the deltas refer to; 0 outside delta mode.
  int delta_reference = 0;
};

/// One source file of the run.
struct FileSummary {
  std::string source;
  bool converted = false;
  std::string reason;    ///< why the file failed; empty when converted
  std::string workbook;  ///< the workbook written, when there is one
  std::string model;
  std::string date;  ///< year-month-day, as the file gives it
  std::string title;
  int screens = 0;
  std::vector<SummaryMarker> markers;
};

/// Gathers the files of one run in the order they were converted. The files
/// are read with one reader for the whole run, as the conversion reads
/// them, so that what a file leaves blank reads as it did in its workbook.
class RunSummary {
 public:
  /// Adds `source` with its outcome, reading from it the model, date,
  /// title, number of screens and markers.
  /// A file the reader refuses keeps what was read before the refusal; a
  /// run-time failure while reading leaves only the outcome. A source
  /// added again replaces its earlier entry, in its place.
  void Add(const std::string& source, bool converted, const std::string& reason,
           const std::string& workbook);

  const std::vector<FileSummary>& files() const { return files_; }

 private:
  SourceReader reader_;
  std::vector<FileSummary> files_;
};

}  // namespace z4400

#endif  // Z4400_SUMMARY_RUN_SUMMARY_H_
