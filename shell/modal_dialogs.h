// The modal parts of the desktop window: message boxes, the Yes/No
// question, the open, save and folder dialogs, and handing a finished
// workbook to the desktop. The window asks for them through this interface
// so that the same window runs with the real dialogs and under tests with
// scripted answers.
#ifndef Z4400_SHELL_MODAL_DIALOGS_H_
#define Z4400_SHELL_MODAL_DIALOGS_H_

#include <string>

#include "driver/user_interface.h"

class QWidget;

namespace z4400 {

/// Modal questions and dialogs over a parent window. Every call returns when
/// the user has answered.
class ModalDialogs {
 public:
  virtual ~ModalDialogs() = default;

  /// A message box with an OK button and the icon of `kind`.
  virtual void ShowMessage(QWidget* parent, MessageKind kind, const std::string& title,
                           const std::string& text) = 0;
  /// A Yes/No question; true for Yes.
  virtual bool AskYesNo(QWidget* parent, const std::string& title, const std::string& text) = 0;
  /// Open and save dialogs; the chosen path, or the empty text on cancel.
  /// The save dialog's path ends in the extension of the type chosen in it,
  /// added when the user typed a name without it.
  virtual std::string ChooseOpenFile(QWidget* parent, const FileDialogRequest& request) = 0;
  virtual std::string ChooseSaveFile(QWidget* parent, const FileDialogRequest& request) = 0;
  /// The folder browser; the chosen folder, or the empty text on cancel.
  virtual std::string ChooseFolder(QWidget* parent, const std::string& title,
                                   const std::string& initial_folder) = 0;
  /// Opens a finished workbook in the desktop's spreadsheet application,
  /// where the user looks at it. False when nothing could open it.
  virtual bool OpenWorkbook(const std::string& path) = 0;
};

/// The desktop's own dialogs: QMessageBox, QFileDialog and the default
/// application of a workbook file.
class QtModalDialogs : public ModalDialogs {
 public:
  void ShowMessage(QWidget* parent, MessageKind kind, const std::string& title,
                   const std::string& text) override;
  bool AskYesNo(QWidget* parent, const std::string& title, const std::string& text) override;
  std::string ChooseOpenFile(QWidget* parent, const FileDialogRequest& request) override;
  std::string ChooseSaveFile(QWidget* parent, const FileDialogRequest& request) override;
  std::string ChooseFolder(QWidget* parent, const std::string& title,
                           const std::string& initial_folder) override;
  bool OpenWorkbook(const std::string& path) override;
};

}  // namespace z4400

#endif  // Z4400_SHELL_MODAL_DIALOGS_H_
