// What the folder watcher needs to know about a source file to tell whether
// its writer has finished: its size, its modification time and whether some
// process still has it open for writing.
#ifndef Z4400_WATCH_FILE_PROBE_H_
#define Z4400_WATCH_FILE_PROBE_H_

#include <cstdint>
#include <filesystem>
#include <optional>

namespace z4400 {

struct FileState {
  std::uintmax_t size = 0;
  std::filesystem::file_time_type modified;
  /// True while a process has the file open for writing. Known only for
  /// files this user owns (the system tells it through a read lease); false
  /// for the others, which then rely on the settle time alone.
  bool open_for_writing = false;

  /// Same contents as far as size and time tell.
  bool SameAs(const FileState& other) const {
    return size == other.size && modified == other.modified;
  }
};

/// The state of the regular file at `path`; nothing when it is gone or is
/// not a regular file (a folder, a FIFO, a device).
std::optional<FileState> ProbeFile(const std::filesystem::path& path);

}  // namespace z4400

#endif  // Z4400_WATCH_FILE_PROBE_H_
