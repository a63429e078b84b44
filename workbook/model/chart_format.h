// The small format objects of a chart: line (border), fill (interior),
// titles, legend and tick labels. Unset properties stay "automatic": the
// saved chart then shows the spreadsheet's default for them.
#ifndef Z4400_WORKBOOK_MODEL_CHART_FORMAT_H_
#define Z4400_WORKBOOK_MODEL_CHART_FORMAT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "workbook/model/xl_constants.h"

namespace z4400 {

/// A line: colour (red + 256 × green + 65536 × blue) and weight (`kXlHairline`,
/// `kXlThin`, `kXlMedium`, `kXlThick`).
class BorderFormat {
 public:
  std::optional<int32_t> Color() const { return color_; }
  void SetColor(int32_t color) { color_ = color; }
  std::optional<int32_t> Weight() const { return weight_; }
  void SetWeight(int32_t weight) { weight_ = weight; }
  friend bool operator==(const BorderFormat&, const BorderFormat&) = default;

 private:
  std::optional<int32_t> color_;
  std::optional<int32_t> weight_;
};

/// A fill colour.
class InteriorFormat {
 public:
  std::optional<int32_t> Color() const { return color_; }
  void SetColor(int32_t color) { color_ = color; }
  friend bool operator==(const InteriorFormat&, const InteriorFormat&) = default;

 private:
  std::optional<int32_t> color_;
};

/// The text of a chart or axis title.
class TitleFormat {
 public:
  const std::string& Text() const { return text_; }
  void SetText(std::string_view text) { text_ = std::string(text); }
  friend bool operator==(const TitleFormat&, const TitleFormat&) = default;

 private:
  std::string text_;
};

/// The legend: its placement code (`kXlLegendPositionRight` …).
class LegendFormat {
 public:
  int32_t Position() const { return position_; }
  void SetPosition(int32_t position) { position_ = position; }
  friend bool operator==(const LegendFormat&, const LegendFormat&) = default;

 private:
  int32_t position_ = kXlLegendPositionRight;
};

/// The tick labels of an axis: their number format ("General" when unset).
class TickLabelsFormat {
 public:
  std::optional<std::string> NumberFormat() const { return number_format_; }
  void SetNumberFormat(std::string_view format) { number_format_ = std::string(format); }
  friend bool operator==(const TickLabelsFormat&, const TickLabelsFormat&) = default;

 private:
  std::optional<std::string> number_format_;
};

/// An area of the chart (plot area, chart area): fill and outline.
class AreaFormat {
 public:
  InteriorFormat& Interior() { return interior_; }
  const InteriorFormat& Interior() const { return interior_; }
  BorderFormat& Border() { return border_; }
  const BorderFormat& Border() const { return border_; }
  friend bool operator==(const AreaFormat&, const AreaFormat&) = default;

 private:
  InteriorFormat interior_;
  BorderFormat border_;
};

/// Gridlines of an axis: their line.
class GridlinesFormat {
 public:
  BorderFormat& Border() { return border_; }
  const BorderFormat& Border() const { return border_; }
  friend bool operator==(const GridlinesFormat&, const GridlinesFormat&) = default;

 private:
  BorderFormat border_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CHART_FORMAT_H_
