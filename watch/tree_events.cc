#include "watch/tree_events.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace z4400 {
namespace {

// A file is looked at when it appears and each time a writer closes it;
// whether it is still being written the settle check finds out.
constexpr uint32_t kFolderEvents =
    IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_ONLYDIR | IN_EXCL_UNLINK;

}  // namespace

std::unique_ptr<TreeEvents> TreeEvents::Open(const std::filesystem::path& root,
                                             std::string* error) {
  const int fd = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (fd < 0) {
    *error = std::string("cannot watch folders: ") + std::strerror(errno);
    return nullptr;
  }
  auto events = std::make_unique<TreeEvents>(fd, root);
  if (!events->WatchTree(root, nullptr)) {
    *error = root.string() + ": " + std::strerror(errno);
    return nullptr;
  }
  return events;
}

TreeEvents::~TreeEvents() { ::close(fd_); }

bool TreeEvents::WatchTree(const std::filesystem::path& folder,
                           std::vector<std::filesystem::path>* found) {
  const int wd = ::inotify_add_watch(fd_, folder.c_str(), kFolderEvents);
  if (wd < 0) {
    if (errno == ENOSPC) {
      trouble_ = "too many folders to watch (raise fs.inotify.max_user_watches)";
    }
    return false;
  }
  folders_[wd] = folder;
  std::error_code error;
  for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
       it.increment(error)) {
    std::error_code kind_error;
    if (it->is_directory(kind_error) && !it->is_symlink(kind_error)) {
      WatchTree(it->path(), found);
    } else if (found != nullptr) {
      found->push_back(it->path());
    }
  }
  return true;
}

std::vector<std::filesystem::path> TreeEvents::Wait(std::chrono::milliseconds timeout) {
  std::vector<std::filesystem::path> touched;
  pollfd ready{fd_, POLLIN, 0};
  if (::poll(&ready, 1, static_cast<int>(timeout.count())) <= 0) return touched;
  alignas(inotify_event) std::array<char, std::size_t{64} * 1024> buffer;
  for (;;) {
    const ssize_t length = ::read(fd_, buffer.data(), buffer.size());
    if (length <= 0) break;
    for (ssize_t offset = 0; offset < length;) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + offset);
      offset += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
      if (event->mask & IN_Q_OVERFLOW) {
        // Events were lost: every file of the tree is looked at again.
        WatchTree(root_, &touched);
        continue;
      }
      const auto folder = folders_.find(event->wd);
      if (event->mask & IN_IGNORED) {
        if (folder != folders_.end()) folders_.erase(folder);
        continue;
      }
      if (folder == folders_.end() || event->len == 0) continue;
      const std::filesystem::path path = folder->second / event->name;
      if (event->mask & IN_ISDIR) {
        if (event->mask & (IN_CREATE | IN_MOVED_TO)) WatchTree(path, &touched);
      } else {
        touched.push_back(path);
      }
    }
  }
  return touched;
}

}  // namespace z4400
