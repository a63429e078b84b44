#include "shell/color_picker.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include "shell/color_button.h"
#include "shell/color_values.h"

namespace z4400 {
namespace {

/// Object name of palette button `index`: "Command2", then "Command6" to
/// "Command52".
QString PaletteButtonName(int index) {
  return QStringLiteral("Command%1").arg(index == 0 ? 2 : index + 5);
}

constexpr int kPartMaximumOnSlider = 255;

}  // namespace

Form3::Form3(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("Form3"));
  setWindowTitle(QStringLiteral("Color Palette"));
  setWindowModality(Qt::WindowModal);

  auto* palette_box = new QGroupBox(this);
  auto* palette_grid = new QGridLayout(palette_box);
  palette_grid->setSpacing(3);
  for (int i = 0; i < kPaletteSize; ++i) {
    auto* button = new ColorButton(palette_box);
    button->setObjectName(PaletteButtonName(i));
    button->setFixedSize(28, 22);
    button->SetColor(PaletteColors()[static_cast<std::size_t>(i)]);
    connect(button, &QPushButton::clicked, this, [this, button] { ShowColor(button->Color()); });
    palette_grid->addWidget(button, i / kPaletteColumns, i % kPaletteColumns);
  }

  auto* parts_grid = new QGridLayout;
  const std::array<const char*, 3> slider_names = {"SliderR", "SliderG", "SliderB"};
  const std::array<const char*, 3> captions = {"Red", "Gleen", "Blue"};
  const std::array<const char*, 3> caption_names = {"CaptionR", "CaptionG", "CaptionB"};
  for (int part = 0; part < 3; ++part) {
    auto* caption = new QLabel(QString::fromLatin1(captions[static_cast<std::size_t>(part)]), this);
    caption->setObjectName(QString::fromLatin1(caption_names[static_cast<std::size_t>(part)]));
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(QString::fromLatin1(slider_names[static_cast<std::size_t>(part)]));
    slider->setRange(0, kPartMaximumOnSlider);
    slider->setMinimumWidth(180);
    auto* text = new QLineEdit(QStringLiteral("0"), this);
    text->setObjectName(QStringLiteral("Text%1").arg(part + 1));
    text->setFixedWidth(52);
    sliders_[static_cast<std::size_t>(part)] = slider;
    texts_[static_cast<std::size_t>(part)] = text;
    connect(slider, &QSlider::valueChanged, this,
            [this, part](int value) { SliderMoved(part, value); });
    parts_grid->addWidget(caption, part, 0);
    parts_grid->addWidget(slider, part, 1);
    parts_grid->addWidget(text, part, 2);
  }

  preview_ = new QLabel(this);
  preview_->setObjectName(QStringLiteral("Label1"));
  preview_->setMinimumSize(72, 72);
  preview_->setFrameStyle(QFrame::Box | QFrame::Plain);
  preview_->setAutoFillBackground(true);

  auto* parts_row = new QHBoxLayout;
  parts_row->addLayout(parts_grid, 1);
  parts_row->addWidget(preview_);

  auto* apply = new QPushButton(QStringLiteral("Apply"), this);
  apply->setObjectName(QStringLiteral("Command3"));
  apply->setToolTip(QStringLiteral("Take the values typed into the boxes"));
  auto* accept_button = new QPushButton(QStringLiteral("OK"), this);
  accept_button->setObjectName(QStringLiteral("Command4"));
  accept_button->setDefault(true);
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setObjectName(QStringLiteral("Command5"));
  connect(apply, &QPushButton::clicked, this, &Form3::RebuildFromTexts);
  connect(accept_button, &QPushButton::clicked, this, [this] {
    emit ColorChosen(button_index_, preview_color_);
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &Form3::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(apply);
  buttons->addStretch(1);
  buttons->addWidget(accept_button);
  buttons->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(palette_box);
  layout->addLayout(parts_row);
  layout->addLayout(buttons);
  setFixedSize(sizeHint());
  ShowColor(0);
}

void Form3::Open(int button_index, int32_t color) {
  button_index_ = button_index;
  ShowColor(color);
  open();
}

void Form3::ShowColor(int32_t color) {
  SetPreview(color);
  const ColorParts parts = SplitColor(color);
  const std::array<int32_t, 3> values = {parts.red, parts.green, parts.blue};
  for (std::size_t part = 0; part < 3; ++part) {
    const QSignalBlocker blocker(sliders_[part]);
    texts_[part]->setText(QString::number(values[part]));
    sliders_[part]->setValue(values[part]);
  }
}

void Form3::SetPreview(int32_t color) {
  preview_color_ = color;
  QPalette palette = preview_->palette();
  palette.setColor(QPalette::Window, ScreenColor(color));
  preview_->setPalette(palette);
}

void Form3::SliderMoved(int part, int value) {
  texts_[static_cast<std::size_t>(part)]->setText(QString::number(value));
  RebuildFromTexts();
}

void Form3::RebuildFromTexts() {
  SetPreview(ColorFromTexts(texts_[0]->text().toStdString(), texts_[1]->text().toStdString(),
                            texts_[2]->text().toStdString()));
}

}  // namespace z4400
