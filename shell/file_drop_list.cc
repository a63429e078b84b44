#include "shell/file_drop_list.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
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

void FileDropList::dragEnterEvent(QDragEnterEvent* event) {
  if (CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void FileDropList::dragMoveEvent(QDragMoveEvent* event) {
  if (CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void FileDropList::dropEvent(QDropEvent* event) {
  const std::vector<std::string> paths = DroppedFiles(event->mimeData());
  if (paths.empty()) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  emit FilesDropped(paths, (event->buttons() & Qt::RightButton) != 0);
}

}  // namespace z4400
