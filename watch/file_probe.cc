#include "watch/file_probe.h"

#include <fcntl.h>
#include <unistd.h>

#include <system_error>

namespace z4400 {
namespace {

/// A read lease is granted only while no process has the file open for
/// writing (EAGAIN otherwise); it is given back at once. Other failures
/// (another user's file, a file system without leases) tell nothing.
bool OpenForWriting(const std::filesystem::path& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return false;
  bool writing = false;
  if (::fcntl(fd, F_SETLEASE, F_RDLCK) == 0) {
    ::fcntl(fd, F_SETLEASE, F_UNLCK);
  } else {
    writing = errno == EAGAIN;
  }
  ::close(fd);
  return writing;
}

}  // namespace

std::optional<FileState> ProbeFile(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (error || !std::filesystem::is_regular_file(status)) return std::nullopt;
  FileState state;
  state.size = std::filesystem::file_size(path, error);
  if (error) return std::nullopt;
  state.modified = std::filesystem::last_write_time(path, error);
  if (error) return std::nullopt;
  state.open_for_writing = OpenForWriting(path);
  return state;
}

}  // namespace z4400
