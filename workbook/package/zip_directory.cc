#include "workbook/package/zip_directory.h"

#include <algorithm>
#include <string_view>

namespace z4400 {
namespace {

constexpr uint32_t kLocalHeaderSignature = 0x04034b50;
constexpr uint32_t kCentralHeaderSignature = 0x02014b50;
constexpr uint32_t kEndSignature = 0x06054b50;
constexpr uint32_t kZip64EndSignature = 0x06064b50;
constexpr uint32_t kZip64LocatorSignature = 0x07064b50;
constexpr uint64_t kLocalHeaderSize = 30;
constexpr uint64_t kCentralHeaderSize = 46;
constexpr uint64_t kEndSize = 22;
constexpr uint64_t kMaxCommentSize = 0xffff;
constexpr uint64_t kZip64EndSize = 56;
constexpr uint64_t kZip64LocatorSize = 20;
constexpr uint16_t kZip64ExtraId = 0x0001;
constexpr uint16_t kFlagDataDescriptor = 0x0008;
constexpr uint32_t kSaturated32 = 0xffffffff;

// The reasons given after "Cannot open <archive>: ".
constexpr char kNotZip[] = "Not a zip archive";
constexpr char kInconsistent[] = "Zip archive inconsistent";
constexpr char kMultiDisk[] = "Multi-disk zip archives not supported";
constexpr char kReadError[] = "Read error";

// Little-endian fields; the caller has checked that they lie in `bytes`.
uint16_t Get16(std::string_view bytes, size_t at) {
  return static_cast<uint16_t>(static_cast<unsigned char>(bytes[at]) |
                               static_cast<unsigned char>(bytes[at + 1]) << 8);
}

uint32_t Get32(std::string_view bytes, size_t at) {
  return Get16(bytes, at) | static_cast<uint32_t>(Get16(bytes, at + 2)) << 16;
}

uint64_t Get64(std::string_view bytes, size_t at) {
  return Get32(bytes, at) | static_cast<uint64_t>(Get32(bytes, at + 4)) << 32;
}

/// Where the central directory lies, as the end records say.
struct DirectoryPlace {
  uint64_t offset = 0;
  uint64_t size = 0;
  uint64_t count = 0;
  uint64_t end = 0;  // where the end records start: the directory must stop there
};

/// The classic fields of a central header that a zip64 extra field may
/// replace, each only when saturated. (The disk number, last in the field,
/// is not needed: an archive of several disks has no single-disk end record.)
struct WideFields {
  uint64_t size;
  uint64_t compressed_size;
  uint64_t offset;
};

/// Reads the zip64 extra field of `extra` into the saturated members of
/// `*fields`. False when one is needed and missing or cut short.
bool ReadZip64Extra(std::string_view extra, WideFields* fields) {
  const bool wide_size = fields->size == kSaturated32;
  const bool wide_compressed = fields->compressed_size == kSaturated32;
  const bool wide_offset = fields->offset == kSaturated32;
  if (!wide_size && !wide_compressed && !wide_offset) return true;
  for (size_t at = 0; extra.size() - at >= 4;) {
    const uint16_t id = Get16(extra, at);
    const size_t length = Get16(extra, at + 2);
    at += 4;
    if (length > extra.size() - at) return false;
    if (id == kZip64ExtraId) {
      const std::string_view data = extra.substr(at, length);
      size_t used = 0;
      const auto take = [&](uint64_t* field) {
        if (data.size() - used < 8) return false;
        *field = Get64(data, used);
        used += 8;
        return true;
      };
      return (!wide_size || take(&fields->size)) &&
             (!wide_compressed || take(&fields->compressed_size)) &&
             (!wide_offset || take(&fields->offset));
    }
    at += length;
  }
  return false;
}

/// One pass over the directory of one archive.
class DirectoryReader {
 public:
  DirectoryReader(ArchiveBytes& archive, const std::string& label, std::string* error)
      : archive_(archive), label_(label), error_(error) {}

  bool Read(uint64_t max_members, std::vector<std::string>* names, std::vector<ZipEntry>* entries) {
    DirectoryPlace place;
    if (!FindEnd(&place)) return false;
    if (place.count > max_members) {
      *error_ = label_ + " has too many members";
      return false;
    }
    if (place.offset > place.end || place.size != place.end - place.offset ||
        place.count > place.size / kCentralHeaderSize) {
      return Fail(kInconsistent);
    }
    names->reserve(place.count);
    entries->reserve(place.count);
    uint64_t at = place.offset;
    for (uint64_t i = 0; i < place.count; ++i) {
      names->emplace_back();
      entries->emplace_back();
      if (!ReadEntry(place, &at, &names->back(), &entries->back())) return false;
    }
    return at == place.end || Fail(kInconsistent);
  }

 private:
  bool Fail(const char* reason) {
    *error_ = "Cannot open " + label_ + ": " + (archive_.read_failed() ? kReadError : reason);
    return false;
  }

  /// Finds the end record: the last one in the final 64 KiB whose comment
  /// reaches exactly to the end of the archive.
  bool FindEnd(DirectoryPlace* place) {
    const uint64_t size = archive_.size();
    if (size < kEndSize) return Fail(kNotZip);
    const uint64_t tail_size = std::min(size, kEndSize + kMaxCommentSize);
    const uint64_t tail_start = size - tail_size;
    std::string_view tail;
    if (!archive_.View(tail_start, tail_size, &tail)) return Fail(kNotZip);
    for (size_t at = tail_size - kEndSize;; --at) {
      if (Get32(tail, at) == kEndSignature && at + kEndSize + Get16(tail, at + 20) == tail_size) {
        const bool one_disk = Get16(tail, at + 4) == 0 && Get16(tail, at + 6) == 0 &&
                              Get16(tail, at + 8) == Get16(tail, at + 10);
        place->count = Get16(tail, at + 10);
        place->size = Get32(tail, at + 12);
        place->offset = Get32(tail, at + 16);
        place->end = tail_start + at;
        if (place->end >= kZip64LocatorSize) {
          std::string_view locator;
          if (!archive_.View(place->end - kZip64LocatorSize, kZip64LocatorSize, &locator)) {
            return Fail(kNotZip);
          }
          if (Get32(locator, 0) == kZip64LocatorSignature) return ReadZip64End(locator, place);
        }
        return one_disk || Fail(kMultiDisk);
      }
      if (at == 0) return Fail(kNotZip);
    }
  }

  /// Takes the directory's place from the zip64 end record that `locator`
  /// (just before the classic end record) points at.
  bool ReadZip64End(std::string_view locator, DirectoryPlace* place) {
    const uint32_t locator_disk = Get32(locator, 4);
    const uint64_t record = Get64(locator, 8);
    const uint32_t disks = Get32(locator, 16);
    if (locator_disk != 0 || disks > 1) return Fail(kMultiDisk);
    const uint64_t locator_offset = place->end - kZip64LocatorSize;
    if (record > locator_offset || kZip64EndSize > locator_offset - record) {
      return Fail(kInconsistent);
    }
    std::string_view end;
    if (!archive_.View(record, kZip64EndSize, &end)) return Fail(kInconsistent);
    if (Get32(end, 0) != kZip64EndSignature) return Fail(kInconsistent);
    if (Get32(end, 16) != 0 || Get32(end, 20) != 0 || Get64(end, 24) != Get64(end, 32)) {
      return Fail(kMultiDisk);
    }
    place->count = Get64(end, 32);
    place->size = Get64(end, 40);
    place->offset = Get64(end, 48);
    place->end = record;
    return true;
  }

  /// Reads the central header at `*at` (moving it past the header) and the
  /// local header it points at.
  bool ReadEntry(const DirectoryPlace& place, uint64_t* at, std::string* name, ZipEntry* entry) {
    std::string_view header;
    if (kCentralHeaderSize > place.end - *at || !archive_.View(*at, kCentralHeaderSize, &header)) {
      return Fail(kInconsistent);
    }
    if (Get32(header, 0) != kCentralHeaderSignature) return Fail(kNotZip);
    entry->flags = Get16(header, 8);
    entry->method = Get16(header, 10);
    entry->crc = Get32(header, 16);
    WideFields wide{.size = Get32(header, 24),
                    .compressed_size = Get32(header, 20),
                    .offset = Get32(header, 42)};
    const uint64_t name_size = Get16(header, 28);
    const uint64_t extra_size = Get16(header, 30);
    const uint64_t variable_size = name_size + extra_size + Get16(header, 32);
    *at += kCentralHeaderSize;
    std::string_view variable;
    if (variable_size > place.end - *at || !archive_.View(*at, variable_size, &variable)) {
      return Fail(kInconsistent);
    }
    *at += variable_size;
    name->assign(variable.substr(0, name_size));
    if (!ReadZip64Extra(variable.substr(name_size, extra_size), &wide)) {
      return Fail(kInconsistent);
    }
    entry->size = wide.size;
    entry->compressed_size = wide.compressed_size;
    return ReadLocalHeader(place.offset, wide.offset, *name, entry);
  }

  /// Checks the local header at `offset` against the central one and sets
  /// where the member's data start; they must end before the directory.
  bool ReadLocalHeader(uint64_t directory, uint64_t offset, const std::string& name,
                       ZipEntry* entry) {
    std::string_view header;
    if (!archive_.View(offset, kLocalHeaderSize, &header) ||
        Get32(header, 0) != kLocalHeaderSignature) {
      return Fail(kNotZip);
    }
    if (Get16(header, 8) != entry->method) return Fail(kInconsistent);
    // With a data descriptor the local header may leave CRC and sizes 0;
    // the central header has them. Saturated sizes are in a zip64 field.
    const bool deferred = (Get16(header, 6) & kFlagDataDescriptor) != 0 && Get32(header, 14) == 0 &&
                          Get32(header, 18) == 0 && Get32(header, 22) == 0;
    const auto agrees = [](uint32_t local, uint64_t central) {
      return local == kSaturated32 || local == central;
    };
    if (!deferred &&
        (Get32(header, 14) != entry->crc || !agrees(Get32(header, 18), entry->compressed_size) ||
         !agrees(Get32(header, 22), entry->size))) {
      return Fail(kInconsistent);
    }
    const uint64_t name_size = Get16(header, 26);
    entry->data_offset = offset + kLocalHeaderSize + name_size + Get16(header, 28);
    if (entry->data_offset > directory || entry->compressed_size > directory - entry->data_offset) {
      return Fail(kNotZip);
    }
    std::string_view local_name;
    return (archive_.View(offset + kLocalHeaderSize, name_size, &local_name) &&
            local_name == name) ||
           Fail(kInconsistent);
  }

  ArchiveBytes& archive_;
  const std::string& label_;
  std::string* error_;
};

}  // namespace

bool ReadZipDirectory(ArchiveBytes& archive, const std::string& label, uint64_t max_members,
                      std::vector<std::string>* names, std::vector<ZipEntry>* entries,
                      std::string* error) {
  return DirectoryReader(archive, label, error).Read(max_members, names, entries);
}

}  // namespace z4400
