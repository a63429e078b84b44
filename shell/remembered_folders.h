// The folders the window's dialogs were last used in, kept from one run of
// the program to the next in a small file of the user's own (not in
// "Data.ini", whose lines are the converter's settings): the folder of the
// file last picked in an open dialog and the folder last chosen with
// "Browse...".
#ifndef Z4400_SHELL_REMEMBERED_FOLDERS_H_
#define Z4400_SHELL_REMEMBERED_FOLDERS_H_

#include <filesystem>
#include <string>

namespace z4400 {

/// The folders, read from and written to one INI file at once.
class RememberedFolders {
 public:
  /// `file` is the INI file; it and its folder are made when a folder is
  /// first remembered.
  explicit RememberedFolders(std::filesystem::path file);

  /// "z4400conv/folders.ini" in the user's configuration folder
  /// ($XDG_CONFIG_HOME, else ~/.config).
  static std::filesystem::path DefaultFile();

  /// The folder of the file last picked in an open dialog; empty when none
  /// was picked or the folder no longer exists.
  std::string OpenFolder() const;
  /// Remembers the folder of `picked_file` for the next open dialog.
  void RememberOpenedFile(const std::string& picked_file);

  /// The folder last chosen with "Browse..."; empty when none was chosen or
  /// it no longer exists.
  std::string BrowseFolder() const;
  /// Remembers `folder` for the next "Browse...".
  void RememberBrowseFolder(const std::string& folder);

 private:
  std::string Read(const char* key) const;
  void Write(const char* key, const std::string& folder);

  std::filesystem::path file_;
};

}  // namespace z4400

#endif  // Z4400_SHELL_REMEMBERED_FOLDERS_H_
