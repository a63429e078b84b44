#include "workbook/package/zip_writer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "testing/test_files.h"
#include "workbook/package/deflate.h"
#include "workbook/package/zip_reader.h"

namespace z4400 {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

/// Members of the kinds a workbook has: empty, tiny, repetitive XML, and
/// bytes that do not compress at all.
std::vector<std::pair<std::string, std::string>> SampleMembers() {
  std::string sheet = "<sheetData>";
  for (int row = 1; row <= 5000; ++row) {
    sheet += "<row r=\"" + std::to_string(row) + "\"><c r=\"A" + std::to_string(row) + "\"><v>" +
             std::to_string(row * 0.37) + "</v></c></row>";
  }
  sheet += "</sheetData>";
  std::mt19937 random(42);
  std::string noise(70000, '\0');
  for (char& c : noise) c = static_cast<char>(random());
  return {{"[Content_Types].xml", "<Types/>"},
          {"xl/empty.xml", ""},
          {"xl/worksheets/sheet1.xml", sheet},
          {"xl/media/noise.bin", noise},
          {"docProps/\xc3\xa9t\xc3\xa9.xml", "<x/>"}};
}

TEST(ZipWriterTest, MembersReadBackUnchanged) {
  testing::ScratchDir scratch;
  const auto members = SampleMembers();
  for (int level : {0, 1, ZipWriter::kDefaultLevel, 6, 12}) {
    SCOPED_TRACE("level " + std::to_string(level));
    const auto path = scratch / ("book" + std::to_string(level) + ".zip");
    ZipWriter writer(path, level);
    for (const auto& [name, data] : members) ASSERT_TRUE(writer.AddMember(name, data));
    ASSERT_TRUE(writer.Finish()) << writer.error();
    EXPECT_TRUE(writer.error().empty());

    std::string error;
    auto reader = ZipReader::Open(path, &error);
    ASSERT_TRUE(reader) << error;
    ASSERT_EQ(reader->names().size(), members.size());
    for (size_t i = 0; i < members.size(); ++i) {
      EXPECT_EQ(reader->names()[i], members[i].first);
      std::string data;
      ASSERT_TRUE(reader->Read(members[i].first, &data, &error)) << error;
      EXPECT_EQ(data, members[i].second) << members[i].first;
    }
  }
}

TEST(ZipWriterTest, SystemUnzipAcceptsTheArchive) {
  if (std::system("command -v unzip >/dev/null 2>&1") != 0) GTEST_SKIP() << "no unzip";
  testing::ScratchDir scratch;
  const auto path = scratch / "book.zip";
  ZipWriter writer(path);
  for (const auto& [name, data] : SampleMembers()) writer.AddMember(name, data);
  ASSERT_TRUE(writer.Finish()) << writer.error();
  const std::string command = "unzip -tqq '" + path.string() + "' >/dev/null 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0);
}

TEST(ZipWriterTest, SameContentGivesSameBytes) {
  testing::ScratchDir scratch;
  const auto write = [&](const std::string& name) {
    ZipWriter writer(scratch / name);
    for (const auto& [member, data] : SampleMembers()) writer.AddMember(member, data);
    EXPECT_TRUE(writer.Finish());
    return ReadAll(scratch / name);
  };
  const std::string first = write("a.zip");
  EXPECT_FALSE(first.empty());
  EXPECT_EQ(first, write("b.zip"));
  // A compressor kept from archive to archive changes nothing, whatever it
  // compressed before.
  Deflater deflater(ZipWriter::kDefaultLevel);
  for (const std::string name : {"c.zip", "d.zip"}) {
    ZipWriter other(scratch / "other.zip", deflater);
    other.AddMember("big.xml", std::string(300000, 'q') + SampleMembers()[2].second);
    EXPECT_TRUE(other.Finish());
    ZipWriter writer(scratch / name, deflater);
    for (const auto& [member, data] : SampleMembers()) writer.AddMember(member, data);
    EXPECT_TRUE(writer.Finish());
    EXPECT_EQ(ReadAll(scratch / name), first) << name;
  }
  // The fixed time stamp, 1980-01-01 00:00, sits right after the method in
  // the first local header (offsets 10 and 12).
  ASSERT_GT(first.size(), 14u);
  EXPECT_EQ(first.substr(10, 4), std::string("\x00\x00\x21\x00", 4));
}

TEST(ZipWriterTest, Failures) {
  testing::ScratchDir scratch;
  {
    ZipWriter writer(scratch / "missing-folder" / "book.zip");
    EXPECT_FALSE(writer.ok());
    EXPECT_NE(writer.error().find("Cannot create"), std::string::npos) << writer.error();
    EXPECT_FALSE(writer.AddMember("a.xml", "x"));
    EXPECT_FALSE(writer.Finish());
  }
  for (const std::string& name :
       {std::string(), std::string("/abs.xml"), std::string("../up.xml"),
        std::string("xl\\sheet.xml"), std::string("a\0b", 3), std::string("C:/x.xml")}) {
    SCOPED_TRACE(name);
    ZipWriter writer(scratch / "names.zip");
    EXPECT_FALSE(writer.AddMember(name, "x"));
    EXPECT_FALSE(writer.ok());
    EXPECT_FALSE(writer.Finish());
  }
  {
    ZipWriter writer(scratch / "twice.zip");
    EXPECT_TRUE(writer.Finish());
    EXPECT_FALSE(writer.AddMember("late.xml", "x"));
    EXPECT_FALSE(writer.Finish());
  }
  {
    // A classic zip counts its members in 16 bits.
    ZipWriter writer(scratch / "many.zip");
    for (int i = 0; i < 65535; ++i) ASSERT_TRUE(writer.AddMember("m" + std::to_string(i), ""));
    EXPECT_FALSE(writer.AddMember("one-too-many", ""));
    EXPECT_NE(writer.error().find("Too many parts"), std::string::npos) << writer.error();
  }
  if (std::filesystem::exists("/dev/full")) {
    ZipWriter writer("/dev/full");
    writer.AddMember("a.xml", std::string(4 << 20, 'a'));
    EXPECT_FALSE(writer.Finish());
    EXPECT_NE(writer.error().find("No space"), std::string::npos) << writer.error();
  }
}

}  // namespace
}  // namespace z4400
