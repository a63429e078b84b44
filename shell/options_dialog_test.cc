#include "shell/options_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QTest>

#include "driver/settings_file.h"
#include "shell/color_button.h"
#include "shell/color_picker.h"
#include "shell/color_values.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::WindowFixture;

/// Settings unlike the defaults in every item the dialog shows.
Settings CustomSettings() {
  Settings settings;
  settings.OutputDirectory = "kept";
  settings.WarnOnOverwrite = 0;
  settings.DebugMode = 1;
  settings.AlwaysOnTop = 1;
  settings.GraphSheets = 0;
  settings.LineWeightIndex = 3;
  settings.SetChartColors({PackColor(1, 2, 3), PackColor(4, 5, 6), PackColor(7, 8, 9),
                           PackColor(10, 11, 12), PackColor(13, 14, 15), PackColor(16, 17, 18),
                           PackColor(19, 20, 21)});
  settings.LogXInUse = 1;
  settings.LogEnabled = 1;
  settings.XScaleThreshold = 250;
  settings.LogXOption = 0;
  return settings;
}

/// A window started over `stored` in its "Data.ini", with the options
/// dialog opened from the menu.
struct OptionsFixture : WindowFixture {
  explicit OptionsFixture(const Settings& stored) {
    EXPECT_EQ(WriteSettingsFile(scratch.path(), stored, nullptr), SettingsFileStatus::kDone);
    window->StartUp({});
    Action("Optmnu")->trigger();
  }
  Form2& dialog() { return window->OptionsDialog(); }
  QAbstractButton* DialogButton(const char* name) {
    return dialog().findChild<QAbstractButton*>(QString::fromLatin1(name));
  }
  QCheckBox* Check(const char* name) {
    return dialog().findChild<QCheckBox*>(QString::fromLatin1(name));
  }
  void Click(const char* name) { QTest::mouseClick(DialogButton(name), Qt::LeftButton); }
  Settings Stored() const {
    Settings read_back;
    EXPECT_EQ(ReadSettingsFile(scratch.path(), read_back), SettingsFileStatus::kDone);
    return read_back;
  }
};

TEST(OptionsDialogTest, OpensWithTheSettingsAndTheLineWeightList) {
  const Settings stored = CustomSettings();
  OptionsFixture fixture(stored);
  ASSERT_TRUE(fixture.dialog().isVisible());
  EXPECT_EQ(fixture.dialog().windowTitle().toStdString(), "Option");
  EXPECT_FALSE(fixture.Check("Check1")->isChecked());
  EXPECT_TRUE(fixture.Check("Check2")->isChecked());
  EXPECT_FALSE(fixture.Check("Check2")->isVisible()) << "Debug Mode starts hidden";
  EXPECT_TRUE(fixture.Check("Check3")->isChecked());
  EXPECT_FALSE(fixture.Check("Check4")->isChecked());
  EXPECT_EQ(fixture.Check("Check5")->text().toStdString(), "x Line Log");

  auto* weights = fixture.dialog().findChild<QComboBox*>(QStringLiteral("Combo1"));
  ASSERT_EQ(weights->count(), 4);
  for (int i = 0; i < weights->count(); ++i) {
    EXPECT_EQ(weights->itemText(i).toStdString(), i == 0 ? "0.25 pt" : std::to_string(i) + " pt");
    EXPECT_EQ(weights->itemData(i).toInt(), 1101 + i);
  }
  EXPECT_EQ(weights->currentIndex(), stored.LineWeightIndex);

  const char* buttons[] = {"Command4", "Command6",  "Command7", "Command8",
                           "Command9", "Command10", "Command11"};
  for (int i = 0; i < kChartColors; ++i) {
    auto* button = fixture.dialog().findChild<ColorButton*>(QString::fromLatin1(buttons[i]));
    ASSERT_NE(button, nullptr) << buttons[i];
    EXPECT_EQ(button->Color(), stored.ChartColors()[static_cast<std::size_t>(i)]) << buttons[i];
    EXPECT_EQ(button->palette().color(QPalette::Button), ScreenColor(button->Color()))
        << "the face shows the colour";
  }
}

TEST(OptionsDialogTest, DefaultsCancelAndSave) {
  const Settings stored = CustomSettings();
  {
    SCOPED_TRACE("All Default, then Cancel: nothing stored");
    OptionsFixture fixture(stored);
    fixture.Click("Command5");
    fixture.Click("Command2");
    EXPECT_FALSE(fixture.dialog().isVisible());
    EXPECT_EQ(fixture.window->converter().settings(), stored);
    EXPECT_EQ(fixture.Stored(), stored);
  }
  {
    SCOPED_TRACE("Default of the switches keeps a ticked Debug Mode");
    OptionsFixture fixture(stored);
    fixture.Click("Command3");
    fixture.Click("Command1");
    Settings expected = stored;
    expected.WarnOnOverwrite = 1;
    expected.AlwaysOnTop = 0;
    expected.GraphSheets = 1;
    EXPECT_EQ(fixture.window->converter().settings(), expected);
    EXPECT_EQ(fixture.Stored(), expected);
    EXPECT_FALSE(fixture.window->KeptOnTop()) << "Save takes the new on-top state up";
  }
  {
    SCOPED_TRACE("Default of the graph: 1 pt and the default colours; switches untouched");
    OptionsFixture fixture(stored);
    fixture.Click("Command12");
    fixture.Click("Command1");
    Settings expected = stored;
    expected.LineWeightIndex = 1;
    expected.SetChartColors(kDefaultChartColors);
    EXPECT_EQ(fixture.Stored(), expected);
    EXPECT_TRUE(fixture.window->KeptOnTop());
  }
  {
    SCOPED_TRACE("x Line Log reaches nothing");
    OptionsFixture fixture(stored);
    testing::ClickCheckBox(fixture.Check("Check5"));
    ASSERT_TRUE(fixture.Check("Check5")->isChecked());
    fixture.Click("Command1");
    EXPECT_EQ(fixture.Stored(), stored);
  }
}

TEST(OptionsDialogTest, RightButtonDropRevealsDebugMode) {
  OptionsFixture fixture(Settings{});
  fixture.Click("Command2");
  testing::DropFiles(fixture.Find<QListWidget>("List1")->viewport(),
                     {(fixture.scratch / "a.xml").string()}, Qt::RightButton);
  fixture.Action("Optmnu")->trigger();
  EXPECT_TRUE(fixture.Check("Check2")->isVisible());
  testing::ClickCheckBox(fixture.Check("Check2"));
  fixture.Click("Command1");
  EXPECT_EQ(fixture.Stored().DebugMode, 1);
}

TEST(OptionsDialogTest, ColourPickerChangesOnlyTheButtonThatOpenedIt) {
  const Settings stored = CustomSettings();
  OptionsFixture fixture(stored);
  auto* trace_c = fixture.dialog().findChild<ColorButton*>(QStringLiteral("Command7"));
  Form3& picker = fixture.dialog().ColorPicker();
  const auto palette_button = [&](const char* name) {
    return picker.findChild<ColorButton*>(QString::fromLatin1(name));
  };
  {
    SCOPED_TRACE("a palette colour, then Cancel");
    QTest::mouseClick(trace_c, Qt::LeftButton);
    ASSERT_TRUE(picker.isVisible());
    EXPECT_EQ(picker.PreviewColor(), stored.TraceCColor);
    QTest::mouseClick(palette_button("Command20"), Qt::LeftButton);
    EXPECT_EQ(picker.PreviewColor(), palette_button("Command20")->Color());
    QTest::mouseClick(picker.findChild<QAbstractButton*>(QStringLiteral("Command5")),
                      Qt::LeftButton);
    EXPECT_FALSE(picker.isVisible());
    EXPECT_EQ(trace_c->Color(), stored.TraceCColor);
  }
  {
    SCOPED_TRACE("a palette colour accepted: the button changes, the settings wait for Save");
    QTest::mouseClick(trace_c, Qt::LeftButton);
    QTest::mouseClick(palette_button("Command2"), Qt::LeftButton);
    QTest::mouseClick(picker.findChild<QAbstractButton*>(QStringLiteral("Command4")),
                      Qt::LeftButton);
    EXPECT_EQ(trace_c->Color(), PaletteColors()[0]);
    EXPECT_EQ(fixture.window->converter().settings().TraceCColor, stored.TraceCColor);
    fixture.Click("Command1");
    Settings expected = stored;
    expected.TraceCColor = PaletteColors()[0];
    EXPECT_EQ(fixture.Stored(), expected);
  }
}

}  // namespace
}  // namespace z4400
