#include "workbook/xlsx/xlsx_package_layout.h"

#include <cstddef>

namespace z4400 {

void PackageLayout::Number(const std::vector<int>& chart_counts) {
  int worksheets = 0;
  int chartsheets = 0;
  int drawings = 0;
  int charts = 0;
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    SheetLayout& sheet = sheets[i];
    sheet.part_number = sheet.kind == SheetKind::kWorksheet ? ++worksheets : ++chartsheets;
    const int count = i < chart_counts.size() ? chart_counts[i] : 0;
    sheet.drawing_number = count > 0 ? ++drawings : 0;
    sheet.chart_numbers.clear();
    for (int k = 0; k < count; ++k) sheet.chart_numbers.push_back(++charts);
  }
}

int PackageLayout::worksheet_count() const {
  int count = 0;
  for (const SheetLayout& sheet : sheets) count += sheet.kind == SheetKind::kWorksheet;
  return count;
}

int PackageLayout::chartsheet_count() const {
  return static_cast<int>(sheets.size()) - worksheet_count();
}

int PackageLayout::drawing_count() const {
  int count = 0;
  for (const SheetLayout& sheet : sheets) count += sheet.drawing_number != 0;
  return count;
}

int PackageLayout::chart_count() const {
  int count = 0;
  for (const SheetLayout& sheet : sheets) count += static_cast<int>(sheet.chart_numbers.size());
  return count;
}

std::string SheetPartName(const SheetLayout& sheet) {
  const char* folder = sheet.kind == SheetKind::kWorksheet ? "xl/worksheets/" : "xl/chartsheets/";
  return folder + std::string("sheet") + std::to_string(sheet.part_number) + ".xml";
}

std::string DrawingPartName(int number) {
  return "xl/drawings/drawing" + std::to_string(number) + ".xml";
}

std::string ChartPartName(int number) {
  return "xl/charts/chart" + std::to_string(number) + ".xml";
}

std::string RelsPartName(const std::string& part_name) {
  const std::size_t slash = part_name.rfind('/');
  if (slash == std::string::npos) return "_rels/" + part_name + ".rels";
  return part_name.substr(0, slash + 1) + "_rels/" + part_name.substr(slash + 1) + ".rels";
}

}  // namespace z4400
