// How far a save goes before it reports success.
#ifndef Z4400_COMMON_SAVE_DURABILITY_H_
#define Z4400_COMMON_SAVE_DURABILITY_H_

namespace z4400 {

/// Either way the saved file replaces the old one whole, at once, for every
/// program; they differ in what a power cut right after the save leaves.
enum class SaveDurability {
  /// The file and its name are on the disk before the save returns.
  kOnDisk,
  /// The system writes the file to the disk in its own time: for a file that
  /// a later save replaces, where waiting for the disk gains nothing.
  kLeftToTheSystem,
};

}  // namespace z4400

#endif  // Z4400_COMMON_SAVE_DURABILITY_H_
