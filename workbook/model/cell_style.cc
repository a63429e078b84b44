#include "workbook/model/cell_style.h"

#include <functional>
#include <limits>

#include "common/runtime_failure.h"

namespace z4400 {

std::size_t StyleTable::Hash::operator()(const CellStyle& style) const {
  return std::hash<std::string>()(style.number_format) * 4 + (style.bold ? 2 : 0) +
         (style.italic ? 1 : 0);
}

StyleTable::StyleTable() { Intern(CellStyle()); }

StyleId StyleTable::Intern(const CellStyle& style) {
  if (auto found = ids_.find(style); found != ids_.end()) return found->second;
  if (styles_.size() > std::numeric_limits<StyleId>::max()) {
    throw RuntimeFailure("Too many different cell formats");
  }
  const auto id = static_cast<StyleId>(styles_.size());
  styles_.push_back(style);
  ids_.emplace(style, id);
  return id;
}

const CellStyle& StyleTable::Get(StyleId id) const {
  return id < styles_.size() ? styles_[id] : styles_.front();
}

}  // namespace z4400
