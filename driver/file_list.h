// The source-file list of the main window: the instrument files that a run
// converts, in list order. The list box shows the file name of each entry.
#ifndef Z4400_DRIVER_FILE_LIST_H_
#define Z4400_DRIVER_FILE_LIST_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

/// Entries of the list array (indices 0 to 100).
inline constexpr int kFileListEntries = 101;

/// Files that drag and drop and the command line may list: one fewer than
/// the array and than the add-file dialog allow.
inline constexpr int kAddFileLimit = 100;

/// One listed source file.
struct SourceFileEntry {
  std::string Path;  ///< full path
  std::string Name;  ///< file name shown in the list box
  int16_t Flag = 0;  ///< -1 once the entry has been added
};

/// The part of path after its last folder separator ("\" or "/"); the whole
/// path when it has none.
std::string FileNamePart(std::string_view path);

/// The kind of a source path: its last three characters as they stand
/// (the whole text when shorter). Only "csv" and "xml" are accepted.
std::string SourceKindOf(std::string_view path);

/// True for a kind of exactly "csv" or "xml" (case-sensitive).
bool IsAcceptedKind(std::string_view kind);

/// The list itself, with the file count and the index of the entry being
/// converted.
class FileList {
 public:
  /// What `AddFile` did with a path.
  enum class AddStatus {
    kAdded,    ///< appended at index = old file count
    kIgnored,  ///< kind neither "csv" nor "xml": ignored without a message
    kFull,     ///< 100 files already listed: the caller shows "Error"
  };

  /// Appends a file given by drag and drop or on the command line. Records
  /// the kind as the current source kind text. Duplicates are allowed.
  AddStatus AddFile(std::string_view path);

  /// Appends the result of the add-file dialog. An empty result does
  /// nothing; a result whose kind is not exactly "csv"/"xml" (among them a
  /// cancelled dialog's "False") is ignored; an accepted file goes to index
  /// = file count. Returns true when the file was appended. Throws
  /// RuntimeFailure for a 102nd entry (index 101).
  bool AddDialogResult(std::string_view result);

  /// Removes the entries at the given rows (list box lines selected by the
  /// user, any order, out-of-range rows ignored); the rest keep their order
  /// from index 0. No rows: nothing changes.
  void RemoveSelectedFiles(const std::vector<int>& selected_rows);

  /// File count 0 (the list box is emptied by the caller's display).
  void ClearFileList();

  /// Number of listed files.
  int FileCount() const { return file_count_; }

  /// Index of the entry being converted, from 0.
  int CurrentIndex() const { return current_index_; }
  void SetCurrentIndex(int index) { current_index_ = index; }

  /// The entry at index 0..100 (its contents may be stale beyond the file
  /// count). Throws RuntimeFailure for an index outside the array.
  const SourceFileEntry& Entry(int index) const;

  /// The file names of the listed entries in list order, for the list box.
  std::vector<std::string> Names() const;

  /// Kind text of the last file offered to `AddFile` or the dialog.
  const std::string& LastKind() const { return last_kind_; }

 private:
  std::array<SourceFileEntry, kFileListEntries> entries_{};
  int file_count_ = 0;
  int current_index_ = 0;
  std::string last_kind_;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_FILE_LIST_H_
