#include "workbook/xlsx/xml_writer.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <pugixml.hpp>
#include <random>
#include <string>

namespace z4400 {
namespace {

std::string Escaped(std::string_view text, bool attribute) {
  std::string out;
  AppendEscaped(out, text, attribute);
  return out;
}

TEST(XmlWriterTest, NumbersReadBackExactly) {
  const double values[] = {0.0,
                           -0.0,
                           1.0,
                           -3.0,
                           0.1,
                           1.0 / 3.0,
                           1e21,
                           1e-300,
                           123456789012345678.0,
                           -2.5e-7,
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::denorm_min()};
  for (double value : values) {
    char buffer[kNumberBufferSize];
    const std::string text(FormatNumber(value, buffer));
    double back = 1;
    std::from_chars(text.data(), text.data() + text.size(), back);
    EXPECT_EQ(back, value) << text;
    EXPECT_NE(text.front(), '+') << text;
    EXPECT_EQ(text.find(' '), std::string::npos) << text;
  }
  char buffer[kNumberBufferSize];
  EXPECT_EQ(FormatNumber(-0.0, buffer), "0");  // never "-0" in a cell
  EXPECT_EQ(FormatNumber(0.5, buffer), "0.5");
  EXPECT_EQ(FormatNumber(std::nan(""), buffer), "NaN");
  EXPECT_EQ(FormatNumber(-std::numeric_limits<double>::infinity(), buffer), "-INF");
}

TEST(XmlWriterTest, Escaping) {
  struct Case {
    std::string_view text;
    bool attribute;
    std::string_view expected;
  };
  const Case cases[] = {
      {"plain text", false, "plain text"},
      {"a<b & c>d", false, "a&lt;b &amp; c&gt;d"},
      {"say \"hi\"", false, "say \"hi\""},
      {"say \"hi\"", true, "say &quot;hi&quot;"},
      {"tab\tline\n", false, "tab\tline\n"},
      {"tab\tline\n", true, "tab&#9;line&#10;"},
      {"cr\r", false, "cr&#13;"},
      {std::string_view("nul\0end", 7), false, "nul_x0000_end"},
      {"bell\x07", true, "bell_x0007_"},
      // An underscore that would read as an escape is itself escaped.
      {"_x0041_", false, "_x005F_x0041_"},
      {"snake_x_case_", false, "snake_x_case_"},
      // Valid UTF-8 passes; broken sequences become U+FFFD.
      {"\xE3\x83\x95\xE3\x82\xA1", false, "\xE3\x83\x95\xE3\x82\xA1"},
      {"\xF0\x9F\x93\x88", false, "\xF0\x9F\x93\x88"},
      {"bad\xFF!", false, "bad\xEF\xBF\xBD!"},
      {"cut\xE3\x83", false, "cut\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"overlong\xC0\xAF", false, "overlong\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"surrogate\xED\xA0\x80", false, "surrogate\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"nonchar\xEF\xBF\xBF", false, "nonchar\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Escaped(c.text, c.attribute), c.expected) << c.text;
  }
}

TEST(XmlWriterTest, ElementsAndAttributes) {
  XmlWriter writer;
  writer.StartTag("c:chart", {{"xmlns:c", "urn:x"}, {"r:id", std::string("rId1")}});
  writer.EmptyTag("c:idx", {{"val", 3}});
  writer.EmptyTag("c:max", {{"val", 2.5}});
  writer.EmptyTag("c:min", {{"val", -1e-9}});
  writer.EmptyTag("c:num", {{"val", std::numeric_limits<long long>::min()}});
  writer.DataElement("a:t", "R&D", {{"xml:space", "preserve"}});
  writer.NumberElement("c:v", 1.0 / 8);
  writer.EmptyTag("x", {{"name", "a\"b<c"}});
  writer.EndTag("c:chart");
  EXPECT_EQ(writer.str(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
            "<c:chart xmlns:c=\"urn:x\" r:id=\"rId1\"><c:idx val=\"3\"/><c:max val=\"2.5\"/>"
            "<c:min val=\"-1e-09\"/><c:num val=\"-9223372036854775808\"/>"
            "<a:t xml:space=\"preserve\">R&amp;D</a:t><c:v>0.125</c:v>"
            "<x name=\"a&quot;b&lt;c\"/></c:chart>");
  const std::string part = writer.Release();
  EXPECT_TRUE(writer.str().empty());
  EXPECT_FALSE(part.empty());

  // A part written into the memory of the one before starts afresh.
  XmlWriter next{std::string(part)};
  next.EmptyTag("x");
  EXPECT_EQ(next.str(), "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<x/>");
}

// True when `text` is UTF-8 holding only characters XML allows (pugixml
// does not check this itself).
bool OnlyXmlCharacters(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char lead = static_cast<unsigned char>(text[i]);
    std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead >= 0x80 && lead < 0xC2) return false;
    if (i + length > text.size()) return false;
    std::uint32_t code = length == 1 ? lead : lead & (0x3F >> (length - 1));
    for (std::size_t k = 1; k < length; ++k) {
      const unsigned char next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    const bool allowed = code == 0x9 || code == 0xA || code == 0xD ||
                         (code >= 0x20 && code <= 0xD7FF) || (code >= 0xE000 && code <= 0xFFFD) ||
                         (code >= 0x10000 && code <= 0x10FFFF);
    const bool shortest = (length == 2 && code >= 0x80) || (length == 3 && code >= 0x800) ||
                          (length == 4 && code >= 0x10000) || length == 1;
    if (!allowed || !shortest) return false;
    i += length;
  }
  return true;
}

// Whatever bytes a source file puts into a text, the part stays well-formed
// XML, and plain text (no escapes needed) reads back unchanged.
TEST(XmlWriterTest, AnyBytesGiveWellFormedXml) {
  ASSERT_FALSE(OnlyXmlCharacters("a\x01"));  // the check itself
  ASSERT_FALSE(OnlyXmlCharacters("\xC0\xAF"));
  ASSERT_TRUE(OnlyXmlCharacters("\xE3\x83\x95\t"));
  std::mt19937 random(4400);
  std::uniform_int_distribution<int> length(0, 40);
  std::uniform_int_distribution<int> byte(0, 255);
  for (int round = 0; round < 2000; ++round) {
    std::string text(static_cast<std::size_t>(length(random)), '\0');
    for (char& c : text) c = static_cast<char>(byte(random));
    XmlWriter writer;
    writer.DataElement("t", text, {{"v", text}});
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_string(writer.str().c_str());
    ASSERT_TRUE(parsed) << parsed.description() << " in " << writer.str();
    ASSERT_TRUE(OnlyXmlCharacters(writer.str())) << writer.str();
    std::string plain;
    for (char c : text) {
      if ((c >= 'a' && c <= 'z') || c == ' ' || c == '&' || c == '<') plain += c;
    }
    XmlWriter simple;
    simple.DataElement("t", plain, {{"v", plain}});
    ASSERT_TRUE(
        document.load_string(simple.str().c_str(), pugi::parse_default | pugi::parse_ws_pcdata));
    EXPECT_EQ(document.child("t").text().get(), plain);
    EXPECT_EQ(document.child("t").attribute("v").value(), plain);
  }
}

}  // namespace
}  // namespace z4400
