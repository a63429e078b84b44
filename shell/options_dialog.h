// The options dialog ("Option"): the switches of the settings, the chart
// line weight and the seven chart colours. Nothing reaches the settings
// until the user presses "Save".
#ifndef Z4400_SHELL_OPTIONS_DIALOG_H_
#define Z4400_SHELL_OPTIONS_DIALOG_H_

#include <QDialog>
#include <array>
#include <cstdint>

#include "driver/settings.h"

class QCheckBox;
class QComboBox;

namespace z4400 {

class ColorButton;
class Form3;

/// One entry of the line weight list.
struct LineWeightEntry {
  const char* text;
  int item_data;
};

/// The line weight list in index order ("0.25 pt" is index 0).
inline constexpr std::array<LineWeightEntry, 4> kLineWeights = {{
    {"0.25 pt", 1101},
    {"1 pt", 1102},
    {"2 pt", 1103},
    {"3 pt", 1104},
}};

/// The line weight index selected after the list is filled ("1 pt").
inline constexpr int kDefaultLineWeightIndex = 1;

/// `Form2`. Opened window-modal without a nested event loop. "Save"
/// (`Command1`) emits `SaveRequested` and closes; "Cancel" (`Command2`) and
/// closing only close. Either way `finished` follows.
class Form2 : public QDialog {
  Q_OBJECT

 public:
  explicit Form2(QWidget* parent = nullptr);

  /// Opening: fills the line weight list, sets the four switches, the list
  /// and the seven colour buttons from `settings`, shows the "Debug Mode"
  /// box only when `reveal_debug_mode` (the flag a right-button drop on the
  /// main window's list toggles), and opens the dialog.
  void Open(const Settings& settings, bool reveal_debug_mode);

  /// Copies what the dialog shows into `settings`, in the order of "Save":
  /// warn on overwrite, debug mode, always on top, graph sheets, line weight
  /// index, then the seven colours. "x Line Log" reaches nothing.
  void CopyInto(Settings& settings) const;

  /// The colour picker the colour buttons open.
  Form3& ColorPicker() { return *picker_; }

 signals:
  /// "Save" was pressed: the owner stores the dialog's values and writes
  /// "Data.ini" (the dialog closes right after).
  void SaveRequested();

 private:
  /// Fills the line weight list afresh; "1 pt" is selected.
  void FillLineWeights();
  /// "Default" of the switches: warn on overwrite on, always on top off,
  /// graph sheets on; debug mode untouched.
  void DefaultSwitches();
  /// "Default" of the graph: "1 pt" and the default chart colours.
  void DefaultGraph();

  QCheckBox* warn_on_overwrite_ = nullptr;  // Check1
  QCheckBox* debug_mode_ = nullptr;         // Check2
  QCheckBox* always_on_top_ = nullptr;      // Check3
  QCheckBox* graph_sheets_ = nullptr;       // Check4
  QCheckBox* log_x_line_ = nullptr;         // Check5
  QComboBox* line_weight_ = nullptr;        // Combo1
  std::array<ColorButton*, kChartColors> colors_{};
  Form3* picker_ = nullptr;
};

}  // namespace z4400

#endif  // Z4400_SHELL_OPTIONS_DIALOG_H_
