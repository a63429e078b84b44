// The main window's list of source files (`List1`): it shows the file name
// of every listed file and takes files dropped on it.
#ifndef Z4400_SHELL_FILE_DROP_LIST_H_
#define Z4400_SHELL_FILE_DROP_LIST_H_

#include <QListWidget>
#include <string>
#include <vector>

class QDragLeaveEvent;
class QDropEvent;
class QKeyEvent;
class QMimeData;

namespace z4400 {

/// The local files of a drop, in the order the desktop delivers them.
std::vector<std::string> DroppedFiles(const QMimeData* data);

/// True when a drag carries at least one local file.
bool CarriesFiles(const QMimeData* data);

/// `List1`: several lines may be selected; a drop of files is reported with
/// the mouse button that made it, and accepted only while dropping is on
/// (`setAcceptDrops`). The Delete key asks for the selected lines to be
/// removed.
class FileDropList : public QListWidget {
  Q_OBJECT

 public:
  explicit FileDropList(QWidget* parent = nullptr);

  /// The rows the user selected, in any order.
  std::vector<int> SelectedRows() const;

 signals:
  /// Files were dropped on the list; `right_button` when the drag was made
  /// with the right mouse button.
  void FilesDropped(const std::vector<std::string>& paths, bool right_button);
  /// The Delete key was pressed in the list.
  void DeletePressed();

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// Notes the mouse buttons a drag over the list is made with.
  void NoteDragButtons(Qt::MouseButtons buttons);

  /// The buttons held while the current drag moved over the list. The drop
  /// itself comes when the button is released, so the desktop reports no
  /// button with it.
  Qt::MouseButtons drag_buttons_ = Qt::NoButton;
};

}  // namespace z4400

#endif  // Z4400_SHELL_FILE_DROP_LIST_H_
