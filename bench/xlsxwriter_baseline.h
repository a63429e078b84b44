// The comparison for the conversion benchmarks: a minimal program's work
// that reads an instrument file with pugixml and writes the same sheets,
// cells and charts as a converted workbook with libxlsxwriter.
#ifndef Z4400_BENCH_XLSXWRITER_BASELINE_H_
#define Z4400_BENCH_XLSXWRITER_BASELINE_H_

#include <filesystem>

namespace z4400 {

/// Reads `source` and writes the workbook `output`, synced to the disk as
/// our save is; false when libxlsxwriter or the sync fails.
bool WriteWithLibxlsxwriter(const std::filesystem::path& source,
                            const std::filesystem::path& output);

}  // namespace z4400

#endif  // Z4400_BENCH_XLSXWRITER_BASELINE_H_
