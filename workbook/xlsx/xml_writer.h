// A small streaming writer for the XML parts of a saved workbook: start
// tags, end tags, empty tags and data elements appended to one growing
// buffer, with every text and attribute value escaped on the way in.
#ifndef Z4400_WORKBOOK_XLSX_XML_WRITER_H_
#define Z4400_WORKBOOK_XLSX_XML_WRITER_H_

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace z4400 {

/// Longest text `FormatNumber` produces, plus room to spare.
inline constexpr std::size_t kNumberBufferSize = 32;

/// Writes `value` into `buffer` as the shortest decimal text that reads back
/// as the same double ("0.5", "1e+21", "-3"), the form the workbook's cells
/// and chart caches store. Returns the text (a view into `buffer`). NaN and
/// infinities come out as "NaN", "INF" and "-INF", the xsd:double spellings.
std::string_view FormatNumber(double value, char (&buffer)[kNumberBufferSize]);

/// One attribute of a tag: a name and a value given as text (escaped when
/// written) or as a number (formatted when the attribute is made).
class XmlAttribute {
 public:
  XmlAttribute(std::string_view name, std::string_view value) : name_(name), text_(value) {}
  XmlAttribute(std::string_view name, const char* value) : name_(name), text_(value) {}
  XmlAttribute(std::string_view name, const std::string& value) : name_(name), text_(value) {}
  template <std::integral Integer>
  requires(!std::same_as<Integer, bool>) XmlAttribute(std::string_view name, Integer value)
      : name_(name) {
    SetInteger(static_cast<long long>(value));
  }
  XmlAttribute(std::string_view name, double value);

  std::string_view name() const { return name_; }
  /// The value; numbers are already plain text that needs no escaping.
  std::string_view value() const { return is_number_ ? std::string_view(number_, length_) : text_; }
  bool is_number() const { return is_number_; }

 private:
  void SetInteger(long long value);

  std::string_view name_;
  std::string_view text_;
  char number_[kNumberBufferSize] = {};
  std::size_t length_ = 0;
  bool is_number_ = false;
};

using XmlAttributes = std::initializer_list<XmlAttribute>;

/// Appends escaped text to `out`: "&", "<", ">" and (for attribute values)
/// '"' become entities; control characters that XML cannot carry become the
/// workbook's "_xHHHH_" escapes, and an "_x" sequence that would read as such
/// an escape gets its underscore escaped; bytes that are not valid UTF-8 are
/// replaced by U+FFFD, so the part always stays well-formed.
void AppendEscaped(std::string& out, std::string_view text, bool attribute);

/// Builds one XML part. The declaration
/// `<?xml version="1.0" encoding="UTF-8" standalone="yes"?>` and a newline
/// open every part; elements follow without indentation. The writer does not
/// check nesting: callers write elements in schema order and close what they
/// open.
class XmlWriter {
 public:
  XmlWriter();
  /// Writes into `buffer`, emptied first: a part written before can hand
  /// its memory to the next one.
  explicit XmlWriter(std::string buffer);

  /// `<name a="v" …>`
  void StartTag(std::string_view name, XmlAttributes attributes = {});
  /// `</name>`
  void EndTag(std::string_view name);
  /// `<name a="v" …/>`
  void EmptyTag(std::string_view name, XmlAttributes attributes = {});
  /// `<name a="v" …>text</name>`, the text escaped.
  void DataElement(std::string_view name, std::string_view text, XmlAttributes attributes = {});
  /// `<name>number</name>` with the number in its shortest round-trip form.
  void NumberElement(std::string_view name, double value);

  /// Appends markup as it is, unescaped: for callers that write large runs
  /// of simple elements (cells, cached points) themselves for speed.
  std::string& raw() { return out_; }

  /// The part written so far.
  const std::string& str() const { return out_; }
  /// Takes the part out of the writer, leaving it empty.
  std::string Release() { return std::move(out_); }

 private:
  void AppendAttributes(XmlAttributes attributes);

  std::string out_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XML_WRITER_H_
