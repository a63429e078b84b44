#include "shell/color_button.h"

#include <algorithm>

#include "shell/color_values.h"

namespace z4400 {

QColor ScreenColor(int32_t packed) {
  const ColorParts parts = SplitColor(packed);
  const auto shown = [](int32_t part) { return std::clamp(part, 0, 255); };
  return QColor(shown(parts.red), shown(parts.green), shown(parts.blue));
}

ColorButton::ColorButton(QWidget* parent) : QPushButton(parent) {
  setMinimumSize(36, 22);
  SetColor(0);
}

void ColorButton::SetColor(int32_t packed) {
  color_ = packed;
  const QColor face = ScreenColor(packed);
  setStyleSheet(QStringLiteral("QPushButton { background-color: %1; border: 1px solid #606060; }"
                               "QPushButton:pressed { border: 2px inset #303030; }")
                    .arg(face.name()));
  setToolTip(QStringLiteral("R %1  G %2  B %3").arg(face.red()).arg(face.green()).arg(face.blue()));
}

}  // namespace z4400
