#include "workbook/model/workbook.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "common/runtime_failure.h"
#include "workbook/model/application.h"
#include "workbook/model/name_compare.h"
#include "workbook/model/workbook_file.h"

namespace z4400 {

Workbook::Workbook(Application* application, std::string name)
    : application_(application), name_(std::move(name)) {}

Workbook::~Workbook() {
  // Charts forget themselves as they go; nothing may point at them after.
  active_embedded_chart_ = nullptr;
  active_sheet_ = nullptr;
  sheets_.clear();
}

std::string Workbook::FullName() const { return path_.empty() ? name_ : path_.string(); }

Sheet& Workbook::ActiveSheet() const {
  if (active_sheet_ == nullptr) throw RuntimeFailure("The workbook has no active sheet");
  return *active_sheet_;
}

bool Workbook::HasActiveChart() const {
  return (active_sheet_ != nullptr && active_sheet_->Type() == SheetType::kChart) ||
         active_embedded_chart_ != nullptr;
}

Chart& Workbook::ActiveChart() const {
  if (active_sheet_ != nullptr && active_sheet_->Type() == SheetType::kChart) {
    return static_cast<ChartSheet*>(active_sheet_)->Chart();
  }
  if (active_embedded_chart_ == nullptr) throw RuntimeFailure("There is no active chart");
  return *active_embedded_chart_;
}

void Workbook::Activate() { application_->SetActiveWorkbook(this); }

void Workbook::Save() {
  if (path_.empty()) {
    throw RuntimeFailure("Workbook " + name_ + " has never been saved: it has no file yet");
  }
  std::string error;
  if (!application_->Files().Save(*this, path_, SaveDurability::kOnDisk, &error)) {
    throw RuntimeFailure(error);
  }
}

void Workbook::SaveAs(const std::filesystem::path& path) {
  const std::filesystem::path target = WorkbookFilePath(path, application_->Version());
  std::string error;
  if (!application_->Files().Save(*this, target, SaveDurability::kOnDisk, &error)) {
    throw RuntimeFailure(error);
  }
  SetFile(target);
}

void Workbook::SaveAsNew(const std::filesystem::path& path) {
  const std::filesystem::path target = WorkbookFilePath(path, application_->Version());
  const int fd = ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    if (errno == EEXIST) throw OutputExists(target.string() + " already exists");
    throw RuntimeFailure("Cannot create " + target.string() + ": " + std::strerror(errno));
  }
  ::close(fd);
  // This save claims the name; the workbook is saved again when it is
  // complete, and only that save need outlast a power cut.
  std::string error;
  if (!application_->Files().Save(*this, target, SaveDurability::kLeftToTheSystem, &error)) {
    std::error_code ignored;
    std::filesystem::remove(target, ignored);
    throw RuntimeFailure(error);
  }
  SetFile(target);
}

void Workbook::Close() { application_->RemoveWorkbook(*this); }

Worksheet& Workbook::AppendWorksheet(std::string name) {
  if (!IsValidSheetName(name) || FindSheet(name) != nullptr) {
    throw RuntimeFailure("Cannot add a sheet named " + name);
  }
  return static_cast<Worksheet&>(
      InsertSheet(std::make_unique<Worksheet>(this, std::move(name)), sheets_.size()));
}

ChartSheet& Workbook::AppendChartSheet(std::string name) {
  if (!IsValidSheetName(name) || FindSheet(name) != nullptr) {
    throw RuntimeFailure("Cannot add a sheet named " + name);
  }
  return static_cast<ChartSheet&>(
      InsertSheet(std::make_unique<ChartSheet>(this, std::move(name)), sheets_.size()));
}

Sheet& Workbook::InsertSheet(std::unique_ptr<Sheet> sheet, std::size_t position) {
  position = std::min(position, sheets_.size());
  Sheet& inserted = *sheet;
  sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(position), std::move(sheet));
  return inserted;
}

std::size_t Workbook::InsertPosition(const Sheet* before, const Sheet* after) const {
  if (before != nullptr) return PositionOf(*before);
  if (after != nullptr) return PositionOf(*after) + 1;
  if (active_sheet_ != nullptr) return PositionOf(*active_sheet_);
  return sheets_.size();
}

void Workbook::RemoveSheet(const Sheet& sheet) {
  const std::size_t position = PositionOf(sheet);
  const bool was_active = active_sheet_ == &sheet;
  if (active_embedded_chart_ != nullptr && sheet.Type() == SheetType::kWorksheet) {
    for (const auto& object : static_cast<const Worksheet&>(sheet).chart_objects()) {
      if (&object->Chart() == active_embedded_chart_) active_embedded_chart_ = nullptr;
    }
  }
  std::unique_ptr<Sheet> removed = std::move(sheets_[position]);
  sheets_.erase(sheets_.begin() + static_cast<std::ptrdiff_t>(position));
  if (was_active) {
    active_sheet_ = nullptr;
    if (!sheets_.empty()) SetActiveSheet(sheets_[std::min(position, sheets_.size() - 1)].get());
  }
  removed.reset();
}

void Workbook::MoveSheet(const Sheet& sheet, std::size_t position) {
  const std::size_t from = PositionOf(sheet);
  std::unique_ptr<Sheet> moving = std::move(sheets_[from]);
  sheets_.erase(sheets_.begin() + static_cast<std::ptrdiff_t>(from));
  position = std::min(position, sheets_.size());
  sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(position), std::move(moving));
}

std::size_t Workbook::PositionOf(const Sheet& sheet) const {
  for (std::size_t i = 0; i < sheets_.size(); ++i) {
    if (sheets_[i].get() == &sheet) return i;
  }
  throw RuntimeFailure("Sheet " + sheet.Name() + " is not in workbook " + name_);
}

Sheet* Workbook::FindSheet(std::string_view name) const {
  for (const auto& sheet : sheets_) {
    if (SameName(sheet->Name(), name)) return sheet.get();
  }
  return nullptr;
}

std::string Workbook::NextSheetName(std::string_view stem) {
  int& counter = stem == "Chart" ? chart_counter_ : sheet_counter_;
  for (;;) {
    std::string name = std::string(stem) + std::to_string(++counter);
    if (FindSheet(name) == nullptr) return name;
  }
}

void Workbook::SetActiveSheet(Sheet* sheet) {
  if (sheet != active_sheet_) active_embedded_chart_ = nullptr;
  active_sheet_ = sheet;
}

void Workbook::ForgetChart(const Chart* chart) {
  if (active_embedded_chart_ == chart) active_embedded_chart_ = nullptr;
}

void Workbook::RenameReferences(std::string_view from, std::string_view to) {
  auto rename = [&](Chart& chart) {
    for (const auto& series : chart.SeriesCollection().items()) series->RenameSheet(from, to);
  };
  for (const auto& sheet : sheets_) {
    if (sheet->Type() == SheetType::kChart) {
      rename(static_cast<ChartSheet&>(*sheet).Chart());
    } else {
      for (const auto& object : static_cast<Worksheet&>(*sheet).chart_objects()) {
        rename(object->Chart());
      }
    }
  }
}

void Workbook::SetFile(const std::filesystem::path& path) {
  path_ = std::filesystem::absolute(path).lexically_normal();
  name_ = path_.filename().string();
}

}  // namespace z4400
