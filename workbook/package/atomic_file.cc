#include "workbook/package/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <random>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

namespace z4400 {
namespace {

constexpr int kNameAttempts = 16;

void SetError(std::string* error, std::string message) {
  if (error != nullptr) *error = std::move(message);
}

/// The saves of this process: their temporaries, and whether they may still
/// replace their targets.
struct SaveRegistry {
  std::mutex mutex;
  std::set<std::filesystem::path> temporaries;
  std::set<std::filesystem::path> cleaned_folders;
  bool abandoned = false;
};

SaveRegistry& Registry() {
  static SaveRegistry registry;
  return registry;
}

/// The process id in a temporary's name ".NAME.PID-RANDOM.tmp"; 0 when the
/// name is not one of ours.
long TemporaryOwner(const std::string& name) {
  constexpr std::string_view kSuffix = ".tmp";
  constexpr size_t kRandomDigits = 16;
  if (name.size() < 2 + kRandomDigits + kSuffix.size() || name[0] != '.' ||
      name.compare(name.size() - kSuffix.size(), kSuffix.size(), kSuffix) != 0) {
    return 0;
  }
  const size_t dash = name.size() - kSuffix.size() - kRandomDigits - 1;
  if (name[dash] != '-') return 0;
  for (size_t i = dash + 1; i < dash + 1 + kRandomDigits; ++i) {
    if (std::isxdigit(static_cast<unsigned char>(name[i])) == 0) return 0;
  }
  const size_t dot = name.rfind('.', dash);
  if (dot == std::string::npos || dot == 0 || dot + 1 == dash) return 0;
  long pid = 0;
  for (size_t i = dot + 1; i < dash; ++i) {
    if (name[i] < '0' || name[i] > '9' || pid > 1000000000) return 0;
    pid = pid * 10 + (name[i] - '0');
  }
  return pid;
}

/// Removes the temporaries in `folder` whose process no longer exists; once
/// per folder and process.
void RemoveStaleTemporaries(const std::filesystem::path& folder) {
  {
    SaveRegistry& registry = Registry();
    const std::lock_guard lock(registry.mutex);
    if (!registry.cleaned_folders.insert(folder).second) return;
  }
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const long owner = TemporaryOwner(entry->path().filename().string());
    if (owner <= 0 || owner == static_cast<long>(::getpid())) continue;
    if (::kill(static_cast<pid_t>(owner), 0) == 0 || errno != ESRCH) continue;
    std::error_code ignored;
    std::filesystem::remove(entry->path(), ignored);
  }
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

std::filesystem::path TemporarySibling(const std::filesystem::path& target) {
  thread_local std::mt19937_64 random(std::random_device{}());
  char suffix[48];
  std::snprintf(suffix, sizeof suffix, ".%ld-%016llx.tmp", static_cast<long>(::getpid()),
                static_cast<unsigned long long>(random()));
  return target.parent_path() / ("." + target.filename().string() + suffix);
}

bool WriteAtomically(const std::filesystem::path& target,
                     const std::function<bool(const std::filesystem::path& temporary)>& write,
                     std::string* error, SaveDurability durability) {
  const bool on_disk = durability == SaveDurability::kOnDisk;
  const std::filesystem::path folder =
      target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
  RemoveStaleTemporaries(folder);
  std::filesystem::path temporary;
  int error_number = 0;
  SaveRegistry& registry = Registry();
  std::error_code ignored;
  for (int attempt = 0;; ++attempt) {
    temporary = TemporarySibling(target);
    if (Reserve(temporary, &error_number)) break;
    if (error_number != EEXIST || attempt + 1 == kNameAttempts) {
      SetError(error,
               "Cannot create a file in " + folder.string() + ": " + std::strerror(error_number));
      return false;
    }
  }
  {
    const std::lock_guard lock(registry.mutex);
    if (registry.abandoned) {
      std::filesystem::remove(temporary, ignored);
      SetError(error, "Not saved: the program was interrupted");
      return false;
    }
    registry.temporaries.insert(temporary);
  }
  // Unregisters and removes the temporary; under the registry's lock.
  const auto discard = [&] {
    registry.temporaries.erase(temporary);
    std::filesystem::remove(temporary, ignored);
  };

  const bool written = write(temporary);
  if (!written) {
    const std::lock_guard lock(registry.mutex);
    discard();
    if (error != nullptr && error->empty()) *error = "Cannot write " + target.string();
    return false;
  }
  // A replaced file keeps its permissions; a new one gets the usual ones.
  struct stat existing;
  if (::stat(target.c_str(), &existing) == 0) {
    ::chmod(temporary.c_str(), existing.st_mode & 07777);
  }
  const bool synced = !on_disk || Sync(temporary, O_RDONLY, &error_number);
  // The rename happens under the lock, so that no save replaces its target
  // once the saves were abandoned.
  std::unique_lock lock(registry.mutex);
  if (registry.abandoned) {
    discard();
    SetError(error, "Not saved: the program was interrupted");
    return false;
  }
  if (!synced) {
    discard();
    SetError(error, "Cannot write " + target.string() + ": " + std::strerror(error_number));
    return false;
  }
  std::error_code renamed;
  std::filesystem::rename(temporary, target, renamed);
  if (renamed) {
    discard();
    SetError(error, "Cannot replace " + target.string() + ": " + renamed.message());
    return false;
  }
  registry.temporaries.erase(temporary);
  lock.unlock();
  // Make the rename itself durable; a failure here no longer endangers the
  // file, so it is not reported.
  if (on_disk) Sync(folder, O_RDONLY | O_DIRECTORY, &error_number);
  return true;
}

void AbandonSaves() {
  SaveRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  registry.abandoned = true;
  std::error_code ignored;
  for (const std::filesystem::path& temporary : registry.temporaries) {
    std::filesystem::remove(temporary, ignored);
  }
  registry.temporaries.clear();
}

}  // namespace z4400
