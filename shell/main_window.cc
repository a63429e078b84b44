// Construction of the main window: its controls, their layout and its menus.
#include "shell/main_window.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "shell/file_drop_list.h"
#include "shell/modal_dialogs.h"
#include "shell/options_dialog.h"

/// Registers the resources of the window's static library (the icon) with
/// Qt, which a program linking the library does not do by itself.
static void InitShellResources() { Q_INIT_RESOURCE(shell_icons); }

namespace z4400 {
namespace {

/// The window's icon, built into the program.
constexpr char kWindowIcon[] = ":/z4400/z4400conv.svg";

/// The remembered folders' file: the one the options name, else the user's.
std::filesystem::path FoldersFile(const WindowOptions& options) {
  return options.remembered_folders_file.empty() ? RememberedFolders::DefaultFile()
                                                 : options.remembered_folders_file;
}

template <typename Widget>
Widget* Named(Widget* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

}  // namespace

Form1::Form1(ModalDialogs& dialogs, WindowOptions options, QWidget* parent)
    : QMainWindow(parent),
      dialogs_(dialogs),
      options_(std::move(options)),
      folders_(FoldersFile(options_)) {
  setObjectName(QStringLiteral("Form1"));
  setWindowTitle(QString::fromLatin1(kWindowTitle));
  InitShellResources();
  setWindowIcon(QIcon(QString::fromLatin1(kWindowIcon)));
  setAcceptDrops(true);
  BuildControls();
  BuildMenus();
  converter_ = std::make_unique<Converter>(*this, options_.settings_folder, options_.make_stages);
  options_dialog_ = new Form2(this);
  connect(options_dialog_, &Form2::SaveRequested, this, &Form1::OptionsSaved);
  // "Save", "Cancel" and closing the dialog all take the always-on-top
  // state up again, as the settings now say.
  connect(options_dialog_, &QDialog::finished, this,
          [this] { SetAlwaysOnTop(converter_->settings().AlwaysOnTop != 0); });
}

Form1::~Form1() = default;

void Form1::BuildControls() {
  auto* central = new QWidget(this);
  setCentralWidget(central);

  auto* heading = Named(new QLabel(QStringLiteral("Open file list"), central), "Label3");
  list_ = Named(new FileDropList(central), "List1");
  list_->setMinimumSize(360, 180);
  connect(list_, &FileDropList::FilesDropped, this, &Form1::ListDropped);
  connect(list_, &FileDropList::DeletePressed, this, &Form1::RemoveFileClicked);

  add_file_ = Named(new QPushButton(QStringLiteral("Add file"), central), "Command4");
  remove_file_ = Named(new QPushButton(QStringLiteral("Remove file"), central), "Command3");
  start_ = Named(new QPushButton(QStringLiteral("Start"), central), "Command1");
  start_->setMinimumHeight(40);
  connect(add_file_, &QPushButton::clicked, this, &Form1::AddFileClicked);
  connect(remove_file_, &QPushButton::clicked, this, &Form1::RemoveFileClicked);
  connect(start_, &QPushButton::clicked, this, &Form1::StartClicked);

  auto* side = new QVBoxLayout;
  side->addWidget(add_file_);
  side->addWidget(remove_file_);
  side->addStretch(1);
  side->addWidget(start_);

  auto* list_row = new QHBoxLayout;
  list_row->addWidget(list_, 1);
  list_row->addLayout(side);

  auto* folder_caption = Named(new QLabel(QStringLiteral("Save Directory"), central), "Label2");
  use_output_folder_ = Named(new QCheckBox(central), "Check1");
  use_output_folder_->setToolTip(
      QStringLiteral("Save the workbooks into this folder without asking"));
  output_folder_ = Named(new QLineEdit(central), "Text1");
  output_folder_->setAcceptDrops(false);  // files dropped here go to the list
  browse_ = Named(new QPushButton(QStringLiteral("Browse..."), central), "Command2");
  connect(browse_, &QPushButton::clicked, this, &Form1::BrowseClicked);
  auto* folder_row = new QHBoxLayout;
  folder_row->addWidget(folder_caption);
  folder_row->addWidget(use_output_folder_);
  folder_row->addWidget(output_folder_, 1);
  folder_row->addWidget(browse_);

  progress_ = Named(new QProgressBar(central), "ProgressBar1");
  progress_->setRange(0, kStepsPerFile);
  progress_->setValue(0);
  progress_->setTextVisible(false);
  percentage_ = Named(new QLabel(central), "Label1");
  percentage_->setMinimumWidth(44);
  percentage_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* progress_row = new QHBoxLayout;
  progress_row->addWidget(progress_, 1);
  progress_row->addWidget(percentage_);

  status_ = Named(new QLabel(QStringLiteral("Ready"), central), "Label4");
  status_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  status_->setMinimumWidth(200);
  version_ = Named(new QLabel(QString::fromLatin1(kVersionLabel), central), "Label5");
  auto* status_row = new QHBoxLayout;
  status_row->addWidget(status_, 1);
  status_row->addWidget(version_);

  auto* layout = new QVBoxLayout(central);
  layout->addWidget(heading);
  layout->addLayout(list_row, 1);
  layout->addLayout(folder_row);
  layout->addLayout(progress_row);
  layout->addLayout(status_row);
}

void Form1::BuildMenus() {
  const auto add = [this](QMenu* menu, const char* caption, const char* name,
                          void (Form1::*handler)()) {
    QAction* action = menu->addAction(QString::fromLatin1(caption));
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, handler);
    return action;
  };

  QMenu* file = Named(menuBar()->addMenu(QStringLiteral("File(&F)")), "mnuFile");
  add(file, "Save(&S)", "Savemnu", &Form1::SaveClicked);
  file->addSeparator();
  QAction* add_file = add(file, "Add file(&O)", "AddFilemnu", &Form1::AddFileClicked);
  QAction* remove_file = add(file, "Remove file(&R)", "Rmvmnu", &Form1::RemoveFileClicked);
  QAction* remove_all = add(file, "Remove all file(&D)", "RmvAllmnu", &Form1::RemoveAllClicked);
  file->addSeparator();
  QAction* start = add(file, "Start(&E)", "startmnu", &Form1::StartClicked);
  file->addSeparator();
  add(file, "End(&X)", "mnuend", &Form1::EndClicked);
  run_locked_actions_ = {add_file, remove_file, remove_all, start};

  QMenu* tool = Named(menuBar()->addMenu(QStringLiteral("Tool(&T)")), "mnuTool");
  add(tool, "Option(&O)", "Optmnu", &Form1::OptionClicked);

  QMenu* help = Named(menuBar()->addMenu(QStringLiteral("Help(&H)")), "mnuHelp");
  add(help, "version(&A)", "hlpver", &Form1::VersionClicked);
  help->addSeparator();
  add(help, "Excel version", "mnuxls", &Form1::SpreadsheetVersionClicked);
  add(help, "OS version", "mnuOS", &Form1::OsVersionClicked);
}

}  // namespace z4400
