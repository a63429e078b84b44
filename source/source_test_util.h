// Small instrument files written inline by the tests of the source readers.
#ifndef Z4400_SOURCE_SOURCE_TEST_UTIL_H_
#define Z4400_SOURCE_SOURCE_TEST_UTIL_H_

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/runtime_failure.h"
#include "source/source_reader.h"

namespace z4400::testing {

using Rows = std::vector<std::string>;

/// CSV text of `rows`, CR LF after every row.
inline std::string CsvText(const Rows& rows) {
  std::string text;
  for (const std::string& row : rows) text += row + "\r\n";
  return text;
}

/// The header rows of a CSV export of `model` with `screens` and `points`.
inline Rows CsvHeader(const std::string& model = "Z4510", int screens = 1, int points = 3) {
  return {"MODEL," + model,
          "SERIAL,Z-1",
          "TITLE,Test title",
          "DAY 30,YEAR 2021,MONTH 06",
          "TIME,11:49:17",
          "NBCTXT," + std::to_string(screens),
          "TP," + std::to_string(points)};
}

/// An XML document: root attributes, then `body` inside the root.
inline std::string XmlText(const std::string& body, const std::string& model = "Z4420") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<AnalyserData Model=\"" + model +
         "\" Year=\"2023\" Month=\"04\" Day=\"18\">\n" + body + "</AnalyserData>\n";
}

/// `<Parameter Id=.. Value=../>` elements.
inline std::string XmlParameters(std::initializer_list<std::pair<const char*, const char*>> list) {
  std::string text;
  for (const auto& [id, value] : list) {
    text += std::string("<Parameter Id=\"") + id + "\" Value=\"" + value + "\"/>\n";
  }
  return text;
}

/// A reader opened on `text` as a file named `name`.
inline std::unique_ptr<SourceReader> OpenText(const std::string& name, const std::string& text,
                                              int16_t* open_status = nullptr) {
  auto reader = std::make_unique<SourceReader>();
  const int16_t status = reader->OpenSourceBytes(name, text);
  if (open_status != nullptr) *open_status = status;
  return reader;
}

}  // namespace z4400::testing

#endif  // Z4400_SOURCE_SOURCE_TEST_UTIL_H_
