#include "workbook/package/zip_reader.h"

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>

#include "workbook/package/deflate.h"
#include "workbook/package/zip_member_name.h"

namespace z4400 {
namespace {

constexpr uint16_t kFlagEncrypted = 0x0001;
constexpr uint16_t kMethodStored = 0;
constexpr uint16_t kMethodDeflated = 8;

}  // namespace

ZipReader::ZipReader(Key, std::string bytes, const ZipLimits& limits, std::string label)
    : archive_(std::move(bytes)), limits_(limits), label_(std::move(label)) {}

ZipReader::~ZipReader() = default;

std::unique_ptr<ZipReader> ZipReader::Open(const std::filesystem::path& path, std::string* error,
                                           const ZipLimits& limits) {
  std::string reason;
  std::optional<ArchiveBytes> file = ArchiveBytes::OpenFile(path, &reason);
  if (file && file->size() == 0) reason = "the file is empty";
  if (!reason.empty()) {
    *error = "Cannot open " + path.string() + ": " + reason;
    return nullptr;
  }
  auto reader = std::make_unique<ZipReader>(Key(), std::string(), limits, path.string());
  reader->archive_ = std::move(*file);
  if (!reader->Index(error)) return nullptr;
  return reader;
}

std::unique_ptr<ZipReader> ZipReader::OpenBytes(std::string_view bytes, std::string* error,
                                                const ZipLimits& limits) {
  if (bytes.empty()) {
    *error = "Cannot open the archive: it is empty";
    return nullptr;
  }
  auto reader = std::make_unique<ZipReader>(Key(), std::string(bytes), limits, "the archive");
  if (!reader->Index(error)) return nullptr;
  return reader;
}

bool ZipReader::Index(std::string* error) {
  if (!ReadZipDirectory(archive_, label_, limits_.max_members, &names_, &entries_, error)) {
    return false;
  }
  std::unordered_set<std::string_view> seen;
  seen.reserve(names_.size());
  for (const std::string& name : names_) {
    if (!seen.insert(name).second) {
      *error = "Cannot open " + label_ + ": two members have the same name";
      return false;
    }
  }
  if (!std::all_of(names_.begin(), names_.end(), IsSafeMemberName)) {
    *error = label_ + " holds a member with an unsafe name";
    return false;
  }
  return true;
}

bool ZipReader::Has(std::string_view name) const {
  return std::find(names_.begin(), names_.end(), name) != names_.end();
}

bool ZipReader::Fail(std::string_view name, const char* reason, std::string* error) const {
  *error = "Cannot read " + std::string(name) + " in " + label_ + ": " + reason;
  return false;
}

bool ZipReader::Read(std::string_view name, std::string* out, std::string* error) {
  out->clear();
  const auto found = std::find(names_.begin(), names_.end(), name);
  if (found == names_.end()) {
    *error = label_ + " has no member " + std::string(name);
    return false;
  }
  const ZipEntry& entry = entries_[found - names_.begin()];
  const uint64_t size = entry.size;
  const uint64_t compressed = entry.compressed_size;
  // The compressed size counts too: a member of a file is read whole.
  const uint64_t larger = std::max(size, compressed);
  if (larger > limits_.max_member_size ||
      (size > limits_.ratio_floor &&
       size / std::max<uint64_t>(compressed, 1) > limits_.max_ratio) ||
      larger > limits_.max_total_size - std::min(total_read_, limits_.max_total_size)) {
    *error = *found + " in " + label_ + " is too large (" + std::to_string(larger) + " bytes)";
    return false;
  }
  if ((entry.flags & kFlagEncrypted) != 0) {
    return Fail(name, "Encryption method not supported", error);
  }
  if (entry.method != kMethodStored && entry.method != kMethodDeflated) {
    return Fail(name, "Compression method not supported", error);
  }
  if (entry.method == kMethodDeflated && !inflater_.ok()) return Fail(name, "out of memory", error);
  std::string_view data;
  if (!archive_.View(entry.data_offset, compressed, &data)) return Fail(name, "Read error", error);

  // Stored data are checked against the declared size as inflated ones are.
  Inflater::Result result = Inflater::Result::kDone;
  if (entry.method == kMethodStored) {
    if (compressed != size) {
      result = compressed > size ? Inflater::Result::kLong : Inflater::Result::kShort;
    }
    out->assign(data);
  } else {
    out->resize(size);
    result = inflater_.Inflate(data, std::span<char>(*out));
  }
  if (result == Inflater::Result::kDone && Crc32(*out) == entry.crc) {
    total_read_ += size;
    return true;
  }
  out->clear();
  switch (result) {
    case Inflater::Result::kLong:
      *error = *found + " in " + label_ + " holds more data than it declares";
      return false;
    case Inflater::Result::kShort:
      *error = *found + " in " + label_ + " holds less data than it declares";
      return false;
    case Inflater::Result::kDamaged:
      return Fail(name, "Compressed data invalid", error);
    case Inflater::Result::kDone:
      break;
  }
  return Fail(name, "CRC error", error);
}

}  // namespace z4400
