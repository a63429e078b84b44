// The summary workbook of a run: sheet "Files" lists every source file with
// its outcome, model, date, title and number of screens; sheet "Markers"
// lists every marker that is on, one per row. Each sheet has a frozen
// header row with a filter on it.
#ifndef Z4400_SUMMARY_SUMMARY_WORKBOOK_H_
#define Z4400_SUMMARY_SUMMARY_WORKBOOK_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "summary/run_summary.h"

namespace z4400 {

inline constexpr std::string_view kSummaryFilesSheet = "Files";
inline constexpr std::string_view kSummaryMarkersSheet = "Markers";

/// Writes the summary of `files` to `path` (.xlsx): the markers of the
/// converted files only, as a failed file has no complete workbook whose
/// marker lists they could stand for. The file is replaced
/// atomically: a reader of `path` finds the previous summary or the new
/// one, never half of one. Texts from the files (paths, titles, reasons)
/// are stored as they are, never read as numbers or dates; the date is a
/// date cell when it is a real calendar day. Returns false with `*error`
/// set when the file cannot be written.
bool SaveSummaryWorkbook(const std::vector<FileSummary>& files, const std::filesystem::path& path,
                         std::string* error);

}  // namespace z4400

#endif  // Z4400_SUMMARY_SUMMARY_WORKBOOK_H_
