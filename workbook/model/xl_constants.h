// The spreadsheet application's published constants that the converter
// passes to the workbook: window states, chart types, placements, legend and
// tick-label positions, marker styles, line weights and colour indexes.
#ifndef Z4400_WORKBOOK_MODEL_XL_CONSTANTS_H_
#define Z4400_WORKBOOK_MODEL_XL_CONSTANTS_H_

#include <cstdint>

namespace z4400 {

// Window states.
inline constexpr int32_t kXlMaximized = -4137;
inline constexpr int32_t kXlMinimized = -4140;
inline constexpr int32_t kXlNormal = -4143;

// Save-as access mode.
inline constexpr int32_t kXlNoChange = 1;

// Page orientations.
inline constexpr int32_t kXlPortrait = 1;
inline constexpr int32_t kXlLandscape = 2;

// Axis types and groups.
inline constexpr int32_t kXlCategory = 1;
inline constexpr int32_t kXlValue = 2;
inline constexpr int32_t kXlPrimary = 1;

// Chart types.
inline constexpr int32_t kXlColumnClustered = 51;
inline constexpr int32_t kXlXYScatter = -4169;
inline constexpr int32_t kXlXYScatterSmooth = 72;
inline constexpr int32_t kXlXYScatterSmoothNoMarkers = 73;
inline constexpr int32_t kXlXYScatterLines = 74;
inline constexpr int32_t kXlXYScatterLinesNoMarkers = 75;

// Chart placement (`Location`).
inline constexpr int32_t kXlLocationAsNewSheet = 1;
inline constexpr int32_t kXlLocationAsObject = 2;
inline constexpr int32_t kXlLocationAutomatic = 3;

// Legend positions.
inline constexpr int32_t kXlLegendPositionBottom = -4107;
inline constexpr int32_t kXlLegendPositionCorner = 2;
inline constexpr int32_t kXlLegendPositionLeft = -4131;
inline constexpr int32_t kXlLegendPositionRight = -4152;
inline constexpr int32_t kXlLegendPositionTop = -4160;

// Tick label positions.
inline constexpr int32_t kXlTickLabelPositionHigh = -4127;
inline constexpr int32_t kXlTickLabelPositionLow = -4134;
inline constexpr int32_t kXlTickLabelPositionNextToAxis = 4;
inline constexpr int32_t kXlTickLabelPositionNone = -4142;

// Axis scale types.
inline constexpr int32_t kXlScaleLinear = -4132;
inline constexpr int32_t kXlScaleLogarithmic = -4133;

// Where the other axis crosses.
inline constexpr int32_t kXlAxisCrossesAutomatic = -4105;
inline constexpr int32_t kXlAxisCrossesCustom = -4114;
inline constexpr int32_t kXlAxisCrossesMaximum = 2;
inline constexpr int32_t kXlAxisCrossesMinimum = 4;

// Marker styles.
inline constexpr int32_t kXlMarkerStyleAutomatic = -4105;
inline constexpr int32_t kXlMarkerStyleNone = -4142;
inline constexpr int32_t kXlMarkerStyleSquare = 1;
inline constexpr int32_t kXlMarkerStyleDiamond = 2;
inline constexpr int32_t kXlMarkerStyleTriangle = 3;
inline constexpr int32_t kXlMarkerStyleX = -4168;
inline constexpr int32_t kXlMarkerStyleStar = 5;
inline constexpr int32_t kXlMarkerStyleDot = -4118;
inline constexpr int32_t kXlMarkerStyleDash = -4115;
inline constexpr int32_t kXlMarkerStyleCircle = 8;
inline constexpr int32_t kXlMarkerStylePlus = 9;

// Data label types.
inline constexpr int32_t kXlDataLabelsShowNone = -4142;
inline constexpr int32_t kXlDataLabelsShowValue = 2;

// Colour index "none" (no fill) and automatic.
inline constexpr int32_t kXlColorIndexNone = -4142;
inline constexpr int32_t kXlColorIndexAutomatic = -4105;

// Border (line) weights.
inline constexpr int32_t kXlHairline = 1;
inline constexpr int32_t kXlThin = 2;
inline constexpr int32_t kXlMedium = -4138;
inline constexpr int32_t kXlThick = 4;

/// A colour as the workbook stores it: red + 256 × green + 65536 × blue.
constexpr int32_t RgbColor(int red, int green, int blue) {
  return red + 256 * green + 65536 * blue;
}

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_XL_CONSTANTS_H_
