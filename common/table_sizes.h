// The sizes of the fixed per-screen tables the readers, the sheet writers
// and the conversion driver share.
#ifndef Z4400_COMMON_TABLE_SIZES_H_
#define Z4400_COMMON_TABLE_SIZES_H_

namespace z4400 {

/// Screens of a file that have per-screen tables (contexts 0, 1, 2).
inline constexpr int kScreenSlots = 3;
/// Screens of the axis tables, 0 to 10: the time axis the reader keeps and
/// the X axes the driver keeps.
inline constexpr int kAxisTableSlots = 11;
/// Marker slots per screen; slots 0..9 hold markers 1..10.
inline constexpr int kMarkerSlots = 12;

}  // namespace z4400

#endif  // Z4400_COMMON_TABLE_SIZES_H_
