// A push button whose face shows a chart colour: the colour buttons of the
// options dialog and the palette of the colour picker.
#ifndef Z4400_SHELL_COLOR_BUTTON_H_
#define Z4400_SHELL_COLOR_BUTTON_H_

#include <QColor>
#include <QPushButton>
#include <cstdint>

namespace z4400 {

/// The on-screen colour of a packed chart colour. Parts above 255 (a colour
/// packed from typed values of 256) are shown as 255.
QColor ScreenColor(int32_t packed);

/// A button without caption whose face colour is its packed colour.
class ColorButton : public QPushButton {
  Q_OBJECT

 public:
  explicit ColorButton(QWidget* parent = nullptr);

  /// The packed colour (red + 256 × green + 65536 × blue) of the face.
  int32_t Color() const { return color_; }
  /// Paints the face in `packed`.
  void SetColor(int32_t packed);

 private:
  int32_t color_ = 0;
};

}  // namespace z4400

#endif  // Z4400_SHELL_COLOR_BUTTON_H_
