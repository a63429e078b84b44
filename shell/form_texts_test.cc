// Every caption, title, menu entry and access key of the three windows, in
// one table against the widgets that show them.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <string>
#include <vector>

#include "shell/color_picker.h"
#include "shell/main_window.h"
#include "shell/options_dialog.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

/// The text a widget or menu entry shows: a button's or label's caption, a
/// frame's or menu's title, a window's title.
std::string TextOf(const QObject* object) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(object)) {
    return button->text().toStdString();
  }
  if (const auto* label = qobject_cast<const QLabel*>(object)) return label->text().toStdString();
  if (const auto* frame = qobject_cast<const QGroupBox*>(object)) {
    return frame->title().toStdString();
  }
  if (const auto* menu = qobject_cast<const QMenu*>(object)) return menu->title().toStdString();
  if (const auto* action = qobject_cast<const QAction*>(object)) {
    return action->text().toStdString();
  }
  if (const auto* window = qobject_cast<const QWidget*>(object)) {
    return window->windowTitle().toStdString();
  }
  return "(no text)";
}

/// The controls of `form` named `name`, leaving out those of the windows it
/// holds (the options dialog holds the colour picker, both have "Command3").
std::vector<const QObject*> NamedIn(const QWidget* form, const char* name) {
  std::vector<const QObject*> found;
  for (const QObject* control : form->findChildren<QObject*>(QString::fromLatin1(name))) {
    const QObject* owner = control->parent();
    while (owner != nullptr && qobject_cast<const QDialog*>(owner) == nullptr &&
           qobject_cast<const QMainWindow*>(owner) == nullptr) {
      owner = owner->parent();
    }
    if (owner == form) found.push_back(control);
  }
  return found;
}

TEST(FormTextsTest, EveryCaptionTitleAndMenuEntryReadsAsDesigned) {
  testing::WindowFixture fixture;
  Form2& options = fixture.window->OptionsDialog();
  Form3& picker = options.ColorPicker();
  struct Case {
    const QWidget* form;
    const char* name;  // nullptr: the form's own title
    const char* text;
  };
  const QWidget* form1 = fixture.window.get();
  const Case cases[] = {
      {form1, nullptr, "Z4400 Converter"},
      {form1, "Command4", "Add file"},
      {form1, "Command3", "Remove file"},
      {form1, "Command1", "Start"},
      {form1, "Command2", "Browse..."},
      {form1, "Check1", ""},
      {form1, "Label2", "Save Directory"},
      {form1, "Label3", "Open file list"},
      {form1, "Label4", "Ready"},
      {form1, "Label5", "Ver 2.1"},
      {form1, "mnuFile", "File(&F)"},
      {form1, "Savemnu", "Save(&S)"},
      {form1, "AddFilemnu", "Add file(&O)"},
      {form1, "Rmvmnu", "Remove file(&R)"},
      {form1, "RmvAllmnu", "Remove all file(&D)"},
      {form1, "startmnu", "Start(&E)"},
      {form1, "mnuend", "End(&X)"},
      {form1, "mnuTool", "Tool(&T)"},
      {form1, "Optmnu", "Option(&O)"},
      {form1, "mnuHelp", "Help(&H)"},
      {form1, "hlpver", "version(&A)"},
      {form1, "mnuxls", "Excel version"},
      {form1, "mnuOS", "OS version"},
      {&options, nullptr, "Option"},
      {&options, "Check1", "It warns, when overwrite."},
      {&options, "Check2", "Debug Mode"},
      {&options, "Check3", "A window is always displayed on the top."},
      {&options, "Check4", "Create graph sheets.(Excel 2003 Only)"},
      {&options, "Check5", "x Line Log"},
      {&options, "Label1", "Trace A Color"},
      {&options, "Label2", "Trace B Color"},
      {&options, "Label3", "Trace C Color"},
      {&options, "Label4", "Trace M Color"},
      {&options, "Label5", "Trace O Color"},
      {&options, "Label6", "Prot Area Color"},
      {&options, "Label7", "Division Line Color"},
      {&options, "Label8", "Line Weight"},
      {&options, "Command1", "Save"},
      {&options, "Command2", "Cancel"},
      {&options, "Frame2", "General"},
      {&options, "Command3", "Default"},
      {&options, "Frame1", "Graph"},
      {&options, "Command12", "Default"},
      {&options, "Command5", "All Default"},
      {&picker, nullptr, "Color Palette"},
      {&picker, "CaptionR", "Red"},
      {&picker, "CaptionG", "Gleen"},
      {&picker, "CaptionB", "Blue"},
      {&picker, "Command3", "Apply"},
      {&picker, "Command4", "OK"},
      {&picker, "Command5", "Cancel"},
  };
  for (const Case& c : cases) {
    const std::string form = c.form->objectName().toStdString();
    SCOPED_TRACE(form + "." + (c.name != nullptr ? c.name : "(title)"));
    const QObject* shown = c.form;
    if (c.name != nullptr) {
      const std::vector<const QObject*> named = NamedIn(c.form, c.name);
      ASSERT_EQ(named.size(), 1u) << "one control of that name";
      shown = named.front();
    }
    EXPECT_EQ(TextOf(shown), c.text);
  }

  // The line weight list as it is filled for the dialog.
  const auto* weights = options.findChild<QComboBox*>(QStringLiteral("Combo1"));
  std::vector<std::string> weight_texts;
  weight_texts.reserve(static_cast<std::size_t>(weights->count()));
  for (int i = 0; i < weights->count(); ++i) {
    weight_texts.push_back(weights->itemText(i).toStdString());
  }
  EXPECT_EQ(weight_texts, (std::vector<std::string>{"0.25 pt", "1 pt", "2 pt", "3 pt"}));
}

TEST(FormTextsTest, MenusHoldTheirEntriesInOrderWithSeparatorsBetweenGroups) {
  testing::WindowFixture fixture;
  const std::vector<std::vector<std::string>> expected = {
      {"File(&F)", "Save(&S)", "-", "Add file(&O)", "Remove file(&R)", "Remove all file(&D)", "-",
       "Start(&E)", "-", "End(&X)"},
      {"Tool(&T)", "Option(&O)"},
      {"Help(&H)", "version(&A)", "-", "Excel version", "OS version"},
  };
  std::vector<std::vector<std::string>> menus;
  for (QAction* top : fixture.window->menuBar()->actions()) {
    std::vector<std::string> entries = {top->text().toStdString()};
    for (QAction* entry : top->menu()->actions()) {
      entries.push_back(entry->isSeparator() ? "-" : entry->text().toStdString());
    }
    menus.push_back(entries);
  }
  EXPECT_EQ(menus, expected);
}

}  // namespace
}  // namespace z4400
