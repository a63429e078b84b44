// z4400conv without --batch: the desktop window. Files given on the command
// line are listed and converted at once, as when the program is started
// with files dropped on its icon.
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "app/commands.h"

#ifdef Z4400_HAS_WINDOW
#include <QApplication>
#include <QTimer>

#include "driver/settings_file.h"
#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "workbook/model/application.h"
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

/// The spreadsheet version text the window writes for: "--excel-version N"
/// (or "=N") of the command line as "N.0", else the model's default. The
/// command line was checked before the window opens.
std::string VersionText(int argc, char** argv) {
  const std::string option = "--excel-version";
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == option && i + 1 < argc) return std::string(argv[i + 1]) + ".0";
    if (argument.rfind(option + "=", 0) == 0) return argument.substr(option.size() + 1) + ".0";
  }
  return kDefaultVersion;
}

}  // namespace

int RunWindow(int argc, char** argv, const std::vector<std::string>& files,
              const std::optional<std::string>& settings_dir) {
  const std::string version = VersionText(argc, argv);
  QApplication application(argc, argv);
  QApplication::setApplicationName(QString::fromLatin1(kWindowTitle));

  WindowOptions options;
  options.settings_folder = settings_dir ? std::filesystem::path(*settings_dir) : ProgramFolder();
  options.make_stages = WorkbookStagesFactory(version);
  options.version_probe = [version] { return Application(version).Version(); };

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
