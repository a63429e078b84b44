// The files of `z4400conv --batch`: the FILE and DIR arguments turned into
// the ordered list the batch converts, each with the folder of its workbook.
#ifndef Z4400_APP_BATCH_SOURCES_H_
#define Z4400_APP_BATCH_SOURCES_H_

#include <optional>
#include <string>
#include <vector>

#include "driver/batch_runner.h"

namespace z4400 {

/// The list of a batch and what was left out of it.
struct BatchSources {
  std::vector<BatchEntry> entries;
  /// What a folder's walk left out, each with why ("DIR/a/M.XML: skipped:
  /// …"): sources with a wrong-case extension or that are no regular file,
  /// folders that cannot be read.
  std::vector<std::string> skipped;
};

/// A path as the source-file list takes it: absolute, with "." and ".."
/// resolved, so that the workbook is named after the file itself.
std::string ListedPath(const std::string& argument);

/// Why a file named `path` is not converted for its name, or empty: the
/// extension must be exactly ".xml" or ".csv".
std::string ExtensionRefusal(const std::string& path);

/// Turns the arguments into the batch's list, in argument order. A FILE is
/// taken as it is (a name that is not ".xml" or ".csv" is refused with the
/// reason). A DIR gives every ".xml" and ".csv" file under it, recursively,
/// sorted by path; with `output_dir` the workbook of DIR/a/b/meas.xml goes
/// to OUTPUT_DIR/a/b/, else where "Data.ini" says.
BatchSources CollectSources(const std::vector<std::string>& arguments,
                            const std::optional<std::string>& output_dir);

}  // namespace z4400

#endif  // Z4400_APP_BATCH_SOURCES_H_
