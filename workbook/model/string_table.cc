#include "workbook/model/string_table.h"

namespace z4400 {

TextId StringTable::Intern(std::string_view text) {
  if (auto found = ids_.find(text); found != ids_.end()) return found->second;
  const auto id = static_cast<TextId>(texts_.size());
  const std::string& stored = texts_.emplace_back(text);
  ids_.emplace(std::string_view(stored), id);
  return id;
}

const std::string& StringTable::Get(TextId id) const {
  static const std::string kEmpty;
  return id < texts_.size() ? texts_[id] : kEmpty;
}

}  // namespace z4400
