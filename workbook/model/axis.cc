#include "workbook/model/axis.h"

#include "common/runtime_failure.h"

namespace z4400 {

Axis::Axis(int32_t type) : type_(type), has_major_gridlines_(type == kXlValue) {}

TitleFormat& Axis::AxisTitle() {
  if (!has_title_) throw RuntimeFailure("The axis has no title");
  return title_;
}

const TitleFormat& Axis::AxisTitle() const { return const_cast<Axis*>(this)->AxisTitle(); }

void Axis::SetMinimumScale(double value) {
  minimum_ = value;
  minimum_is_auto_ = false;
}

void Axis::SetMaximumScale(double value) {
  maximum_ = value;
  maximum_is_auto_ = false;
}

void Axis::SetMajorUnit(double value) {
  if (!(value > 0)) throw RuntimeFailure("The major unit must be above 0");
  major_unit_ = value;
  major_unit_is_auto_ = false;
}

void Axis::SetScaleType(int32_t scale_type) {
  if (scale_type != kXlScaleLinear && scale_type != kXlScaleLogarithmic) {
    throw RuntimeFailure("Unknown axis scale type " + std::to_string(scale_type));
  }
  scale_type_ = scale_type;
}

void Axis::SetCrossesAt(double value) {
  crosses_at_ = value;
  crosses_ = kXlAxisCrossesCustom;
}

}  // namespace z4400
