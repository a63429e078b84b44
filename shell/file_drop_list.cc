#include "shell/file_drop_list.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMimeData>
#include <QUrl>

namespace z4400 {

std::vector<std::string> DroppedFiles(const QMimeData* data) {
  std::vector<std::string> paths;
  if (data == nullptr || !data->hasUrls()) return paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdString());
  }
  return paths;
}

bool CarriesFiles(const QMimeData* data) { return !DroppedFiles(data).empty(); }

FileDropList::FileDropList(QWidget* parent) : QListWidget(parent) {
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setAcceptDrops(true);
  setDragDropMode(QAbstractItemView::DropOnly);
}

std::vector<int> FileDropList::SelectedRows() const {
  std::vector<int> rows;
  for (const QListWidgetItem* item : selectedItems()) rows.push_back(row(item));
  return rows;
}

void FileDropList::NoteDragButtons(Qt::MouseButtons buttons) {
  if (buttons != Qt::NoButton) drag_buttons_ = buttons;
}

void FileDropList::dragEnterEvent(QDragEnterEvent* event) {
  drag_buttons_ = Qt::NoButton;
  NoteDragButtons(event->buttons());
  if (CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void FileDropList::dragMoveEvent(QDragMoveEvent* event) {
  NoteDragButtons(event->buttons());
  if (CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void FileDropList::dragLeaveEvent(QDragLeaveEvent* event) {
  drag_buttons_ = Qt::NoButton;
  QListWidget::dragLeaveEvent(event);
}

void FileDropList::dropEvent(QDropEvent* event) {
  // A drop that still reports its buttons is taken at its word; otherwise
  // the buttons of the drag over the list tell.
  const Qt::MouseButtons buttons =
      event->buttons() != Qt::NoButton ? event->buttons() : drag_buttons_;
  drag_buttons_ = Qt::NoButton;
  const std::vector<std::string> paths = DroppedFiles(event->mimeData());
  if (paths.empty()) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  emit FilesDropped(paths, (buttons & Qt::RightButton) != 0);
}

void FileDropList::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Delete)) {
    event->accept();
    emit DeletePressed();
    return;
  }
  QListWidget::keyPressEvent(event);
}

}  // namespace z4400
