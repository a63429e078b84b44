#include "workbook/model/application.h"

#include <algorithm>

#include "common/runtime_failure.h"
#include "workbook/model/name_compare.h"

namespace z4400 {
namespace {

// Reads `path` into `workbook`, which must then hold at least one sheet; the
// first sheet becomes active unless the file chose one.
void ReadInto(const WorkbookFiles& files, const std::filesystem::path& path, Workbook* workbook) {
  std::string error;
  if (!files.Read(path, workbook, &error)) {
    throw RuntimeFailure("Cannot open " + path.string() + ": " + error);
  }
  if (workbook->sheets().empty()) {
    throw RuntimeFailure("Cannot open " + path.string() + ": the workbook has no sheets");
  }
  if (workbook->active_sheet() == nullptr) workbook->SetActiveSheet(workbook->sheets()[0].get());
}

}  // namespace

int WorkbookList::Count() const { return static_cast<int>(application_->workbooks().size()); }

Workbook& WorkbookList::Item(int index) const {
  application_->CheckRunning();
  const auto& books = application_->workbooks();
  if (index < 1 || index > static_cast<int>(books.size())) {
    throw RuntimeFailure("Subscript out of range: no workbook " + std::to_string(index));
  }
  return *books[static_cast<std::size_t>(index) - 1];
}

Workbook& WorkbookList::Item(std::string_view name) const {
  application_->CheckRunning();
  for (const auto& book : application_->workbooks()) {
    if (SameName(book->Name(), name)) return *book;
  }
  throw RuntimeFailure("Subscript out of range: no workbook " + std::string(name));
}

Workbook& WorkbookList::Add(const std::filesystem::path& template_path) const {
  application_->CheckRunning();
  if (template_path.empty()) {
    auto book = std::make_unique<Workbook>(application_, application_->NextWorkbookName());
    for (int i = 0; i < application_->SheetsInNewWorkbook(); ++i) {
      book->AppendWorksheet(book->NextSheetName("Sheet"));
    }
    book->SetActiveSheet(book->sheets()[0].get());
    return application_->AdoptWorkbook(std::move(book));
  }
  // A workbook made from a template is a new, unsaved workbook named after
  // the template ("Report1" from "Report.xlsx").
  auto book = std::make_unique<Workbook>(application_, template_path.stem().string() + "1");
  ReadInto(application_->Files(), template_path, book.get());
  return application_->AdoptWorkbook(std::move(book));
}

Workbook& WorkbookList::Open(const std::filesystem::path& path) const {
  application_->CheckRunning();
  const std::filesystem::path full = std::filesystem::absolute(path).lexically_normal();
  for (const auto& book : application_->workbooks()) {
    if (book->HasFile() && book->FullName() == full.string()) {
      book->Activate();
      return *book;
    }
    if (SameName(book->Name(), full.filename().string())) {
      throw RuntimeFailure("A workbook named " + book->Name() + " is already open");
    }
  }
  auto book = std::make_unique<Workbook>(application_, full.filename().string());
  ReadInto(application_->Files(), full, book.get());
  book->SetFile(full);
  return application_->AdoptWorkbook(std::move(book));
}

Application::Application(std::string version, std::shared_ptr<const WorkbookFiles> files)
    : version_(std::move(version)), files_(std::move(files)) {}

Application::~Application() {
  active_workbook_ = nullptr;
  workbooks_.clear();
}

void Application::SetSheetsInNewWorkbook(int count) {
  if (count < 1 || count > 255) throw RuntimeFailure("Sheets in a new workbook must be 1 to 255");
  sheets_in_new_workbook_ = count;
}

Workbook& Application::ActiveWorkbook() const {
  CheckRunning();
  if (active_workbook_ == nullptr) throw RuntimeFailure("No workbook is open");
  return *active_workbook_;
}

Sheet& Application::ActiveSheet() const { return ActiveWorkbook().ActiveSheet(); }

Chart& Application::ActiveChart() const { return ActiveWorkbook().ActiveChart(); }

void Application::Quit() {
  active_workbook_ = nullptr;
  workbooks_.clear();
  running_ = false;
}

const WorkbookFiles& Application::Files() const {
  if (files_ == nullptr)
    throw RuntimeFailure("This application cannot read or write workbook files");
  return *files_;
}

void Application::CheckRunning() const {
  if (!running_) throw RuntimeFailure("The spreadsheet application has quit");
}

Workbook& Application::AdoptWorkbook(std::unique_ptr<Workbook> workbook) {
  workbooks_.push_back(std::move(workbook));
  active_workbook_ = workbooks_.back().get();
  return *active_workbook_;
}

void Application::RemoveWorkbook(const Workbook& workbook) {
  const auto found = std::find_if(workbooks_.begin(), workbooks_.end(),
                                  [&](const auto& book) { return book.get() == &workbook; });
  if (found == workbooks_.end()) return;
  std::unique_ptr<Workbook> removed = std::move(*found);
  workbooks_.erase(found);
  if (active_workbook_ == removed.get()) {
    active_workbook_ = workbooks_.empty() ? nullptr : workbooks_.back().get();
  }
}

std::string Application::NextWorkbookName() { return "Book" + std::to_string(++book_counter_); }

}  // namespace z4400
