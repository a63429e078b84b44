// z4400-render-windows: draws the main window with files listed, the options
// dialog and the colour picker into PNG files, for the documentation.
//
//   z4400-render-windows [FOLDER]   (default: docs)
//
// Runs without a display (offscreen) unless a platform is chosen.
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPixmap>
#include <QTemporaryDir>
#include <cstdio>
#include <string>

#include "driver/settings.h"
#include "driver/workbook_stages.h"
#include "shell/color_picker.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "shell/options_dialog.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

constexpr const char* kListedFiles[] = {
    "/home/operator/measurements/spectrum_dbm_markers.xml",
    "/home/operator/measurements/three_screens_mixed.xml",
    "/home/operator/measurements/two_screens_markers.csv",
    "/home/operator/measurements/log_x_axis.csv",
};

bool Save(QWidget& widget, const QDir& folder, const char* name) {
  const QString path = folder.filePath(QString::fromLatin1(name));
  if (!widget.grab().save(path, "PNG")) {
    std::fprintf(stderr, "z4400-render-windows: cannot write %s\n", qPrintable(path));
    return false;
  }
  std::printf("%s\n", qPrintable(path));
  return true;
}

/// Lets the windows lay themselves out and paint.
void Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

int Render(const QDir& folder) {
  QTemporaryDir settings_folder;  // no "Data.ini": the defaults
  if (!settings_folder.isValid()) return 1;
  WindowOptions options;
  options.settings_folder = settings_folder.path().toStdString();
  options.make_stages = WorkbookStagesFactory(kDefaultVersion);
  options.version_probe = [] { return Application(kDefaultVersion).Version(); };
  QtModalDialogs dialogs;
  Form1 window(dialogs, std::move(options));
  window.resize(560, 400);
  window.show();
  window.StartUp({});
  for (const char* path : kListedFiles) window.converter().AddFile(path);
  window.findChild<QLineEdit*>(QStringLiteral("Text1"))
      ->setText(QStringLiteral("/home/operator/reports"));
  Settle();
  bool saved = Save(window, folder, "main_window.png");

  Form2& dialog = window.OptionsDialog();
  dialog.Open(window.converter().settings(), false);
  Settle();
  saved = Save(dialog, folder, "options_dialog.png") && saved;

  Form3& picker = dialog.ColorPicker();
  picker.Open(0, window.converter().settings().TraceAColor);
  Settle();
  saved = Save(picker, folder, "color_picker.png") && saved;
  return saved ? 0 : 1;
}

}  // namespace
}  // namespace z4400

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs"));
  if (!folder.exists()) {
    std::fprintf(stderr, "z4400-render-windows: no folder %s\n", qPrintable(folder.path()));
    return 2;
  }
  return z4400::Render(folder);
}
