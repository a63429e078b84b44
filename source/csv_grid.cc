#include "source/csv_grid.h"

#include <algorithm>
#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

/// Lines with this many fields or more are left out of the grid; the rows
/// after them move up.
constexpr size_t kMaxFieldsPerLine = 65536;
constexpr size_t kMaxLines = 32768;

/// Reads the text as a sequence of input lines, each ended by CR or CR LF
/// (a bare LF does not end an input line).
class InputLines {
 public:
  explicit InputLines(std::string_view text) : text_(text) {}
  bool AtEnd() const { return pos_ >= text_.size(); }
  std::string_view Next() {
    const size_t cr = text_.find('\r', pos_);
    const size_t end = cr == std::string_view::npos ? text_.size() : cr;
    std::string_view line = text_.substr(pos_, end - pos_);
    pos_ = end;
    if (pos_ < text_.size()) {
      ++pos_;  // the CR
      if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    }
    return line;
  }

 private:
  std::string_view text_;
  size_t pos_ = 0;
};

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  if (text.empty()) return lines;  // nothing to split: no line at all
  size_t start = 0;
  while (true) {
    const size_t lf = text.find('\n', start);
    if (lf == std::string_view::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, lf - start));
    start = lf + 1;
  }
  return lines;
}

size_t FieldCount(std::string_view line) {
  if (line.empty()) return 0;
  return static_cast<size_t>(std::count(line.begin(), line.end(), ',')) + 1;
}

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

}  // namespace

bool CsvGrid::Load(std::string text) {
  text_ = std::move(text);
  rows_.clear();
  rows_by_key_.clear();
  last_row_ = -1;
  column_count_ = 0;

  InputLines input(text_);
  if (input.AtEnd()) return false;  // reading past the end of the file
  std::string_view first = input.Next();
  std::vector<std::string_view> lines = SplitLines(first);
  std::string joined;
  if (static_cast<int>(lines.size()) - 1 < 5) {
    // A file with CR LF line ends arrives line by line: join the rest.
    joined.assign(first);
    while (!input.AtEnd()) {
      joined.push_back('\n');
      joined.append(input.Next());
    }
    text_ = std::move(joined);
    lines = SplitLines(text_);
  }
  if (lines.size() > kMaxLines) return false;  // the row bound is 16-bit

  size_t largest = 1;
  bool dimensioned = false;
  std::vector<size_t> counts(lines.size());
  for (size_t i = 0; i < lines.size(); ++i) {
    counts[i] = FieldCount(lines[i]);
    if (counts[i] > largest) {
      largest = counts[i];
      dimensioned = true;
    }
  }
  rows_.assign(lines.size(), std::string_view());
  size_t row = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (counts[i] >= kMaxFieldsPerLine) continue;
    if (counts[i] > 0 && !dimensioned) {
      rows_.clear();
      return false;  // a grid of single fields was never dimensioned
    }
    rows_[row++] = lines[i];
  }
  last_row_ = static_cast<int16_t>(static_cast<int>(lines.size()) - 1);
  column_count_ = dimensioned ? static_cast<int>(largest) + 1 : 0;
  for (size_t i = 0; i < rows_.size(); ++i) {
    const std::string_view line = rows_[i];
    rows_by_key_[line.substr(0, line.find(','))].push_back(static_cast<int16_t>(i));
  }
  return true;
}

std::string_view CsvGrid::Cell(int row, int column) const {
  if (row < 0 || row > last_row_ || column < 0 || column >= column_count_) {
    throw RuntimeFailure("CSV cell (" + std::to_string(row) + ", " + std::to_string(column) +
                         ") is outside the grid");
  }
  std::string_view line = rows_[static_cast<size_t>(row)];
  for (int c = 0; c < column; ++c) {
    const size_t comma = line.find(',');
    if (comma == std::string_view::npos) return {};
    line.remove_prefix(comma + 1);
  }
  return line.substr(0, line.find(','));
}

std::string_view CsvGrid::FirstCell(int row) const {
  if (column_count_ == 0) throw RuntimeFailure("the CSV grid has no cells");
  const std::string_view line = rows_[static_cast<size_t>(row)];
  return line.substr(0, line.find(','));
}

std::string_view CsvGrid::Value(std::string_view key) const {
  for (int row = 0; row <= last_row_ - 1; ++row) {
    if (FirstCell(row) == key) return Cell(row, 1);
  }
  return {};
}

bool CsvGrid::ClampRange(int& first_row, int& last_row) const {
  if (first_row < 1) first_row = 0;
  if (last_row < 1 || last_row > last_row_ - 1) last_row = last_row_ - 1;
  return last_row > first_row;
}

int16_t CsvGrid::FindRow(std::string_view key, int first_row, int last_row) const {
  if (!ClampRange(first_row, last_row)) return -1;
  if (column_count_ == 0) throw RuntimeFailure("the CSV grid has no cells");
  const auto found = rows_by_key_.find(key);
  if (found == rows_by_key_.end()) return -1;
  const std::vector<int16_t>& rows = found->second;
  const auto row = std::lower_bound(rows.begin(), rows.end(), first_row);
  return row != rows.end() && *row <= last_row ? *row : -1;
}

int16_t CsvGrid::FindRowWithValue(std::string_view key, std::string_view value, int first_row,
                                  int last_row) const {
  if (!ClampRange(first_row, last_row)) return -1;
  const std::string_view wanted = Trim(value);
  while (true) {
    const int16_t row = FindRow(key, first_row, last_row);
    if (row < 0) return -1;
    if (Cell(row, 1) == wanted) return row;
    first_row = row + 1;
  }
}

int16_t CsvGrid::FindRowByPrefix(std::string_view prefix, int column, int first_row,
                                 int last_row) const {
  if (!ClampRange(first_row, last_row)) return -1;
  for (int row = first_row; row <= last_row; ++row) {
    if (Cell(row, column).starts_with(prefix)) return static_cast<int16_t>(row);
  }
  return -1;
}

std::string_view RightChars(std::string_view text, size_t count) {
  size_t pos = text.size();
  while (count > 0 && pos > 0) {
    --pos;
    while (pos > 0 && (static_cast<unsigned char>(text[pos]) & 0xC0) == 0x80) --pos;
    --count;
  }
  return text.substr(pos);
}

}  // namespace z4400
