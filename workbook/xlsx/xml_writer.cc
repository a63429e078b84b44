#include "workbook/xlsx/xml_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace z4400 {
namespace {

constexpr std::string_view kDeclaration =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// Bytes that the escaping loop must look at; everything else is copied in
// runs.
constexpr std::array<bool, 256> MakeSpecialTable() {
  std::array<bool, 256> table{};
  for (int c = 0; c < 0x20; ++c) table[c] = true;
  for (int c = 0x80; c < 0x100; ++c) table[c] = true;
  table['&'] = table['<'] = table['>'] = table['"'] = table['_'] = true;
  return table;
}
constexpr std::array<bool, 256> kSpecial = MakeSpecialTable();

bool IsHex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// True when `text` at `i` starts an "_xHHHH_" sequence, which the
// spreadsheet reads as an escaped character.
bool StartsEscapeSequence(std::string_view text, std::size_t i) {
  if (i + 7 > text.size() || (text[i + 1] != 'x' && text[i + 1] != 'X') || text[i + 6] != '_') {
    return false;
  }
  return IsHex(text[i + 2]) && IsHex(text[i + 3]) && IsHex(text[i + 4]) && IsHex(text[i + 5]);
}

void AppendHexEscape(std::string& out, unsigned code) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  out += "_x00";
  out += kDigits[(code >> 4) & 0xF];
  out += kDigits[code & 0xF];
  out += '_';
}

// Length of the valid UTF-8 sequence at `i` (2 to 4), or 0 when the bytes
// there are not one (bad lead byte, bad continuation, overlong form,
// surrogate, beyond U+10FFFF, or the non-characters U+FFFE and U+FFFF that
// XML forbids).
std::size_t Utf8Length(std::string_view text, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned lead = byte(i);
  std::size_t length;
  std::uint32_t code;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, code = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, code = lead & 0x0F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, code = lead & 0x07;
  } else {
    return 0;
  }
  if (i + length > text.size()) return 0;
  for (std::size_t k = 1; k < length; ++k) {
    if ((byte(i + k) & 0xC0) != 0x80) return 0;
    code = (code << 6) | (byte(i + k) & 0x3F);
  }
  if ((length == 3 && code < 0x800) || (length == 4 && code < 0x10000) || code > 0x10FFFF ||
      (code >= 0xD800 && code <= 0xDFFF) || code == 0xFFFE || code == 0xFFFF) {
    return 0;
  }
  return length;
}

}  // namespace

std::string_view FormatNumber(double value, char (&buffer)[kNumberBufferSize]) {
  if (!std::isfinite(value)) {
    const std::string_view text = std::isnan(value) ? "NaN" : value > 0 ? "INF" : "-INF";
    return std::string_view(buffer, text.copy(buffer, kNumberBufferSize));
  }
  if (value == 0) value = 0;  // no "-0"
  const auto result = std::to_chars(buffer, buffer + kNumberBufferSize, value);
  return std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer));
}

XmlAttribute::XmlAttribute(std::string_view name, double value) : name_(name), is_number_(true) {
  length_ = FormatNumber(value, number_).size();
}

void XmlAttribute::SetInteger(long long value) {
  const auto result = std::to_chars(number_, number_ + kNumberBufferSize, value);
  length_ = static_cast<std::size_t>(result.ptr - number_);
  is_number_ = true;
}

void AppendEscaped(std::string& out, std::string_view text, bool attribute) {
  std::size_t run = 0;  // start of the bytes not yet copied
  std::size_t i = 0;
  while (i < text.size()) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (!kSpecial[c]) {
      ++i;
      continue;
    }
    std::size_t length = 1;
    std::string_view replacement;
    if (c >= 0x80) {
      length = Utf8Length(text, i);
      if (length != 0) {  // valid multi-byte character: copy as it is
        i += length;
        continue;
      }
      length = 1;
      replacement = kReplacement;
    } else if (c == '&') {
      replacement = "&amp;";
    } else if (c == '<') {
      replacement = "&lt;";
    } else if (c == '>') {
      replacement = "&gt;";
    } else if (c == '"') {
      if (!attribute) {
        ++i;
        continue;
      }
      replacement = "&quot;";
    } else if (c == '_') {
      if (!StartsEscapeSequence(text, i)) {
        ++i;
        continue;
      }
      replacement = "_x005F_";
    } else if (c == '\t' || c == '\n') {
      if (!attribute) {
        ++i;
        continue;
      }
      replacement = c == '\t' ? "&#9;" : "&#10;";
    } else if (c == '\r') {
      replacement = "&#13;";
    }
    out.append(text.substr(run, i - run));
    if (replacement.empty()) {
      AppendHexEscape(out, c);
    } else {
      out.append(replacement);
    }
    i += length;
    run = i;
  }
  out.append(text.substr(run));
}

XmlWriter::XmlWriter() { out_.append(kDeclaration); }

XmlWriter::XmlWriter(std::string buffer) : out_(std::move(buffer)) {
  out_.clear();
  out_.append(kDeclaration);
}

void XmlWriter::AppendAttributes(XmlAttributes attributes) {
  for (const XmlAttribute& attribute : attributes) {
    out_ += ' ';
    out_.append(attribute.name());
    out_.append("=\"");
    if (attribute.is_number()) {
      out_.append(attribute.value());
    } else {
      AppendEscaped(out_, attribute.value(), true);
    }
    out_ += '"';
  }
}

void XmlWriter::StartTag(std::string_view name, XmlAttributes attributes) {
  out_ += '<';
  out_.append(name);
  AppendAttributes(attributes);
  out_ += '>';
}

void XmlWriter::EndTag(std::string_view name) {
  out_.append("</");
  out_.append(name);
  out_ += '>';
}

void XmlWriter::EmptyTag(std::string_view name, XmlAttributes attributes) {
  out_ += '<';
  out_.append(name);
  AppendAttributes(attributes);
  out_.append("/>");
}

void XmlWriter::DataElement(std::string_view name, std::string_view text,
                            XmlAttributes attributes) {
  StartTag(name, attributes);
  AppendEscaped(out_, text, false);
  EndTag(name);
}

void XmlWriter::NumberElement(std::string_view name, double value) {
  char buffer[kNumberBufferSize];
  StartTag(name);
  out_.append(FormatNumber(value, buffer));
  EndTag(name);
}

}  // namespace z4400
