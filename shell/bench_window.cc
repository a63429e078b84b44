// bench_window: how long the user waits from launching the converter to a
// main window that is painted and answers input.
//
// The first figure is the program's own start: from the process start (as
// the kernel recorded it) to the first paint of the main window and then a
// timer event handled after it, which is when a click would be answered.
// The benchmarks then repeat the window's part (build, show, first paint)
// in the running application.
//
// Runs offscreen unless a platform is chosen.
#include <benchmark/benchmark.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

/// Seconds since boot on the clock the kernel's process start times use.
double BootSeconds() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Seconds from boot to this process's start (field 22 of /proc/self/stat,
/// in clock ticks); negative when unknown.
double ProcessStartSeconds() {
  std::ifstream stat("/proc/self/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  // The command name (field 2) may hold blanks: count fields after its ")".
  const std::size_t close = text.rfind(')');
  if (close == std::string::npos) return -1;
  std::istringstream fields(text.substr(close + 2));
  std::string field;
  for (int index = 3; index <= 22 && fields >> field; ++index) {
    if (index == 22) return std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
  }
  return -1;
}

/// Waits for the first paint of a widget.
class PaintWatch : public QObject {
 public:
  bool painted = false;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted = true;
    return QObject::eventFilter(watched, event);
  }
};

WindowOptions BenchOptions(const QTemporaryDir& settings_folder) {
  WindowOptions options;
  options.settings_folder = settings_folder.path().toStdString();
  options.make_stages = WorkbookStagesFactory(kDefaultVersion);
  options.version_probe = [] { return Application(kDefaultVersion).Version(); };
  return options;
}

/// Builds and shows a main window, runs its start-up, and returns once it
/// was painted and a timer posted after that fired.
void OpenWindowOnce(ModalDialogs& dialogs, const QTemporaryDir& settings_folder) {
  Form1 window(dialogs, BenchOptions(settings_folder));
  PaintWatch watch;
  window.installEventFilter(&watch);
  window.show();
  window.StartUp({});
  while (!watch.painted) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  bool answered = false;
  QTimer::singleShot(0, &window, [&answered] { answered = true; });
  while (!answered) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void BM_OpenMainWindow(benchmark::State& state) {
  QtModalDialogs dialogs;
  QTemporaryDir settings_folder;
  for (auto _ : state) OpenWindowOnce(dialogs, settings_folder);
}
BENCHMARK(BM_OpenMainWindow)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace z4400

int main(int argc, char** argv) {
  const double process_start = z4400::ProcessStartSeconds();
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QElapsedTimer since_main;
  since_main.start();
  {
    QApplication application(argc, argv);
    z4400::QtModalDialogs dialogs;
    QTemporaryDir settings_folder;
    z4400::OpenWindowOnce(dialogs, settings_folder);
    const double main_ms = static_cast<double>(since_main.nsecsElapsed()) * 1e-6;
    const double process_ms = process_start < 0 ? -1 : (z4400::BootSeconds() - process_start) * 1e3;
    std::printf("main() to painted, responsive main window: %.1f ms\n", main_ms);
    std::printf(
        "process start to painted, responsive main window: %.0f ms "
        "(kernel start time, %ld ticks a second)\n",
        process_ms, sysconf(_SC_CLK_TCK));

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
  }
  return 0;
}
