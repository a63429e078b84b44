#include "workbook/xlsx/xlsx_writer.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <vector>

#include "common/runtime_failure.h"
#include "workbook/model/chart_sheet.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/package/atomic_file.h"
#include "workbook/package/deflate.h"
#include "workbook/package/zip_writer.h"
#include "workbook/xlsx/xlsx_chart_part.h"
#include "workbook/xlsx/xlsx_chartsheet_part.h"
#include "workbook/xlsx/xlsx_drawing_part.h"
#include "workbook/xlsx/xlsx_package_layout.h"
#include "workbook/xlsx/xlsx_package_parts.h"
#include "workbook/xlsx/xlsx_sheet_part.h"
#include "workbook/xlsx/xlsx_styles_part.h"

namespace z4400 {
namespace {

PackageLayout MakeLayout(const Workbook& workbook) {
  PackageLayout layout;
  std::vector<int> chart_counts;
  for (const auto& sheet : workbook.sheets()) {
    SheetLayout entry;
    entry.name = sheet->Name();
    if (sheet->Type() == SheetType::kWorksheet) {
      entry.kind = SheetKind::kWorksheet;
      const auto& worksheet = static_cast<const Worksheet&>(*sheet);
      chart_counts.push_back(static_cast<int>(worksheet.chart_objects().size()));
      entry.filter = worksheet.AutoFilter();
    } else {
      entry.kind = SheetKind::kChartsheet;
      chart_counts.push_back(1);
    }
    layout.sheets.push_back(std::move(entry));
  }
  layout.Number(chart_counts);
  if (workbook.active_sheet() != nullptr) {
    layout.active_sheet = static_cast<int>(workbook.PositionOf(*workbook.active_sheet()));
  }
  layout.has_shared_strings = workbook.SharedStrings().size() > 0;
  return layout;
}

/// The memory one thread's saves reuse from workbook to workbook: the
/// buffer the sheets and charts are written into, as large as the largest
/// part so far.
std::string& PartBuffer() {
  thread_local std::string buffer;
  return buffer;
}

/// The compressor of one thread's saves at `level`, kept for the next save.
Deflater& SaveDeflater(int level) {
  thread_local std::unique_ptr<Deflater> deflater;
  if (!deflater || deflater->level() != std::clamp(level, 0, 12)) {
    deflater = std::make_unique<Deflater>(level);
  }
  return *deflater;
}

// The sheets, their drawings and their charts; fills `tables`.
bool WriteSheets(const Workbook& workbook, const PackageLayout& layout, CellTables& tables,
                 const XlsxPartSink& sink) {
  std::string& buffer = PartBuffer();
  for (std::size_t i = 0; i < layout.sheets.size(); ++i) {
    const SheetLayout& entry = layout.sheets[i];
    const Sheet& sheet = *workbook.sheets()[i];
    const bool selected = static_cast<int>(i) == layout.active_sheet;
    const bool has_drawing = entry.drawing_number != 0;
    const std::string part = SheetPartName(entry);
    std::vector<const Chart*> charts;
    if (entry.kind == SheetKind::kWorksheet) {
      const auto& worksheet = static_cast<const Worksheet&>(sheet);
      buffer = WriteSheetPart(worksheet, tables, selected, has_drawing, std::move(buffer));
      if (!sink(part, buffer)) return false;
      if (has_drawing &&
          !sink(DrawingPartName(entry.drawing_number), WriteWorksheetDrawing(worksheet))) {
        return false;
      }
      for (const auto& object : worksheet.chart_objects()) charts.push_back(&object->Chart());
    } else {
      if (!sink(part, WriteChartsheetPart(selected, sheet.PageSetup()))) return false;
      if (!sink(DrawingPartName(entry.drawing_number), WriteChartsheetDrawing())) return false;
      charts.push_back(&static_cast<const ChartSheet&>(sheet).Chart());
    }
    if (!has_drawing) continue;
    const std::string drawing = DrawingPartName(entry.drawing_number);
    if (!sink(RelsPartName(part),
              WriteRelationships({{rel_type::kDrawing, "../drawings/" + drawing.substr(12)}})) ||
        !sink(RelsPartName(drawing), WriteDrawingRelationships(entry.chart_numbers))) {
      return false;
    }
    for (std::size_t k = 0; k < charts.size(); ++k) {
      buffer = WriteChartPart(*charts[k], tables.numbers(), std::move(buffer));
      if (!sink(ChartPartName(entry.chart_numbers[k]), buffer)) return false;
    }
  }
  return true;
}

}  // namespace

bool WriteXlsxParts(const Workbook& workbook, const XlsxOptions& options,
                    const XlsxPartSink& sink) {
  if (workbook.sheets().empty()) throw RuntimeFailure("The workbook has no sheet to save");
  const PackageLayout layout = MakeLayout(workbook);
  if (!sink("[Content_Types].xml", WriteContentTypes(layout)) ||
      !sink("_rels/.rels", WriteRootRelationships()) ||
      !sink("docProps/app.xml", WriteAppProperties(layout)) ||
      !sink("docProps/core.xml", WriteCoreProperties({options.creator, options.created})) ||
      !sink("xl/workbook.xml", WriteWorkbookPart(layout)) ||
      !sink("xl/_rels/workbook.xml.rels", WriteWorkbookRelationships(layout))) {
    return false;
  }
  XlsxStyles styles(workbook.Styles());
  CellTables tables(workbook.SharedStrings(), styles);
  if (!WriteSheets(workbook, layout, tables, sink)) return false;
  if (!sink("xl/styles.xml", styles.WritePart())) return false;
  return !layout.has_shared_strings ||
         sink("xl/sharedStrings.xml", tables.shared_strings().WritePart());
}

bool SaveXlsx(const Workbook& workbook, const std::filesystem::path& path, std::string* error) {
  return SaveXlsx(workbook, path, XlsxOptions{}, error);
}

bool SaveXlsx(const Workbook& workbook, const std::filesystem::path& path,
              const XlsxOptions& options, std::string* error) {
  const auto write = [&](const std::filesystem::path& temporary) {
    ZipWriter zip(temporary, SaveDeflater(options.compression_level));
    try {
      const auto add = [&](std::string_view name, std::string_view bytes) {
        return zip.AddMember(name, bytes);
      };
      if (WriteXlsxParts(workbook, options, add) && zip.Finish()) return true;
    } catch (const std::exception& failure) {
      if (error != nullptr) *error = failure.what();
      return false;
    }
    if (error != nullptr) *error = zip.error();
    return false;
  };
  return WriteAtomically(path, write, error, options.durability);
}

}  // namespace z4400
