// The table of contents of a zip archive: the end record, the central
// directory and each member's local header, read from bytes that may come
// from anywhere, so that every offset and length is checked before use.
#ifndef Z4400_WORKBOOK_PACKAGE_ZIP_DIRECTORY_H_
#define Z4400_WORKBOOK_PACKAGE_ZIP_DIRECTORY_H_

#include <cstdint>
#include <string>
#include <vector>

#include "workbook/package/archive_bytes.h"

namespace z4400 {

/// What the central directory says of one member (sizes from a zip64
/// extra field when the classic fields cannot hold them), and where its
/// data start.
struct ZipEntry {
  uint16_t flags = 0;   // general purpose bits: 0 encrypted, 3 data descriptor
  uint16_t method = 0;  // 0 stored, 8 deflated; others are not read
  uint32_t crc = 0;
  uint64_t compressed_size = 0;
  uint64_t size = 0;
  uint64_t data_offset = 0;  // past the local header; data lie inside the archive
};

/// Reads the directory of `archive` into `*names` and `*entries` (in
/// directory order). Returns false with `*error` set, naming the archive
/// as `label`, when it is not a zip archive, is damaged (a record outside
/// the file or at odds with another), spans several disks, cannot be read,
/// or lists more than `max_members` members. Names are given as stored;
/// whether they are safe is for the caller to judge.
bool ReadZipDirectory(ArchiveBytes& archive, const std::string& label, uint64_t max_members,
                      std::vector<std::string>* names, std::vector<ZipEntry>* entries,
                      std::string* error);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ZIP_DIRECTORY_H_
