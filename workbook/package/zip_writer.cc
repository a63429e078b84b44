#include "workbook/package/zip_writer.h"

#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

#include "workbook/package/deflate.h"
#include "workbook/package/zip_member_name.h"

namespace z4400 {
namespace {

constexpr uint32_t kLocalHeaderSignature = 0x04034b50;
constexpr uint32_t kCentralHeaderSignature = 0x02014b50;
constexpr uint32_t kEndOfCentralDirectorySignature = 0x06054b50;
constexpr uint16_t kVersionNeeded = 20;  // 2.0: deflate
constexpr uint16_t kMethodDeflate = 8;
constexpr uint16_t kFlagUtf8Name = 0x0800;
// 1980-01-01 00:00:00 in DOS format, the earliest a zip can say.
constexpr uint16_t kDosTime = 0;
constexpr uint16_t kDosDate = (0 << 9) | (1 << 5) | 1;
constexpr size_t kLocalHeaderSize = 30;
constexpr size_t kCentralHeaderSize = 46;
constexpr uint64_t kMaxArchiveOffset = std::numeric_limits<uint32_t>::max() - 1;
constexpr size_t kMaxMembers = std::numeric_limits<uint16_t>::max();
constexpr size_t kFileBufferSize = 1 << 20;

void Put16(std::string* out, uint16_t value) {
  out->push_back(static_cast<char>(value & 0xff));
  out->push_back(static_cast<char>(value >> 8));
}

void Put32(std::string* out, uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) out->push_back(static_cast<char>(value >> shift));
}

bool IsAscii(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

}  // namespace

ZipWriter::FileHandle ZipWriter::OpenForWriting(const std::filesystem::path& path) {
  return {std::fopen(path.c_str(), "wb"), &std::fclose};
}

ZipWriter::ZipWriter(const std::filesystem::path& path, int level)
    : path_(path),
      file_(OpenForWriting(path)),
      own_deflater_(std::make_unique<Deflater>(level)),
      deflater_(own_deflater_.get()) {
  Start();
}

ZipWriter::ZipWriter(const std::filesystem::path& path, Deflater& deflater)
    : path_(path), file_(OpenForWriting(path)), deflater_(&deflater) {
  Start();
}

void ZipWriter::Start() {
  if (!file_) {
    Fail("Cannot create " + path_.string() + ": " + std::strerror(errno));
    return;
  }
  std::setvbuf(file_.get(), nullptr, _IOFBF, kFileBufferSize);
  if (!deflater_->ok()) Fail("Cannot start compressing " + path_.string() + ": out of memory");
}

ZipWriter::~ZipWriter() = default;

bool ZipWriter::Fail(std::string message) {
  if (error_.empty()) error_ = std::move(message);
  return false;
}

bool ZipWriter::Write(std::string_view bytes) {
  if (bytes.empty()) return true;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
    return Fail("Cannot write " + path_.string() + ": " + std::strerror(errno));
  }
  offset_ += bytes.size();
  return true;
}

bool ZipWriter::AddMember(std::string_view name, std::string_view data) {
  if (!ok()) return false;
  if (finished_) return Fail("Cannot add " + std::string(name) + ": the archive is closed");
  if (!IsSafeMemberName(name) || name.size() > std::numeric_limits<uint16_t>::max()) {
    return Fail("Cannot add a part named \"" + std::string(name.substr(0, 200)) + "\" to " +
                path_.string());
  }
  if (entries_.size() >= kMaxMembers) {
    return Fail("Too many parts for one file: " + path_.string());
  }
  if (data.size() > kMaxArchiveOffset) {
    return Fail("The part " + std::string(name) + " is larger than 4 GiB");
  }
  std::string_view compressed;
  if (!deflater_->Compress(data, &compressed)) {
    return Fail("Cannot compress " + std::string(name) + ": out of memory");
  }
  const uint64_t end = offset_ + kLocalHeaderSize + name.size() + compressed.size();
  if (end > kMaxArchiveOffset) return Fail(path_.string() + " would be larger than 4 GiB");

  Entry entry;
  entry.name = std::string(name);
  entry.crc = Crc32(data);
  entry.compressed_size = static_cast<uint32_t>(compressed.size());
  entry.size = static_cast<uint32_t>(data.size());
  entry.offset = static_cast<uint32_t>(offset_);
  entry.flags = IsAscii(name) ? 0 : kFlagUtf8Name;

  header_.clear();
  Put32(&header_, kLocalHeaderSignature);
  Put16(&header_, kVersionNeeded);
  Put16(&header_, entry.flags);
  Put16(&header_, kMethodDeflate);
  Put16(&header_, kDosTime);
  Put16(&header_, kDosDate);
  Put32(&header_, entry.crc);
  Put32(&header_, entry.compressed_size);
  Put32(&header_, entry.size);
  Put16(&header_, static_cast<uint16_t>(name.size()));
  Put16(&header_, 0);  // no extra field
  header_.append(name);
  if (!Write(header_) || !Write(compressed)) return false;
  entries_.push_back(std::move(entry));
  return true;
}

bool ZipWriter::Finish() {
  if (!ok()) return false;
  if (finished_) return Fail(path_.string() + " is already closed");
  finished_ = true;

  std::string directory;
  directory.reserve(entries_.size() * (kCentralHeaderSize + 40));
  for (const Entry& entry : entries_) {
    Put32(&directory, kCentralHeaderSignature);
    Put16(&directory, kVersionNeeded);  // made by: MS-DOS attributes, 2.0
    Put16(&directory, kVersionNeeded);
    Put16(&directory, entry.flags);
    Put16(&directory, kMethodDeflate);
    Put16(&directory, kDosTime);
    Put16(&directory, kDosDate);
    Put32(&directory, entry.crc);
    Put32(&directory, entry.compressed_size);
    Put32(&directory, entry.size);
    Put16(&directory, static_cast<uint16_t>(entry.name.size()));
    Put16(&directory, 0);  // extra field
    Put16(&directory, 0);  // comment
    Put16(&directory, 0);  // disk number
    Put16(&directory, 0);  // internal attributes
    Put32(&directory, 0);  // external attributes
    Put32(&directory, entry.offset);
    directory.append(entry.name);
  }
  const uint64_t directory_offset = offset_;
  const size_t directory_size = directory.size();
  if (directory_offset + directory_size > kMaxArchiveOffset) {
    return Fail(path_.string() + " would be larger than 4 GiB");
  }
  Put32(&directory, kEndOfCentralDirectorySignature);
  Put16(&directory, 0);  // this disk
  Put16(&directory, 0);  // disk with the directory
  Put16(&directory, static_cast<uint16_t>(entries_.size()));
  Put16(&directory, static_cast<uint16_t>(entries_.size()));
  Put32(&directory, static_cast<uint32_t>(directory_size));
  Put32(&directory, static_cast<uint32_t>(directory_offset));
  Put16(&directory, 0);  // archive comment
  if (!Write(directory)) return false;

  // Closed here rather than by the handle, to see whether the last bytes
  // reached the file.
  const FileHandle::deleter_type close = file_.get_deleter();
  if (close(file_.release()) != 0) {
    return Fail("Cannot write " + path_.string() + ": " + std::strerror(errno));
  }
  return true;
}

}  // namespace z4400
