// The colour picker ("Color Palette"): the user picks a chart colour from a
// palette of fixed colours or sets its red, green and blue parts. The chosen
// colour goes back to the options dialog's button that opened the picker.
#ifndef Z4400_SHELL_COLOR_PICKER_H_
#define Z4400_SHELL_COLOR_PICKER_H_

#include <QDialog>
#include <array>
#include <cstdint>

class QLabel;
class QLineEdit;
class QSlider;

namespace z4400 {

class ColorButton;

/// `Form3`. Opened window-modal (without a nested event loop); "OK"
/// (`Command4`) reports the preview colour through `ColorChosen`, "Cancel"
/// (`Command5`) and closing report nothing.
class Form3 : public QDialog {
  Q_OBJECT

 public:
  explicit Form3(QWidget* parent = nullptr);

  /// Opens the picker for the options dialog's colour button `button_index`
  /// (0 trace A … 6 division line) showing `color`.
  void Open(int button_index, int32_t color);

  /// The colour the preview shows.
  int32_t PreviewColor() const { return preview_color_; }
  /// The index of the button that opened the picker.
  int ButtonIndex() const { return button_index_; }

 signals:
  /// The user accepted `color` for the options dialog's button `button_index`.
  void ColorChosen(int button_index, int32_t color);

 private:
  /// Shows `color` in the preview and splits it into the sliders and boxes.
  void ShowColor(int32_t color);
  /// The preview takes `color` (without touching sliders or boxes).
  void SetPreview(int32_t color);
  /// A slider moved: its box takes the value, the colour is rebuilt.
  void SliderMoved(int part, int value);
  /// The colour packed from the three boxes goes to the preview.
  void RebuildFromTexts();

  std::array<QSlider*, 3> sliders_{};
  std::array<QLineEdit*, 3> texts_{};
  QLabel* preview_ = nullptr;
  int32_t preview_color_ = 0;
  int button_index_ = 0;
};

}  // namespace z4400

#endif  // Z4400_SHELL_COLOR_PICKER_H_
