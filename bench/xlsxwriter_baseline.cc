#include "bench/xlsxwriter_baseline.h"

#include <fcntl.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <cstdlib>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace z4400 {
namespace {

struct BaselineScreen {
  std::map<std::string, std::string> parameters;
  std::vector<std::map<std::string, std::string>> markers;
  std::vector<std::vector<double>> traces;
};

/// Reads every parameter, marker and trace level of the file.
std::vector<BaselineScreen> ReadWithPugixml(const std::filesystem::path& source, int* points) {
  pugi::xml_document document;
  document.load_file(source.c_str());
  const pugi::xml_node root = document.child("AnalyserData");
  *points = root.find_child_by_attribute("Parameter", "Id", "TP").attribute("Value").as_int();
  std::vector<BaselineScreen> screens;
  for (const pugi::xml_node context : root.children("Context")) {
    BaselineScreen& screen = screens.emplace_back();
    for (const pugi::xml_node parameter : context.children("Parameter")) {
      screen.parameters[parameter.attribute("Id").value()] = parameter.attribute("Value").value();
    }
    for (const pugi::xml_node marker : context.children("Marker")) {
      auto& values = screen.markers.emplace_back();
      for (const pugi::xml_node parameter : marker.children("Parameter")) {
        values[parameter.attribute("Id").value()] = parameter.attribute("Value").value();
      }
    }
    for (const pugi::xml_node trace : context.children("Trace")) {
      std::vector<double>& levels =
          screen.traces.emplace_back(static_cast<size_t>(*points), -200.0);
      for (const pugi::xml_node item : trace.child("Table").children("Item")) {
        const int point = item.attribute("Point").as_int(-1);
        if (point >= 0 && point < *points)
          levels[static_cast<size_t>(point)] = item.attribute("Lvl").as_double();
      }
    }
  }
  return screens;
}

}  // namespace

bool WriteWithLibxlsxwriter(const std::filesystem::path& source,
                            const std::filesystem::path& output) {
  int points = 0;
  const std::vector<BaselineScreen> screens = ReadWithPugixml(source, &points);
  lxw_workbook* workbook = workbook_new(output.c_str());
  lxw_worksheet* report = workbook_add_worksheet(workbook, "Report");
  lxw_worksheet* raw = workbook_add_worksheet(workbook, "Raw Data");
  lxw_worksheet* details = workbook_add_worksheet(workbook, "Markers Details");
  lxw_format* bold = workbook_add_format(workbook);
  format_set_bold(bold);
  lxw_format* italic = workbook_add_format(workbook);
  format_set_italic(italic);
  lxw_format* number = workbook_add_format(workbook);
  format_set_num_format(number, "0.###");
  worksheet_set_column(raw, 0, 0, 18, italic);
  worksheet_set_column(raw, 1, 5, 10, nullptr);
  worksheet_set_column(report, 0, 0, 18, nullptr);
  for (lxw_worksheet* sheet : {report, raw}) {
    worksheet_write_string(
        sheet, 0, 0, sheet == report ? "Measurement Report" : "Configuration and Traces", bold);
    const char* labels[] = {"File name", source.c_str(), "Instrument reference", "Date", "Title"};
    for (int row = 0; row < 5; ++row) {
      worksheet_write_string(sheet, static_cast<lxw_row_t>(row + 1), 0, labels[row], nullptr);
      worksheet_write_string(sheet, static_cast<lxw_row_t>(row + 1), 1, "value", number);
    }
  }
  worksheet_write_string(details, 0, 0, "Markers Detailed Report", bold);
  const char* const kIds[] = {"CF", "SP", "FA", "FB", "FO", "SW",
                              "RB", "VB", "RL", "RO", "DD", "ATDUALCH"};
  const char* const kColors[] = {"0000FF", "8B4513", "CD5C5C", "FFAAC8", "FF9600"};
  int details_row = 2;
  std::vector<std::shared_ptr<void>> keep;
  for (size_t s = 0; s < screens.size(); ++s) {
    const BaselineScreen& screen = screens[s];
    // Configuration block on "Report" and again on "Raw Data".
    const lxw_row_t block = static_cast<lxw_row_t>(s * 17 + 8);
    for (lxw_worksheet* sheet : {report, raw}) {
      worksheet_write_string(sheet, block, 0, "Screen", bold);
      worksheet_write_number(sheet, block, 1, static_cast<double>(s + 1), bold);
      lxw_row_t row = block + 1;
      for (const char* id : kIds) {
        const auto found = screen.parameters.find(id);
        worksheet_write_string(sheet, row, 0, id, nullptr);
        worksheet_write_number(
            sheet, row, 1, found == screen.parameters.end() ? 0 : std::atof(found->second.c_str()),
            number);
        worksheet_write_string(sheet, row++, 2, "Hz", nullptr);
      }
    }
    // X values and the two value columns of each trace.
    const lxw_row_t top = static_cast<lxw_row_t>((points + 6) * static_cast<int>(s) + 11);
    worksheet_write_string(raw, top - 3, 4, "Screen ", bold);
    worksheet_write_string(raw, top - 1, 4, "X raw GHz", bold);
    const double start = std::atof(screen.parameters.at("FA").c_str());
    const double stop = std::atof(screen.parameters.at("FB").c_str());
    for (int k = 0; k < points; ++k) {
      worksheet_write_number(raw, top + static_cast<lxw_row_t>(k), 4, k, nullptr);
      worksheet_write_number(raw, top + static_cast<lxw_row_t>(k), 5,
                             (start + (stop - start) * k / (points - 1)) / 1e9, nullptr);
    }
    for (size_t t = 0; t < screen.traces.size(); ++t) {
      const lxw_col_t column = static_cast<lxw_col_t>(4 * t + 8);
      worksheet_set_column(raw, column, column + 2, 12, nullptr);
      worksheet_set_column(raw, column + 3, column + 3, 1, nullptr);
      worksheet_write_string(raw, top - 1, column, "Y raw dBm", bold);
      for (int k = 0; k < points; ++k) {
        const double level = screen.traces[t][static_cast<size_t>(k)];
        worksheet_write_number(raw, top + static_cast<lxw_row_t>(k), column, level, nullptr);
        worksheet_write_number(raw, top + static_cast<lxw_row_t>(k), column + 1, level, nullptr);
      }
    }
    // The marker list.
    for (const auto& marker : screen.markers) {
      worksheet_write_string(details, static_cast<lxw_row_t>(details_row), 0,
                             marker.at("MKRTRACE").c_str(), nullptr);
      worksheet_write_number(details, static_cast<lxw_row_t>(details_row), 1,
                             std::atof(marker.at("MKRPOSX").c_str()), number);
      worksheet_write_number(details, static_cast<lxw_row_t>(details_row++), 2,
                             std::atof(marker.at("MKRPOSY").c_str()), number);
    }
    // The chart with its series, marked points and labels.
    lxw_chart* chart = workbook_add_chart(workbook, LXW_CHART_SCATTER_STRAIGHT);
    const std::string title = "Screen " + std::to_string(s + 1) + " Traces";
    chart_title_set_name(chart, title.c_str());
    const std::string rows = std::to_string(top + 1) + ":$";
    const std::string end = std::to_string(top + 1 + static_cast<lxw_row_t>(points));
    std::string x_range = "='Raw Data'!$F$";
    x_range.append(rows).append("F$").append(end);
    std::vector<std::vector<lxw_chart_data_label>> labels(
        screen.traces.size(), std::vector<lxw_chart_data_label>(static_cast<size_t>(points)));
    std::vector<std::vector<lxw_chart_point>> marked(
        screen.traces.size(), std::vector<lxw_chart_point>(static_cast<size_t>(points)));
    lxw_chart_line marker_line = {};
    marker_line.color = 0x00FFFF;
    lxw_chart_fill marker_fill = {};
    marker_fill.color = 0xFF0000;
    std::vector<std::string> label_texts;
    label_texts.reserve(screen.markers.size());
    for (size_t t = 0; t < labels.size(); ++t) {
      for (auto& label : labels[t]) label.hide = 1;
    }
    for (size_t m = 0; m < screen.markers.size(); ++m) {
      const auto& marker = screen.markers[m];
      const size_t t = static_cast<size_t>(marker.at("MKRTRACE")[0] - 'A');
      const size_t point = static_cast<size_t>(std::atoi(marker.at("MKRINDEX").c_str()));
      if (t >= labels.size() || point >= static_cast<size_t>(points)) continue;
      label_texts.push_back(std::to_string(m + 1));
      labels[t][point].hide = 0;
      labels[t][point].value = label_texts.back().data();
      marked[t][point].line = &marker_line;
      marked[t][point].fill = &marker_fill;
    }
    std::vector<std::vector<lxw_chart_data_label*>> label_lists(labels.size());
    std::vector<std::vector<lxw_chart_point*>> point_lists(labels.size());
    std::vector<lxw_chart_line> lines(screen.traces.size());
    for (size_t t = 0; t < screen.traces.size(); ++t) {
      char column_name[8];
      lxw_col_to_name(column_name, static_cast<lxw_col_t>(4 * t + 9), 0);
      std::string values = "='Raw Data'!$";
      values.append(column_name)
          .append("$")
          .append(rows)
          .append(column_name)
          .append("$")
          .append(end);
      lxw_chart_series* series = chart_add_series(chart, x_range.c_str(), values.c_str());
      const std::string name = "Trace " + std::to_string(t + 1);
      chart_series_set_name(series, name.c_str());
      lines[t] = {};
      lines[t].color = static_cast<lxw_color_t>(std::strtol(kColors[t % 5], nullptr, 16));
      lines[t].width = 1;
      chart_series_set_line(series, &lines[t]);
      for (auto& label : labels[t]) label_lists[t].push_back(&label);
      label_lists[t].push_back(nullptr);
      for (auto& point : marked[t]) point_lists[t].push_back(&point);
      point_lists[t].push_back(nullptr);
      chart_series_set_labels(series);
      chart_series_set_labels_custom(series, label_lists[t].data());
      chart_series_set_points(series, point_lists[t].data());
    }
    chart_axis_set_name(chart->x_axis, "Frequency (GHz)");
    chart_axis_set_name(chart->y_axis, "Level (dBm)");
    chart_axis_set_min(chart->x_axis, start / 1e9);
    chart_axis_set_max(chart->x_axis, stop / 1e9);
    chart_axis_set_major_unit(chart->x_axis, (stop - start) / 1e10);
    chart_axis_set_num_format(chart->x_axis, "0.00");
    chart_axis_set_num_format(chart->y_axis, "0.0");
    lxw_chart_line grid = {};
    grid.color = 0xFFFACD;
    chart_axis_major_gridlines_set_visible(chart->x_axis, LXW_TRUE);
    chart_axis_major_gridlines_set_line(chart->x_axis, &grid);
    chart_axis_major_gridlines_set_line(chart->y_axis, &grid);
    lxw_chart_fill plot = {};
    plot.color = 0xC8C8C7;
    chart_plotarea_set_fill(chart, &plot);
    chart_legend_set_position(chart, LXW_CHART_LEGEND_BOTTOM);
    worksheet_insert_chart(report, block, 3, chart);
    // Keep what the series settings point to until the workbook is closed.
    keep.push_back(std::make_shared<decltype(labels)>(std::move(labels)));
    keep.push_back(std::make_shared<decltype(marked)>(std::move(marked)));
    keep.push_back(std::make_shared<decltype(label_lists)>(std::move(label_lists)));
    keep.push_back(std::make_shared<decltype(point_lists)>(std::move(point_lists)));
    keep.push_back(std::make_shared<decltype(label_texts)>(std::move(label_texts)));
  }
  if (workbook_close(workbook) != LXW_NO_ERROR) return false;
  // Our save reaches the disk before it replaces the file (fsync): the
  // comparison saves as durably.
  const int fd = ::open(output.c_str(), O_RDONLY);
  const bool synced = fd >= 0 && ::fsync(fd) == 0;
  if (fd >= 0) ::close(fd);
  return synced;
}

}  // namespace z4400
