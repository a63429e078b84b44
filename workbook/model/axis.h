// One axis of a chart: title, scale bounds and step (each fixed or
// automatic), linear or logarithmic scale, tick labels, gridlines and where
// the other axis crosses it.
#ifndef Z4400_WORKBOOK_MODEL_AXIS_H_
#define Z4400_WORKBOOK_MODEL_AXIS_H_

#include <cstdint>

#include "workbook/model/chart_format.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {

/// A chart axis, `kXlCategory` (X) or `kXlValue` (Y). Setting a bound or a
/// unit makes it fixed; setting its `…IsAuto` flag to true makes it
/// automatic again.
class Axis {
 public:
  explicit Axis(int32_t type);

  int32_t Type() const { return type_; }

  bool HasTitle() const { return has_title_; }
  void SetHasTitle(bool has_title) { has_title_ = has_title; }
  /// The title. Throws `RuntimeFailure` when the axis has no title.
  TitleFormat& AxisTitle();
  const TitleFormat& AxisTitle() const;

  double MinimumScale() const { return minimum_; }
  /// Fixes the lower bound.
  void SetMinimumScale(double value);
  bool MinimumScaleIsAuto() const { return minimum_is_auto_; }
  void SetMinimumScaleIsAuto(bool is_auto) { minimum_is_auto_ = is_auto; }

  double MaximumScale() const { return maximum_; }
  void SetMaximumScale(double value);
  bool MaximumScaleIsAuto() const { return maximum_is_auto_; }
  void SetMaximumScaleIsAuto(bool is_auto) { maximum_is_auto_ = is_auto; }

  double MajorUnit() const { return major_unit_; }
  /// Fixes the step between major ticks. Throws `RuntimeFailure` unless
  /// `value` is above 0.
  void SetMajorUnit(double value);
  bool MajorUnitIsAuto() const { return major_unit_is_auto_; }
  void SetMajorUnitIsAuto(bool is_auto) { major_unit_is_auto_ = is_auto; }

  /// `kXlScaleLinear` or `kXlScaleLogarithmic`.
  int32_t ScaleType() const { return scale_type_; }
  /// Throws `RuntimeFailure` for any other code.
  void SetScaleType(int32_t scale_type);

  TickLabelsFormat& TickLabels() { return tick_labels_; }
  const TickLabelsFormat& TickLabels() const { return tick_labels_; }
  int32_t TickLabelPosition() const { return tick_label_position_; }
  void SetTickLabelPosition(int32_t position) { tick_label_position_ = position; }

  bool HasMajorGridlines() const { return has_major_gridlines_; }
  void SetHasMajorGridlines(bool has) { has_major_gridlines_ = has; }
  /// The major gridlines' format (kept even while they are hidden).
  GridlinesFormat& MajorGridlines() { return major_gridlines_; }
  const GridlinesFormat& MajorGridlines() const { return major_gridlines_; }
  bool HasMinorGridlines() const { return has_minor_gridlines_; }
  void SetHasMinorGridlines(bool has) { has_minor_gridlines_ = has; }
  GridlinesFormat& MinorGridlines() { return minor_gridlines_; }
  const GridlinesFormat& MinorGridlines() const { return minor_gridlines_; }

  /// Where the other axis crosses this one: `kXlAxisCrossesAutomatic`,
  /// `kXlAxisCrossesMinimum`, `kXlAxisCrossesMaximum` or
  /// `kXlAxisCrossesCustom` (at `CrossesAt`).
  int32_t Crosses() const { return crosses_; }
  void SetCrosses(int32_t crosses) { crosses_ = crosses; }
  double CrossesAt() const { return crosses_at_; }
  /// Sets the crossing value and makes the crossing custom.
  void SetCrossesAt(double value);

  BorderFormat& Border() { return border_; }
  const BorderFormat& Border() const { return border_; }

  friend bool operator==(const Axis&, const Axis&) = default;

 private:
  int32_t type_;
  bool has_title_ = false;
  TitleFormat title_;
  double minimum_ = 0;
  bool minimum_is_auto_ = true;
  double maximum_ = 0;
  bool maximum_is_auto_ = true;
  double major_unit_ = 0;
  bool major_unit_is_auto_ = true;
  int32_t scale_type_ = kXlScaleLinear;
  TickLabelsFormat tick_labels_;
  int32_t tick_label_position_ = kXlTickLabelPositionNextToAxis;
  bool has_major_gridlines_;
  GridlinesFormat major_gridlines_;
  bool has_minor_gridlines_ = false;
  GridlinesFormat minor_gridlines_;
  int32_t crosses_ = kXlAxisCrossesAutomatic;
  double crosses_at_ = 0;
  BorderFormat border_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_AXIS_H_
