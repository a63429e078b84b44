#include "workbook/package/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <system_error>
#include <utility>

namespace z4400 {
namespace {

constexpr int kNameAttempts = 16;

void SetError(std::string* error, std::string message) {
  if (error != nullptr) *error = std::move(message);
}

/// A name beside `target` that no other save is using: the process id and a
/// random number, hidden with a leading dot so that a folder listing does not
/// show it while the save runs.
std::filesystem::path TemporaryName(const std::filesystem::path& target, std::mt19937_64& random) {
  char suffix[48];
  std::snprintf(suffix, sizeof suffix, ".%ld-%016llx.tmp", static_cast<long>(::getpid()),
                static_cast<unsigned long long>(random()));
  return target.parent_path() / ("." + target.filename().string() + suffix);
}

/// Creates `path` empty, failing if it exists, so that the name is ours.
bool Reserve(const std::filesystem::path& path, int* error_number) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    *error_number = errno;
    return false;
  }
  ::close(fd);
  return true;
}

/// Flushes the file's data to the disk, so that the rename cannot make a file
/// visible whose contents a power cut would lose.
bool Sync(const std::filesystem::path& path, int flags, int* error_number) {
  const int fd = ::open(path.c_str(), flags | O_CLOEXEC);
  if (fd < 0 || ::fsync(fd) != 0) {
    *error_number = errno;
    if (fd >= 0) ::close(fd);
    return false;
  }
  ::close(fd);
  return true;
}

}  // namespace

bool WriteAtomically(const std::filesystem::path& target,
                     const std::function<bool(const std::filesystem::path& temporary)>& write,
                     std::string* error) {
  const std::filesystem::path folder =
      target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
  std::mt19937_64 random(std::random_device{}());
  std::filesystem::path temporary;
  int error_number = 0;
  for (int attempt = 0;; ++attempt) {
    temporary = TemporaryName(target, random);
    if (Reserve(temporary, &error_number)) break;
    if (error_number != EEXIST || attempt + 1 == kNameAttempts) {
      SetError(error,
               "Cannot create a file in " + folder.string() + ": " + std::strerror(error_number));
      return false;
    }
  }

  std::error_code ignored;
  const bool written = write(temporary);
  if (!written) {
    std::filesystem::remove(temporary, ignored);
    if (error != nullptr && error->empty()) *error = "Cannot write " + target.string();
    return false;
  }
  // A replaced file keeps its permissions; a new one gets the usual ones.
  struct stat existing;
  if (::stat(target.c_str(), &existing) == 0) {
    ::chmod(temporary.c_str(), existing.st_mode & 07777);
  }
  if (!Sync(temporary, O_RDONLY, &error_number)) {
    std::filesystem::remove(temporary, ignored);
    SetError(error, "Cannot write " + target.string() + ": " + std::strerror(error_number));
    return false;
  }
  std::error_code renamed;
  std::filesystem::rename(temporary, target, renamed);
  if (renamed) {
    std::filesystem::remove(temporary, ignored);
    SetError(error, "Cannot replace " + target.string() + ": " + renamed.message());
    return false;
  }
  // Make the rename itself durable; a failure here no longer endangers the
  // file, so it is not reported.
  Sync(folder, O_RDONLY | O_DIRECTORY, &error_number);
  return true;
}

}  // namespace z4400
