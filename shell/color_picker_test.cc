#include "shell/color_picker.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <set>

#include "driver/settings.h"
#include "shell/color_button.h"
#include "shell/color_values.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

struct PickerFixture : testing::ApplicationReady {
  PickerFixture() { picker.Open(2, PackColor(10, 20, 30)); }
  template <typename Widget>
  Widget* Find(const char* name) {
    return picker.findChild<Widget*>(QString::fromLatin1(name));
  }
  std::string Text(const char* name) { return Find<QLineEdit>(name)->text().toStdString(); }
  void Type(const char* name, const char* text) {
    QLineEdit* box = Find<QLineEdit>(name);
    box->selectAll();
    QTest::keyClicks(box, text);
  }
  Form3 picker;
};

TEST(ColorPickerTest, PaletteOf48DistinctButtons) {
  PickerFixture fixture;
  EXPECT_EQ(fixture.picker.windowTitle().toStdString(), "Color Palette");
  std::vector<std::string> names = {"Command2"};
  for (int i = 6; i <= 52; ++i) names.push_back("Command" + std::to_string(i));
  std::set<int32_t> colors;
  for (const std::string& name : names) {
    auto* button = fixture.Find<ColorButton>(name.c_str());
    ASSERT_NE(button, nullptr) << name;
    colors.insert(button->Color());
  }
  EXPECT_EQ(colors.size(), 48u);
}

TEST(ColorPickerTest, OpeningSplitsTheColourIntoSlidersAndBoxes) {
  PickerFixture fixture;
  EXPECT_EQ(fixture.picker.PreviewColor(), PackColor(10, 20, 30));
  EXPECT_EQ(fixture.Find<QSlider>("SliderR")->value(), 10);
  EXPECT_EQ(fixture.Find<QSlider>("SliderG")->value(), 20);
  EXPECT_EQ(fixture.Find<QSlider>("SliderB")->value(), 30);
  EXPECT_EQ(fixture.Text("Text1"), "10");
  EXPECT_EQ(fixture.Text("Text2"), "20");
  EXPECT_EQ(fixture.Text("Text3"), "30");
}

TEST(ColorPickerTest, SlidersAndTypedValuesRebuildTheColour) {
  PickerFixture fixture;
  {
    SCOPED_TRACE("moving a slider writes its box and rebuilds from the three boxes");
    QSlider* green = fixture.Find<QSlider>("SliderG");
    green->setFocus();
    QTest::keyClick(green, Qt::Key_Right);
    EXPECT_EQ(fixture.Text("Text2"), "21");
    EXPECT_EQ(fixture.picker.PreviewColor(), PackColor(10, 21, 30));
  }
  {
    SCOPED_TRACE("typed values count only through Command3, clamped");
    fixture.Type("Text1", "-40");
    fixture.Type("Text2", "300");
    fixture.Type("Text3", "7.5");
    EXPECT_EQ(fixture.picker.PreviewColor(), PackColor(10, 21, 30));
    QTest::mouseClick(fixture.Find<QAbstractButton>("Command3"), Qt::LeftButton);
    EXPECT_EQ(fixture.picker.PreviewColor(), PackColor(0, 256, 8));
  }
  {
    SCOPED_TRACE("a slider moved after typing rebuilds from all three boxes as typed");
    fixture.Type("Text3", "abc");
    QSlider* red = fixture.Find<QSlider>("SliderR");  // still at 10: typing moves no slider
    red->setFocus();
    QTest::keyClick(red, Qt::Key_Right);
    EXPECT_EQ(fixture.Text("Text1"), "11");
    EXPECT_EQ(fixture.picker.PreviewColor(), PackColor(11, 256, 0));
  }
}

TEST(ColorPickerTest, AcceptReportsThePreviewForTheOpeningButton) {
  PickerFixture fixture;
  QSignalSpy chosen(&fixture.picker, &Form3::ColorChosen);
  QTest::mouseClick(fixture.Find<ColorButton>("Command52"), Qt::LeftButton);
  const int32_t last = PaletteColors().back();
  EXPECT_EQ(fixture.picker.PreviewColor(), last);
  EXPECT_EQ(fixture.Text("Text1"), std::to_string(SplitColor(last).red));
  QTest::mouseClick(fixture.Find<QAbstractButton>("Command4"), Qt::LeftButton);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].toInt(), 2);
  EXPECT_EQ(chosen[0][1].toInt(), last);
  EXPECT_FALSE(fixture.picker.isVisible());
}

}  // namespace
}  // namespace z4400
