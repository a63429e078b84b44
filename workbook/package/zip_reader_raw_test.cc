// ZipReader over archives put together byte by byte, so that each record
// the reader parses itself can be made to lie in one way at a time.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "testing/test_files.h"
#include "workbook/package/deflate.h"
#include "workbook/package/zip_reader.h"

namespace z4400 {
namespace {

constexpr uint16_t kStored = 0;
constexpr uint16_t kDeflated = 8;
constexpr uint16_t kEncrypted = 0x0001;
constexpr uint16_t kDataDescriptor = 0x0008;

void Put16(std::string* out, uint64_t value) {
  for (int shift = 0; shift < 16; shift += 8) out->push_back(static_cast<char>(value >> shift));
}

void Put32(std::string* out, uint64_t value) {
  for (int shift = 0; shift < 32; shift += 8) out->push_back(static_cast<char>(value >> shift));
}

void Put64(std::string* out, uint64_t value) {
  for (int shift = 0; shift < 64; shift += 8) out->push_back(static_cast<char>(value >> shift));
}

uint32_t Get32(const std::string& bytes, size_t at) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = (value << 8) | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

/// Overwrites the 16- or 32-bit field at `at`.
std::string Patched(std::string bytes, size_t at, uint32_t value, int width = 4) {
  for (int i = 0; i < width; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i));
  return bytes;
}

/// One member as its headers will tell of it.
struct Member {
  std::string name = "a.xml";
  std::string content;
  uint16_t method = kDeflated;  // 0 and 8 are made; any other stores `content` as is
  uint16_t flags = 0;
  std::optional<uint32_t> crc;   // declared CRC-32, when not the content's own
  std::optional<uint32_t> size;  // declared size, when not the content's own
  bool zip64 = false;            // sizes in zip64 extra fields
  std::optional<std::string> local_name;
};

/// Options of the archive as a whole.
struct Layout {
  std::string comment;
  bool zip64_end = false;  // zip64 end record and locator before the classic one
};

/// The bytes of a zip archive holding `members`.
std::string Assemble(const std::vector<Member>& members, const Layout& layout = {}) {
  Deflater deflater(6);
  std::string archive;
  std::string directory;
  for (const Member& member : members) {
    std::string data = member.content;
    if (member.method == kDeflated) {
      std::string_view compressed;
      EXPECT_TRUE(deflater.Compress(member.content, &compressed));
      data = std::string(compressed);
    }
    const uint32_t crc = member.crc.value_or(Crc32(member.content));
    const uint64_t size = member.size.value_or(member.content.size());
    const bool descriptor = (member.flags & kDataDescriptor) != 0;
    std::string extra;
    if (member.zip64) {
      Put16(&extra, 0x0001);
      Put16(&extra, 16);
      Put64(&extra, size);
      Put64(&extra, data.size());
    }
    const auto sizes = [&](std::string* out, bool zero) {
      Put32(out, zero ? 0 : crc);
      Put32(out, zero ? 0 : member.zip64 ? 0xffffffff : data.size());
      Put32(out, zero ? 0 : member.zip64 ? 0xffffffff : size);
    };
    const std::string local_name = member.local_name.value_or(member.name);
    const uint64_t offset = archive.size();
    Put32(&archive, 0x04034b50);
    Put16(&archive, 20);
    Put16(&archive, member.flags);
    Put16(&archive, member.method);
    Put32(&archive, 0x00210000);  // 1980-01-01 00:00
    sizes(&archive, descriptor);
    Put16(&archive, local_name.size());
    Put16(&archive, extra.size());
    archive.append(local_name).append(extra).append(data);
    if (descriptor) {
      Put32(&archive, 0x08074b50);
      sizes(&archive, false);
    }
    Put32(&directory, 0x02014b50);
    Put16(&directory, 20);
    Put16(&directory, 20);
    Put16(&directory, member.flags);
    Put16(&directory, member.method);
    Put32(&directory, 0x00210000);
    sizes(&directory, false);
    Put16(&directory, member.name.size());
    Put16(&directory, extra.size());
    Put16(&directory, 0);  // comment
    Put16(&directory, 0);  // disk
    Put16(&directory, 0);  // internal attributes
    Put32(&directory, 0);  // external attributes
    Put32(&directory, offset);
    directory.append(member.name).append(extra);
  }
  const uint64_t directory_offset = archive.size();
  archive += directory;
  if (layout.zip64_end) {
    const uint64_t record = archive.size();
    Put32(&archive, 0x06064b50);
    Put64(&archive, 44);  // size of the rest of the record
    Put16(&archive, 45);
    Put16(&archive, 45);
    Put32(&archive, 0);
    Put32(&archive, 0);
    Put64(&archive, members.size());
    Put64(&archive, members.size());
    Put64(&archive, directory.size());
    Put64(&archive, directory_offset);
    Put32(&archive, 0x07064b50);
    Put32(&archive, 0);
    Put64(&archive, record);
    Put32(&archive, 1);
  }
  Put32(&archive, 0x06054b50);
  Put16(&archive, 0);
  Put16(&archive, 0);
  Put16(&archive, layout.zip64_end ? 0xffff : members.size());
  Put16(&archive, layout.zip64_end ? 0xffff : members.size());
  Put32(&archive, layout.zip64_end ? 0xffffffff : directory.size());
  Put32(&archive, layout.zip64_end ? 0xffffffff : directory_offset);
  Put16(&archive, layout.comment.size());
  return archive + layout.comment;
}

/// What the member "a.xml" holds in most cases: enough text to deflate.
std::string Content() {
  std::string text = "<?xml version=\"1.0\"?><a>";
  for (int i = 0; i < 300; ++i) text += "<b>" + std::to_string(i) + "</b>";
  return text + "</a>";
}

/// One archive, and what opening it and reading "a.xml" must give.
struct Case {
  const char* what;
  std::string bytes;
  std::string open_error;  // empty: the archive opens
  std::string read_error;  // empty: "a.xml" reads back as `Content()`
};

std::vector<Case> Cases() {
  const std::string content = Content();
  const Member plain{.content = content};
  const Member second{.name = "b.xml", .content = "<b/>"};
  const std::string good = Assemble({plain, second});
  const size_t end = good.size() - 22;  // the classic end record
  const size_t directory = end - Get32(good, end + 12);
  const std::string commented = Assemble({plain}, {.comment = "made by hand"});
  const std::string not_zip = "Cannot open the archive: Not a zip archive";
  const std::string inconsistent = "Cannot open the archive: Zip archive inconsistent";
  const std::string cannot_read = "Cannot read a.xml in the archive: ";
  std::vector<Case> cases = {
      {"deflated", good, "", ""},
      {"stored", Assemble({{.content = content, .method = kStored}, second}), "", ""},
      {"deflated, data descriptor",
       Assemble({{.content = content, .flags = kDataDescriptor}, second}), "", ""},
      {"stored, data descriptor",
       Assemble({{.content = content, .method = kStored, .flags = kDataDescriptor}, second}), "",
       ""},
      {"zip64 sizes", Assemble({{.content = content, .zip64 = true}, second}), "", ""},
      {"zip64 end record", Assemble({plain, second}, {.zip64_end = true}), "", ""},
      {"comment", commented, "", ""},
      {"comment holding an end record signature",
       Assemble({plain}, {.comment = std::string("PK\x05\x06", 4) + std::string(30, 'x')}), "", ""},
      {"longest comment", Assemble({plain}, {.comment = std::string(65535, 'c')}), "", ""},

      {"cut before the end record", good.substr(0, end), not_zip, ""},
      {"cut inside the end record", good.substr(0, good.size() - 1), not_zip, ""},
      {"cut inside the directory", good.substr(0, end - 10) + good.substr(end), inconsistent, ""},
      {"comment cut short", commented.substr(0, commented.size() - 5), not_zip, ""},
      {"bytes after the comment", commented + "extra", not_zip, ""},
      {"directory offset past the file", Patched(good, end + 16, 0x7fffffff), inconsistent, ""},
      {"directory offset one byte late", Patched(good, end + 16, Get32(good, end + 16) + 1),
       inconsistent, ""},
      {"directory size too large", Patched(good, end + 12, Get32(good, end + 12) + 1), inconsistent,
       ""},
      {"more members counted than listed", Patched(Patched(good, end + 8, 3, 2), end + 10, 3, 2),
       inconsistent, ""},
      {"fewer members counted than listed", Patched(Patched(good, end + 8, 1, 2), end + 10, 1, 2),
       inconsistent, ""},
      {"second disk", Patched(good, end + 4, 1, 2),
       "Cannot open the archive: Multi-disk zip archives not supported", ""},
      {"local header past the directory", Patched(good, directory + 42, 0xfffff), not_zip, ""},
      {"data running into the directory",
       Patched(Patched(good, directory + 20, directory), 18, directory), not_zip, ""},
      {"local header name of another length",
       Assemble({{.content = content, .local_name = "a.xmlx"}, second}), inconsistent, ""},
      {"local header of another name",
       Assemble({{.content = content, .local_name = "b.xml"}, second}), inconsistent, ""},
      {"local header of another size", Patched(good, 22, content.size() + 1), inconsistent, ""},
      {"zip64 sizes missing", Patched(Patched(good, directory + 24, 0xffffffff), 22, 0xffffffff),
       inconsistent, ""},

      {"wrong CRC", Assemble({{.content = content, .crc = Crc32(content) ^ 1}, second}), "",
       cannot_read + "CRC error"},
      {"deflated data damaged", Patched(good, 30 + 5, 0x07, 1), "",
       cannot_read + "Compressed data invalid"},
      {"declared size larger",
       Assemble({{.content = content, .size = static_cast<uint32_t>(content.size() + 1)}, second}),
       "", "a.xml in the archive holds less data than it declares"},
      {"declared size smaller",
       Assemble({{.content = content, .size = static_cast<uint32_t>(content.size() - 1)}, second}),
       "", "a.xml in the archive holds more data than it declares"},
      {"stored, declared size smaller",
       Assemble({{.content = content,
                  .method = kStored,
                  .size = static_cast<uint32_t>(content.size() - 1)},
                 second}),
       "", "a.xml in the archive holds more data than it declares"},
      {"encrypted", Assemble({{.content = content, .flags = kEncrypted}, second}), "",
       cannot_read + "Encryption method not supported"},
      {"bzip2 (method 12)", Assemble({{.content = content, .method = 12}, second}), "",
       cannot_read + "Compression method not supported"},
      {"LZMA (method 14)", Assemble({{.content = content, .method = 14}, second}), "",
       cannot_read + "Compression method not supported"},
      {"expands 1,000 times", Assemble({{.content = std::string(2 << 20, '\0')}, second}), "",
       "a.xml in the archive is too large (2097152 bytes)"},
  };
  std::vector<Member> many(10001);
  for (size_t i = 0; i < many.size(); ++i) {
    many[i] = {.name = "m" + std::to_string(i), .method = kStored};
  }
  cases.push_back({"10,001 members", Assemble(many), "the archive has too many members", ""});
  return cases;
}

TEST(ZipReaderRawTest, RecordsAreChecked) {
  testing::ScratchDir scratch;
  const std::string content = Content();
  for (const Case& c : Cases()) {
    SCOPED_TRACE(c.what);
    // The same archive from memory, and from a file read piece by piece.
    const std::filesystem::path path = scratch / "a.zip";
    std::ofstream(path, std::ios::binary) << c.bytes;
    for (const bool from_file : {false, true}) {
      SCOPED_TRACE(from_file ? "file" : "memory");
      const auto in_place = [&](std::string message) {
        if (!from_file) return message;
        for (size_t at = message.find("the archive"); at != std::string::npos;
             at = message.find("the archive")) {
          message.replace(at, 11, path.string());
        }
        return message;
      };
      std::string error;
      const auto reader =
          from_file ? ZipReader::Open(path, &error) : ZipReader::OpenBytes(c.bytes, &error);
      if (!c.open_error.empty()) {
        EXPECT_FALSE(reader);
        EXPECT_EQ(error, in_place(c.open_error));
        continue;
      }
      ASSERT_TRUE(reader) << error;
      std::string data = "left over";  // replaced, or emptied on failure
      const bool read = reader->Read("a.xml", &data, &error);
      if (c.read_error.empty()) {
        EXPECT_TRUE(read) << error;
        EXPECT_EQ(data, content);
      } else {
        EXPECT_FALSE(read);
        EXPECT_EQ(error, in_place(c.read_error));
        EXPECT_EQ(data, "");
      }
    }
  }
}

}  // namespace
}  // namespace z4400
