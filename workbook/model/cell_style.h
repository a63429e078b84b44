// Cell formats of a workbook: number format and font emphasis, interned so
// that every cell carries only a small style id.
#ifndef Z4400_WORKBOOK_MODEL_CELL_STYLE_H_
#define Z4400_WORKBOOK_MODEL_CELL_STYLE_H_

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace z4400 {

/// The spreadsheet's general number format, the default of every cell.
inline constexpr const char* kGeneralFormat = "General";

/// How a cell shows its value.
struct CellStyle {
  std::string number_format = kGeneralFormat;
  bool bold = false;
  bool italic = false;
  friend bool operator==(const CellStyle&, const CellStyle&) = default;
};

/// Style id of a cell; 0 is the default style (General, regular font).
using StyleId = std::uint16_t;

/// The distinct cell styles of one workbook, in order of first use.
class StyleTable {
 public:
  StyleTable();

  /// The id of `style`, adding it when new. Throws `RuntimeFailure` when the
  /// workbook already holds 65,536 distinct styles.
  StyleId Intern(const CellStyle& style);
  /// The style of `id`; the default style for an unknown id.
  const CellStyle& Get(StyleId id) const;
  /// Every style, index = id; entry 0 is the default style.
  const std::vector<CellStyle>& styles() const { return styles_; }

 private:
  struct Hash {
    std::size_t operator()(const CellStyle& style) const;
  };
  std::vector<CellStyle> styles_;
  std::unordered_map<CellStyle, StyleId, Hash> ids_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CELL_STYLE_H_
