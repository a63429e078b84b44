// libFuzzer target over the .xlsx writer: the input's bytes become cell
// texts, numbers, a chart title, a series name and a data label of a small
// workbook, which is written to memory. Every part must come out as
// well-formed XML made only of characters XML allows, whatever the texts
// hold; a run-time failure of the model (a name it refuses) is a clean
// outcome.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "common/runtime_failure.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace {

// Valid UTF-8 of characters XML allows (tab, line feed, carriage return,
// and from U+0020 on, without surrogates, U+FFFE and U+FFFF).
bool OnlyXmlCharacters(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if ((lead >= 0x80 && lead < 0xC2) || lead > 0xF4 || i + length > text.size()) return false;
    std::uint32_t code = length == 1 ? lead : lead & (0x3F >> (length - 1));
    for (std::size_t k = 1; k < length; ++k) {
      const unsigned char next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    const bool shortest = length == 1 || (length == 2 && code >= 0x80) ||
                          (length == 3 && code >= 0x800) || (length == 4 && code >= 0x10000);
    const bool allowed = code == 0x9 || code == 0xA || code == 0xD ||
                         (code >= 0x20 && code <= 0xD7FF) || (code >= 0xE000 && code <= 0xFFFD) ||
                         (code >= 0x10000 && code <= 0x10FFFF);
    if (!shortest || !allowed) return false;
    i += length;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string_view first = bytes.substr(0, bytes.size() / 2);
  const std::string_view second = bytes.substr(bytes.size() / 2);
  z4400::Application app;
  try {
    z4400::Workbook& book = app.Workbooks().Add();
    z4400::Worksheet& sheet = book.Worksheets()(1);
    sheet.StoreValue(1, 1, z4400::CellValue(first));
    sheet.StoreValue(1, 2, z4400::CellValue(std::string(second)));
    for (std::size_t i = 0; i + 8 <= bytes.size() && i < 64; i += 8) {
      double number;
      std::memcpy(&number, bytes.data() + i, sizeof number);
      sheet.StoreValue(static_cast<int>(2 + i / 8), 1, z4400::CellValue(number));
    }
    z4400::Chart& chart = sheet.ChartObjects().Add(10, 10, 300, 200).Chart();
    chart.SetChartType(z4400::kXlXYScatterLinesNoMarkers);
    z4400::Series& series = chart.SeriesCollection().NewSeries();
    series.SetName(first);
    series.SetXValues(sheet.Range("A2:A9"));
    series.SetValues(sheet.Range("A2:A9"));
    chart.SetHasTitle(true);
    chart.ChartTitle().SetText(second);
    if (series.PointCount() > 0) {
      series.Points(1).SetHasDataLabel(true);
      series.Points(1).DataLabel().SetText(bytes);
    }
    z4400::WriteXlsxParts(book, {}, [](std::string_view name, std::string_view part) {
      pugi::xml_document document;
      if (!document.load_buffer(part.data(), part.size()) || !OnlyXmlCharacters(part)) {
        std::fprintf(stderr, "bad part %.*s\n", static_cast<int>(name.size()), name.data());
        std::abort();
      }
      return true;
    });
  } catch (const z4400::RuntimeFailure&) {
    // The model refused a value: the converter's failure path.
  }
  return 0;
}
