#include "workbook/package/archive_bytes.h"

#include <sys/types.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <system_error>
#include <utility>

namespace z4400 {

ArchiveBytes::ArchiveBytes(std::string bytes)
    : file_(nullptr, &std::fclose), bytes_(std::move(bytes)), size_(bytes_.size()) {}

ArchiveBytes::ArchiveBytes(File file, uint64_t size) : file_(std::move(file)), size_(size) {}

std::optional<ArchiveBytes> ArchiveBytes::OpenFile(const std::filesystem::path& path,
                                                   std::string* error) {
  // The size first: it also refuses folders, and devices or pipes that
  // could make reading wait for ever.
  std::error_code size_error;
  const uint64_t size = std::filesystem::file_size(path, size_error);
  if (size_error) {
    *error = size_error.message();
    return std::nullopt;
  }
  File file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) {
    *error = std::strerror(errno);
    return std::nullopt;
  }
  return ArchiveBytes(std::move(file), size);
}

bool ArchiveBytes::View(uint64_t offset, uint64_t length, std::string_view* out) {
  if (offset > size_ || length > size_ - offset) return false;
  if (!file_) {
    *out = std::string_view(bytes_).substr(offset, length);
    return true;
  }
  if (offset > static_cast<uint64_t>(std::numeric_limits<off_t>::max()) ||
      fseeko(file_.get(), static_cast<off_t>(offset), SEEK_SET) != 0) {
    read_failed_ = true;
    return false;
  }
  bytes_.resize(length);
  if (std::fread(bytes_.data(), 1, length, file_.get()) != length) {
    read_failed_ = true;
    return false;
  }
  *out = bytes_;
  return true;
}

}  // namespace z4400
