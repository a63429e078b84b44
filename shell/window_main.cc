// z4400conv-window: the desktop window of the converter, started by
// `z4400conv [FILE...]`. Files given are listed and converted at once, as
// when the program is started with files dropped on its icon.
//   z4400conv-window [--settings-dir DIR] [--excel-version N] [--] [FILE...]
#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "driver/settings_file.h"
#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

constexpr int kExitUsage = 2;

/// A file argument as the list takes it: absolute, with "." and ".."
/// resolved, so that the workbook is named after the file itself.
std::string ListedPath(const std::string& argument) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
  if (error) return argument;
  return absolute.lexically_normal().string();
}

/// The first thing the platform plugins said while the application starts,
/// kept for the message when no platform can be started.
std::string& PlatformReason() {
  static std::string reason;
  return reason;
}

/// While the application starts, the platform plugins' warnings are kept
/// and a failure to start any platform (which would abort the program with
/// advice to reinstall it) ends the program with status 2 and a pointer at
/// the batch command instead.
void StartupMessages(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) {
    const std::string& reason = PlatformReason();
    std::fprintf(stderr,
                 "z4400conv: no display found (%s), so the window cannot open\n"
                 "z4400conv: --batch converts without a window: z4400conv --batch FILE... "
                 "(see --help)\n",
                 reason.empty() ? "no platform could be started" : reason.c_str());
    std::fflush(stderr);
    std::_Exit(kExitUsage);
  }
  const bool platform =
      context.category != nullptr && std::string(context.category).starts_with("qt.qpa");
  if (platform && PlatformReason().empty()) {
    PlatformReason() = text.trimmed().toStdString();
    return;
  }
  if (!platform) std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

int RunWindow(const std::vector<std::string>& files, const std::filesystem::path& settings_folder,
              const std::string& version, char* program) {
  int qt_argc = 1;
  char* qt_argv[] = {program, nullptr};
  QtMessageHandler previous = qInstallMessageHandler(StartupMessages);
  QApplication application(qt_argc, qt_argv);
  qInstallMessageHandler(previous);
  QApplication::setApplicationName(QString::fromLatin1(kWindowTitle));

  WindowOptions options;
  options.settings_folder = settings_folder;
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
  QApplication::exec();
  return 0;
}

}  // namespace
}  // namespace z4400

namespace {

int ParseAndRun(int argc, char** argv) {
  CLI::App cli{"Z4400 Converter window (started by z4400conv [FILE...])."};
  std::optional<std::string> settings_dir;
  std::optional<int> excel_version;
  std::vector<std::string> files;
  cli.add_option("--settings-dir", settings_dir, "Folder of Data.ini and Log.txt")
      ->option_text("DIR");
  cli.add_option("--excel-version", excel_version, "Spreadsheet version to write for")
      ->option_text("N");
  cli.add_option("files", files, "Instrument files to convert at once")->option_text("FILE...");
  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = cli.exit(error);
    return status == 0 ? 0 : z4400::kExitUsage;
  }
  const std::filesystem::path settings_folder =
      settings_dir ? std::filesystem::path(*settings_dir) : z4400::ProgramFolder();
  const std::string version =
      excel_version ? std::to_string(*excel_version) + ".0" : z4400::kDefaultVersion;
  return z4400::RunWindow(files, settings_folder, version, argv[0]);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return ParseAndRun(argc, argv);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "z4400conv: %s\n", failure.what());
  } catch (...) {
    std::fprintf(stderr, "z4400conv: the window ended on an unknown failure\n");
  }
  return 1;
}
