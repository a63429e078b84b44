#include "charts/print_layout.h"

#include "charts/chart_formatter.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/reports/general_info_sheet.h"

namespace z4400 {
namespace {

constexpr char kSheetNameCode[] = "&A";
constexpr char kPageNumberText[] = "Page &P of &N";
constexpr char kEllipsis[] = "\u2026";

void SetSheetLayout(Sheet& sheet, const std::string& footer_name) {
  PageSetup& setup = sheet.PageSetup();
  setup.SetOrientation(kXlLandscape);
  if (sheet.Type() == SheetType::kWorksheet) {
    setup.SetZoom(0);
    setup.SetFitToPagesWide(1);
    setup.SetFitToPagesTall(0);
  }
  setup.SetLeftFooter(footer_name);
  setup.SetCenterFooter(kSheetNameCode);
  setup.SetRightFooter(kPageNumberText);
}

}  // namespace

std::string FooterFileName(std::string_view file_name) {
  std::string text;
  std::size_t characters = 0;
  for (std::size_t i = 0; i < file_name.size(); ++i) {
    const char c = file_name[i];
    const bool lead = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    if (lead && ++characters > kFooterNameCharacters) return text + kEllipsis;
    text += c;
    if (c == '&') text += '&';
  }
  return text;
}

void SetPrintLayout(Workbook& workbook, std::string_view source_file_name, int32_t screen_count) {
  const std::string footer_name = FooterFileName(source_file_name);
  for (const auto& sheet : workbook.sheets()) SetSheetLayout(*sheet, footer_name);

  Worksheet& report = workbook.Worksheets()(kReportSheet);
  for (int32_t screen = 1; screen < screen_count; ++screen) {
    report.HPageBreaks().Add(ReportBlockRow(screen));
  }
  const auto& charts = report.chart_objects();
  for (std::size_t i = 0; i < charts.size(); ++i) {
    PlaceScreenChart(*charts[i], report, static_cast<int32_t>(i));
  }
}

}  // namespace z4400
