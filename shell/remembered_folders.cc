#include "shell/remembered_folders.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QString>
#include <utility>

namespace z4400 {
namespace {

constexpr char kOpenKey[] = "Folders/Open";
constexpr char kBrowseKey[] = "Folders/Browse";

QString ToQt(const std::filesystem::path& path) { return QString::fromStdString(path.string()); }

}  // namespace

RememberedFolders::RememberedFolders(std::filesystem::path file) : file_(std::move(file)) {}

std::filesystem::path RememberedFolders::DefaultFile() {
  const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  return std::filesystem::path(config.toStdString()) / "z4400conv" / "folders.ini";
}

std::string RememberedFolders::OpenFolder() const { return Read(kOpenKey); }

void RememberedFolders::RememberOpenedFile(const std::string& picked_file) {
  if (picked_file.empty()) return;
  Write(kOpenKey, QFileInfo(QString::fromStdString(picked_file)).absolutePath().toStdString());
}

std::string RememberedFolders::BrowseFolder() const { return Read(kBrowseKey); }

void RememberedFolders::RememberBrowseFolder(const std::string& folder) {
  if (!folder.empty()) Write(kBrowseKey, folder);
}

std::string RememberedFolders::Read(const char* key) const {
  const QSettings file(ToQt(file_), QSettings::IniFormat);
  const QString folder = file.value(QString::fromLatin1(key)).toString();
  if (folder.isEmpty() || !QFileInfo(folder).isDir()) return {};
  return folder.toStdString();
}

void RememberedFolders::Write(const char* key, const std::string& folder) {
  QSettings file(ToQt(file_), QSettings::IniFormat);
  file.setValue(QString::fromLatin1(key), QString::fromStdString(folder));
  file.sync();
}

}  // namespace z4400
