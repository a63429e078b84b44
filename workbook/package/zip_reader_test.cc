#include "workbook/package/zip_reader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "testing/test_files.h"
#include "workbook/package/zip_member_name.h"
#include "workbook/package/zip_writer.h"

namespace z4400 {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

/// The bytes of an archive made by our writer from (name, data) pairs.
std::string MakeArchive(std::initializer_list<std::pair<std::string, std::string>> members) {
  testing::ScratchDir scratch;
  ZipWriter writer(scratch / "a.zip");
  for (const auto& [name, data] : members) writer.AddMember(name, data);
  EXPECT_TRUE(writer.Finish()) << writer.error();
  return ReadAll(scratch / "a.zip");
}

/// Replaces every occurrence of `from` by `to` (same length), so that both
/// the local and the central header of a member change alike.
std::string Patch(std::string bytes, const std::string& from, const std::string& to) {
  EXPECT_EQ(from.size(), to.size());
  for (size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + 1)) {
    bytes.replace(at, from.size(), to);
  }
  return bytes;
}

uint32_t Get32(const std::string& bytes, size_t at) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = (value << 8) | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void Put32(std::string* bytes, size_t at, uint32_t value) {
  for (int i = 0; i < 4; ++i) (*bytes)[at + i] = static_cast<char>(value >> (8 * i));
}

TEST(IsSafeMemberNameTest, Names) {
  const struct {
    std::string name;
    bool safe;
  } cases[] = {
      {"xl/workbook.xml", true},
      {"[Content_Types].xml", true},
      {"_rels/.rels", true},
      {"xl/", true},
      {"a..b/c", true},
      {"", false},
      {"/etc/passwd", false},
      {"../x", false},
      {"xl/../../x", false},
      {"xl/..", false},
      {"./x", false},
      {"xl//x", false},
      {"xl\\x", false},
      {"C:x", false},
      {std::string("a\0b", 3), false},
      {"a\nb", false},
      {"/", false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsSafeMemberName(c.name), c.safe) << c.name;
}

TEST(ZipReaderTest, ReadsFromMemoryAndFile) {
  const std::string bytes = MakeArchive({{"a.xml", "alpha"}, {"b/c.xml", std::string(9000, 'c')}});
  std::string error;
  auto reader = ZipReader::OpenBytes(bytes, &error);
  ASSERT_TRUE(reader) << error;
  EXPECT_EQ(reader->names(), (std::vector<std::string>{"a.xml", "b/c.xml"}));
  EXPECT_TRUE(reader->Has("a.xml"));
  EXPECT_FALSE(reader->Has("A.xml"));
  std::string data;
  ASSERT_TRUE(reader->Read("b/c.xml", &data, &error)) << error;
  EXPECT_EQ(data, std::string(9000, 'c'));
  EXPECT_FALSE(reader->Read("missing.xml", &data, &error));
  EXPECT_EQ(error, "the archive has no member missing.xml");
}

TEST(ZipReaderTest, ReadsSpreadsheetMadeFiles) {
  const auto ooxml = testing::OoxmlDir();
  // The one archive here that another program made: what a spreadsheet
  // application writes must read, whatever our own writer does.
  if (!ooxml) GTEST_SKIP() << testing::OoxmlDirMissing();
  const auto path = *ooxml / "excel-made" / "simple01.xlsx";
  std::string error;
  auto reader = ZipReader::Open(path, &error);
  ASSERT_TRUE(reader) << error;
  for (const char* part : {"[Content_Types].xml", "_rels/.rels", "xl/workbook.xml",
                           "xl/worksheets/sheet1.xml", "xl/sharedStrings.xml"}) {
    std::string data;
    EXPECT_TRUE(reader->Read(part, &data, &error)) << part << ": " << error;
    EXPECT_EQ(data.rfind("<?xml", 0), 0u) << part;
  }
}

TEST(ZipReaderTest, RefusesDamagedArchives) {
  const std::string good = MakeArchive({{"aaaa.xml", std::string(5000, 'x')}});
  std::string error;
  // Not archives at all.
  for (const std::string& bytes :
       {std::string(), std::string("PK"), std::string(100, '\0'), good.substr(0, good.size() / 2),
        good.substr(0, good.size() - 5)}) {
    error.clear();
    EXPECT_FALSE(ZipReader::OpenBytes(bytes, &error)) << bytes.size();

    EXPECT_FALSE(error.empty());
  }
  // Unsafe or repeated names, made by renaming members in place.
  const std::string two = MakeArchive({{"aaaa.xml", "1"}, {"bbbb.xml", "2"}});
  for (const std::string& name :
       {std::string("../a"), std::string("/aaa"), std::string("a\\aa"), std::string("C:aa")}) {
    EXPECT_FALSE(ZipReader::OpenBytes(Patch(two, "aaaa", name), &error)) << name;
  }
  EXPECT_FALSE(ZipReader::OpenBytes(Patch(two, "bbbb", "aaaa"), &error));
  EXPECT_NE(error.find("same name"), std::string::npos) << error;

  // Damaged data: the member opens but its bytes do not check out.
  std::string corrupt = good;
  corrupt[40] ^= 0x55;  // inside the deflated data of the only member
  auto reader = ZipReader::OpenBytes(corrupt, &error);
  std::string data;
  EXPECT_TRUE(!reader || !reader->Read("aaaa.xml", &data, &error));
}

TEST(ZipReaderTest, FilesThatCannotBeRead) {
  testing::ScratchDir scratch;
  std::ofstream(scratch / "empty.xlsx").close();
  std::filesystem::create_directory(scratch / "folder.xlsx");
  const struct {
    std::string name;
    std::string reason;
  } cases[] = {
      {"none.xlsx", "No such file or directory"},
      {"empty.xlsx", "the file is empty"},
      {"folder.xlsx", "Is a directory"},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_FALSE(ZipReader::Open(scratch / c.name, &error));
    EXPECT_EQ(error, "Cannot open " + (scratch / c.name).string() + ": " + c.reason);
  }
}

TEST(ZipReaderTest, FileCutShortAfterOpening) {
  // Members are read from the file when asked for: one that has gone since
  // the archive was opened is a read error, not data made up.
  // Data that do not deflate, so that the file is larger than what the
  // reader takes in to find the directory.
  std::string noise(200000, '\0');
  uint32_t state = 1;
  for (char& c : noise) c = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  const std::string bytes = MakeArchive({{"a.xml", noise}});
  testing::ScratchDir scratch;  // after MakeArchive, whose scratch folder has the same name
  const auto path = scratch / "a.xlsx";
  std::ofstream(path, std::ios::binary) << bytes;
  std::string error;
  auto reader = ZipReader::Open(path, &error);
  ASSERT_TRUE(reader) << error;
  std::filesystem::resize_file(path, 20);
  std::string data;
  EXPECT_FALSE(reader->Read("a.xml", &data, &error));
  EXPECT_EQ(error, "Cannot read a.xml in " + path.string() + ": Read error");
}

TEST(ZipReaderTest, DeclaredSizesAreEnforced) {
  const std::string member(50000, 'z');
  const std::string bytes = MakeArchive({{"aaaa.xml", member}});
  // Offsets of the uncompressed size: local header +22, central header +24.
  const size_t central = bytes.find("PK\x01\x02");
  ASSERT_NE(central, std::string::npos);
  ASSERT_EQ(Get32(bytes, 22), member.size());
  ASSERT_EQ(Get32(bytes, central + 24), member.size());
  std::string error;
  std::string data;
  for (uint32_t declared : {uint32_t{1000}, uint32_t{60000}}) {
    SCOPED_TRACE(declared);
    std::string lying = bytes;
    Put32(&lying, 22, declared);
    Put32(&lying, central + 24, declared);
    auto reader = ZipReader::OpenBytes(lying, &error);
    EXPECT_TRUE(!reader || !reader->Read("aaaa.xml", &data, &error));
    EXPECT_TRUE(data.empty());
  }
  // Limits: per member, expansion ratio, and the total over one reader.
  {
    ZipLimits limits;
    limits.max_member_size = member.size() - 1;
    auto reader = ZipReader::OpenBytes(bytes, &error, limits);
    ASSERT_TRUE(reader) << error;
    EXPECT_FALSE(reader->Read("aaaa.xml", &data, &error));
    EXPECT_NE(error.find("too large"), std::string::npos) << error;
  }
  {
    ZipLimits limits;
    limits.ratio_floor = 1000;
    limits.max_ratio = 10;  // 50,000 'z' deflate to far less than 5,000 bytes
    auto reader = ZipReader::OpenBytes(bytes, &error, limits);
    ASSERT_TRUE(reader) << error;
    EXPECT_FALSE(reader->Read("aaaa.xml", &data, &error));
  }
  {
    ZipLimits limits;
    limits.max_total_size = member.size() * 2;
    auto reader = ZipReader::OpenBytes(bytes, &error, limits);
    ASSERT_TRUE(reader) << error;
    EXPECT_TRUE(reader->Read("aaaa.xml", &data, &error)) << error;
    EXPECT_TRUE(reader->Read("aaaa.xml", &data, &error)) << error;
    EXPECT_FALSE(reader->Read("aaaa.xml", &data, &error));
  }
  {
    ZipLimits limits;
    limits.max_members = 0;
    EXPECT_FALSE(ZipReader::OpenBytes(bytes, &error, limits));
  }
}

}  // namespace
}  // namespace z4400
