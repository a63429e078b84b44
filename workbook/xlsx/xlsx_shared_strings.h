// The shared-string table of a saved workbook: every distinct cell text is
// stored once in "xl/sharedStrings.xml" and the cells refer to it by index.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_SHARED_STRINGS_H_
#define Z4400_WORKBOOK_XLSX_XLSX_SHARED_STRINGS_H_

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z4400 {

class SharedStrings {
 public:
  /// The index of `text` in the table, adding it at the end on first use.
  /// Every call counts as one reference from a cell.
  int Add(std::string_view text);
  /// Counts one more reference to a text already added, for callers that
  /// remember its index.
  void CountReference() { ++count_; }

  /// Number of references (cells holding text).
  int count() const { return count_; }
  /// Number of distinct texts.
  int unique_count() const { return static_cast<int>(texts_.size()); }
  bool empty() const { return texts_.empty(); }

  /// "xl/sharedStrings.xml": the texts in index order. A text with leading
  /// or trailing blanks keeps them (xml:space="preserve").
  std::string WritePart() const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  std::vector<std::string> texts_;
  std::unordered_map<std::string, int, Hash, std::equal_to<>> index_;
  int count_ = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_SHARED_STRINGS_H_
