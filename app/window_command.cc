// z4400conv without --batch: the desktop window. Files given on the command
// line are listed and converted at once, as when the program is started
// with files dropped on its icon.
#include <filesystem>
#include <iostream>
#include <system_error>

#include "app/commands.h"

#ifdef Z4400_HAS_WINDOW
#include <QApplication>
#include <QTimer>

#include "driver/settings_file.h"
#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "workbook/application.h"
#endif

namespace z4400 {

#ifdef Z4400_HAS_WINDOW
namespace {

/// A file argument as the list takes it: absolute, with "." and ".."
/// resolved, so that the workbook is named after the file itself.
std::string ListedPath(const std::string& argument) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
  if (error) return argument;
  return absolute.lexically_normal().string();
}

}  // namespace

int RunWindow(int argc, char** argv, const std::vector<std::string>& files,
              const std::optional<std::string>& settings_dir) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QString::fromLatin1(kWindowTitle));

  WindowOptions options;
  options.settings_folder = settings_dir ? std::filesystem::path(*settings_dir) : ProgramFolder();
  options.make_stages = WorkbookStagesFactory(kDefaultVersion);
  options.version_probe = [] { return Application(kDefaultVersion).Version(); };

  QtModalDialogs dialogs;
  Form1 window(dialogs, std::move(options));
  QObject::connect(&window, &Form1::ProgramEnding, &application, &QApplication::quit,
                   Qt::QueuedConnection);

  std::vector<std::string> listed;
  listed.reserve(files.size());
  for (const std::string& file : files) listed.push_back(ListedPath(file));

  window.show();
  // Start-up runs once the window is on the screen, so that a conversion of
  // command-line files shows its progress.
  QTimer::singleShot(0, &window, [&window, &listed] { window.StartUp(listed); });
  application.exec();
  return 0;
}

#else

int RunWindow(int /*argc*/, char** /*argv*/, const std::vector<std::string>& /*files*/,
              const std::optional<std::string>& /*settings_dir*/) {
  std::cerr << "z4400conv: built without the desktop window; use --batch or --dump\n";
  return 2;
}

#endif

}  // namespace z4400
