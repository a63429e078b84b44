// The texts of a workbook's cells, each distinct text stored once and
// referred to by its id (the shared strings of the saved file).
#ifndef Z4400_WORKBOOK_MODEL_STRING_TABLE_H_
#define Z4400_WORKBOOK_MODEL_STRING_TABLE_H_

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace z4400 {

/// Id of an interned text.
using TextId = std::uint32_t;

/// Distinct cell texts in order of first use; ids are stable.
class StringTable {
 public:
  /// The id of `text`, adding it when new.
  TextId Intern(std::string_view text);
  /// The text of `id`; "" for an unknown id.
  const std::string& Get(TextId id) const;
  /// Number of distinct texts; ids run from 0 to `size()` − 1.
  std::size_t size() const { return texts_.size(); }

 private:
  std::deque<std::string> texts_;  // a deque keeps the views below valid
  std::unordered_map<std::string_view, TextId> ids_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_STRING_TABLE_H_
