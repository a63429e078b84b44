// The main window's list of source files (`List1`): it shows the file name
// of every listed file and takes files dropped on it.
#ifndef Z4400_SHELL_FILE_DROP_LIST_H_
#define Z4400_SHELL_FILE_DROP_LIST_H_

#include <QListWidget>
#include <string>
#include <vector>

class QDropEvent;
class QMimeData;

namespace z4400 {

/// The local files of a drop, in the order the desktop delivers them.
std::vector<std::string> DroppedFiles(const QMimeData* data);

/// True when a drag carries at least one local file.
bool CarriesFiles(const QMimeData* data);

/// `List1`: several lines may be selected; a drop of files is reported with
/// the mouse button that made it, and accepted only while dropping is on
/// (`setAcceptDrops`).
class FileDropList : public QListWidget {
  Q_OBJECT

 public:
  explicit FileDropList(QWidget* parent = nullptr);

  /// The rows the user selected, in any order.
  std::vector<int> SelectedRows() const;

 signals:
  /// Files were dropped on the list; `right_button` when the drop was made
  /// with the right mouse button.
  void FilesDropped(const std::vector<std::string>& paths, bool right_button);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
};

}  // namespace z4400

#endif  // Z4400_SHELL_FILE_DROP_LIST_H_
