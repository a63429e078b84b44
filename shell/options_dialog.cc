#include "shell/options_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/color_button.h"
#include "shell/color_picker.h"

namespace z4400 {
namespace {

/// Object names and captions of the colour buttons, in the order of the
/// settings lines 8 to 14.
constexpr std::array<const char*, kChartColors> kColorButtonNames = {
    "Command4", "Command6", "Command7", "Command8", "Command9", "Command10", "Command11"};
constexpr std::array<const char*, kChartColors> kColorCaptions = {
    "Trace A Color", "Trace B Color",   "Trace C Color",      "Trace M Color",
    "Trace O Color", "Prot Area Color", "Division Line Color"};

QCheckBox* NewCheckBox(const char* name, const char* caption, QWidget* parent) {
  auto* box = new QCheckBox(QString::fromLatin1(caption), parent);
  box->setObjectName(QString::fromLatin1(name));
  return box;
}

QPushButton* NewButton(const char* name, const char* caption, QWidget* parent) {
  auto* button = new QPushButton(QString::fromLatin1(caption), parent);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

Form2::Form2(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("Form2"));
  setWindowTitle(QStringLiteral("Option"));

  // Switches.
  auto* general = new QGroupBox(QStringLiteral("General"), this);
  general->setObjectName(QStringLiteral("Frame2"));
  warn_on_overwrite_ = NewCheckBox("Check1", "It warns, when overwrite.", general);
  always_on_top_ = NewCheckBox("Check3", "A window is always displayed on the top.", general);
  graph_sheets_ = NewCheckBox("Check4", "Create graph sheets.(Excel 2003 Only)", general);
  QPushButton* general_default = NewButton("Command3", "Default", general);
  auto* general_layout = new QGridLayout(general);
  general_layout->addWidget(warn_on_overwrite_, 0, 0);
  general_layout->addWidget(always_on_top_, 1, 0);
  general_layout->addWidget(graph_sheets_, 2, 0);
  general_layout->addWidget(general_default, 2, 1, Qt::AlignRight | Qt::AlignBottom);
  general_layout->setColumnStretch(0, 1);
  debug_mode_ = NewCheckBox("Check2", "Debug Mode", this);
  debug_mode_->setVisible(false);

  // Chart line weight and colours.
  auto* graph = new QGroupBox(QStringLiteral("Graph"), this);
  graph->setObjectName(QStringLiteral("Frame1"));
  auto* graph_layout = new QGridLayout(graph);
  for (int i = 0; i < kChartColors; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    auto* caption = new QLabel(QString::fromLatin1(kColorCaptions[slot]), graph);
    caption->setObjectName(QStringLiteral("Label%1").arg(i + 1));
    auto* button = new ColorButton(graph);
    button->setObjectName(QString::fromLatin1(kColorButtonNames[slot]));
    button->setFixedSize(56, 22);
    button->setAutoDefault(false);
    colors_[slot] = button;
    connect(button, &QPushButton::clicked, this,
            [this, i, button] { picker_->Open(i, button->Color()); });
    graph_layout->addWidget(caption, i, 0);
    graph_layout->addWidget(button, i, 1);
  }
  auto* weight_caption = new QLabel(QStringLiteral("Line Weight"), graph);
  weight_caption->setObjectName(QStringLiteral("Label8"));
  line_weight_ = new QComboBox(graph);
  line_weight_->setObjectName(QStringLiteral("Combo1"));
  graph_layout->addWidget(weight_caption, kChartColors, 0);
  graph_layout->addWidget(line_weight_, kChartColors, 1);
  log_x_line_ = NewCheckBox("Check5", "x Line Log", graph);
  graph_layout->addWidget(log_x_line_, kChartColors + 1, 0);
  QPushButton* graph_default = NewButton("Command12", "Default", graph);
  graph_layout->addWidget(graph_default, kChartColors + 1, 1, Qt::AlignRight);
  graph_layout->setColumnStretch(0, 1);

  QPushButton* all_default = NewButton("Command5", "All Default", this);
  QPushButton* save = NewButton("Command1", "Save", this);
  QPushButton* cancel = NewButton("Command2", "Cancel", this);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(all_default);
  buttons->addStretch(1);
  buttons->addWidget(save);
  buttons->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(general);
  layout->addWidget(debug_mode_);
  layout->addWidget(graph);
  layout->addLayout(buttons);

  picker_ = new Form3(this);
  connect(picker_, &Form3::ColorChosen, this, [this](int index, int32_t color) {
    if (index >= 0 && index < kChartColors)
      colors_[static_cast<std::size_t>(index)]->SetColor(color);
  });
  connect(general_default, &QPushButton::clicked, this, &Form2::DefaultSwitches);
  connect(graph_default, &QPushButton::clicked, this, &Form2::DefaultGraph);
  connect(all_default, &QPushButton::clicked, this, [this] {
    DefaultSwitches();
    DefaultGraph();
  });
  connect(save, &QPushButton::clicked, this, [this] {
    emit SaveRequested();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &Form2::reject);
  FillLineWeights();
}

void Form2::Open(const Settings& settings, bool reveal_debug_mode) {
  FillLineWeights();
  warn_on_overwrite_->setChecked(settings.WarnOnOverwrite != 0);
  debug_mode_->setChecked(settings.DebugMode != 0);
  always_on_top_->setChecked(settings.AlwaysOnTop != 0);
  graph_sheets_->setChecked(settings.GraphSheets != 0);
  // An index outside the list (a hand-edited "Data.ini") keeps "1 pt".
  if (settings.LineWeightIndex >= 0 && settings.LineWeightIndex < line_weight_->count()) {
    line_weight_->setCurrentIndex(settings.LineWeightIndex);
  }
  const std::array<int32_t, kChartColors> colors = settings.ChartColors();
  for (std::size_t i = 0; i < colors.size(); ++i) colors_[i]->SetColor(colors[i]);
  debug_mode_->setVisible(reveal_debug_mode);
  layout()->activate();
  adjustSize();
  open();
}

void Form2::CopyInto(Settings& settings) const {
  settings.WarnOnOverwrite = warn_on_overwrite_->isChecked() ? 1 : 0;
  settings.DebugMode = debug_mode_->isChecked() ? 1 : 0;
  settings.AlwaysOnTop = always_on_top_->isChecked() ? 1 : 0;
  settings.GraphSheets = graph_sheets_->isChecked() ? 1 : 0;
  settings.LineWeightIndex = line_weight_->currentIndex();
  std::array<int32_t, kChartColors> colors{};
  for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = colors_[i]->Color();
  settings.SetChartColors(colors);
}

void Form2::FillLineWeights() {
  line_weight_->clear();
  for (const LineWeightEntry& entry : kLineWeights) {
    line_weight_->addItem(QString::fromLatin1(entry.text), entry.item_data);
  }
  line_weight_->setCurrentIndex(kDefaultLineWeightIndex);
}

void Form2::DefaultSwitches() {
  warn_on_overwrite_->setChecked(true);
  always_on_top_->setChecked(false);
  graph_sheets_->setChecked(true);
}

void Form2::DefaultGraph() {
  line_weight_->setCurrentIndex(kDefaultLineWeightIndex);
  for (std::size_t i = 0; i < colors_.size(); ++i) colors_[i]->SetColor(kDefaultChartColors[i]);
}

}  // namespace z4400
