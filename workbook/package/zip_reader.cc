#include "workbook/package/zip_reader.h"

#include <zip.h>

#include <algorithm>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "workbook/package/zip_member_name.h"

namespace z4400 {
namespace {

std::string LibzipMessage(int code) {
  // libzip says "File already exists" when the directory lists a name twice.
  if (code == ZIP_ER_EXISTS) return "two members have the same name";
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  std::string message = zip_error_strerror(&error);
  zip_error_fini(&error);
  return message;
}

std::string LibzipMessage(zip_error_t* error) {
  if (zip_error_code_zip(error) == ZIP_ER_EXISTS) return LibzipMessage(ZIP_ER_EXISTS);
  return zip_error_strerror(error);
}

/// Closes a member opened for reading.
struct MemberCloser {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

ZipReader::ZipReader(Key, std::string bytes, const ZipLimits& limits, std::string label)
    : bytes_(std::move(bytes)), limits_(limits), label_(std::move(label)) {}

ZipReader::~ZipReader() {
  if (archive_ != nullptr) zip_discard(archive_);
}

std::unique_ptr<ZipReader> ZipReader::Open(const std::filesystem::path& path, std::string* error,
                                           const ZipLimits& limits) {
  auto reader = std::make_unique<ZipReader>(Key(), std::string(), limits, path.string());
  std::error_code size_error;
  if (std::filesystem::file_size(path, size_error) == 0 && !size_error) {
    *error = "Cannot open " + path.string() + ": the file is empty";
    return nullptr;
  }
  int code = 0;
  reader->archive_ = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &code);
  if (reader->archive_ == nullptr) {
    *error = "Cannot open " + path.string() + ": " + LibzipMessage(code);
    return nullptr;
  }
  if (!reader->Index(error)) return nullptr;
  return reader;
}

std::unique_ptr<ZipReader> ZipReader::OpenBytes(std::string_view bytes, std::string* error,
                                                const ZipLimits& limits) {
  // libzip takes nothing for an empty archive; a workbook never is one.
  if (bytes.empty()) {
    *error = "Cannot open the archive: it is empty";
    return nullptr;
  }
  // The archive reads from the reader's own copy, which lives as long as it.
  auto reader = std::make_unique<ZipReader>(Key(), std::string(bytes), limits, "the archive");
  zip_error_t zip_error;
  zip_error_init(&zip_error);
  zip_source_t* source =
      zip_source_buffer_create(reader->bytes_.data(), reader->bytes_.size(), 0, &zip_error);
  if (source != nullptr) {
    reader->archive_ = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &zip_error);
    if (reader->archive_ == nullptr) zip_source_free(source);
  }
  if (reader->archive_ == nullptr) {
    *error = "Cannot open the archive: " + LibzipMessage(&zip_error);
    zip_error_fini(&zip_error);
    return nullptr;
  }
  zip_error_fini(&zip_error);
  if (!reader->Index(error)) return nullptr;
  return reader;
}

bool ZipReader::Index(std::string* error) {
  const zip_int64_t count = zip_get_num_entries(archive_, 0);
  if (count < 0 || static_cast<uint64_t>(count) > limits_.max_members) {
    *error = label_ + " has too many members";
    return false;
  }
  names_.reserve(static_cast<size_t>(count));
  std::unordered_set<std::string_view> seen;
  for (zip_int64_t i = 0; i < count; ++i) {
    // libzip hands names out as C strings, with any NUL inside replaced.
    const char* name = zip_get_name(archive_, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_RAW);
    if (name == nullptr) {
      *error = label_ + ": " + LibzipMessage(zip_get_error(archive_));
      return false;
    }
    names_.emplace_back(name);
    if (!IsSafeMemberName(names_.back())) {
      *error = label_ + " holds a member with an unsafe name";
      return false;
    }
  }
  for (const std::string& name : names_) {
    if (!seen.insert(name).second) {
      *error = label_ + " holds the member " + name + " twice";
      return false;
    }
  }
  return true;
}

bool ZipReader::Has(std::string_view name) const {
  return std::find(names_.begin(), names_.end(), name) != names_.end();
}

bool ZipReader::Read(std::string_view name, std::string* out, std::string* error) {
  const auto found = std::find(names_.begin(), names_.end(), name);
  if (found == names_.end()) {
    *error = label_ + " has no member " + std::string(name);
    return false;
  }
  const auto index = static_cast<zip_uint64_t>(found - names_.begin());
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat_index(archive_, index, 0, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0 ||
      (stat.valid & ZIP_STAT_COMP_SIZE) == 0) {
    *error =
        "Cannot read " + *found + " in " + label_ + ": " + LibzipMessage(zip_get_error(archive_));
    return false;
  }
  const uint64_t size = stat.size;
  const uint64_t compressed = stat.comp_size;
  if (size > limits_.max_member_size ||
      (size > limits_.ratio_floor &&
       size / std::max<uint64_t>(compressed, 1) > limits_.max_ratio) ||
      size > limits_.max_total_size - std::min(total_read_, limits_.max_total_size)) {
    *error = *found + " in " + label_ + " is too large (" + std::to_string(size) + " bytes)";
    return false;
  }
  std::unique_ptr<zip_file_t, MemberCloser> file(zip_fopen_index(archive_, index, 0));
  if (!file) {
    *error =
        "Cannot read " + *found + " in " + label_ + ": " + LibzipMessage(zip_get_error(archive_));
    return false;
  }
  // One byte more than declared, so that a member whose data run past its
  // declared size is caught instead of trusted.
  out->resize(static_cast<size_t>(size) + 1);
  uint64_t total = 0;
  while (true) {
    const zip_int64_t got = zip_fread(file.get(), out->data() + total, size + 1 - total);
    if (got < 0) {
      *error = "Cannot read " + *found + " in " + label_ + ": " +
               LibzipMessage(zip_file_get_error(file.get()));
      out->clear();
      return false;
    }
    if (got == 0) break;
    total += static_cast<uint64_t>(got);
    if (total > size) {
      *error = *found + " in " + label_ + " holds more data than it declares";
      out->clear();
      return false;
    }
  }
  if (total != size) {
    *error = *found + " in " + label_ + " holds less data than it declares";
    out->clear();
    return false;
  }
  out->resize(static_cast<size_t>(size));
  total_read_ += size;
  return true;
}

}  // namespace z4400
