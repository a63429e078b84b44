// The model saves and opens only through the `WorkbookFiles` it is handed.
#include "workbook/model/workbook_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "common/runtime_failure.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

// Records every save and read; a read gives one sheet named after the file.
// A save that does not wait for the disk is recorded as "claim".
class RecordingFiles final : public WorkbookFiles {
 public:
  mutable std::vector<std::string> calls;
  bool fail = false;

  bool Save(const Workbook& workbook, const std::filesystem::path& path, SaveDurability durability,
            std::string* error) const override {
    calls.push_back((durability == SaveDurability::kOnDisk ? "save " : "claim ") + workbook.Name() +
                    " " + path.filename().string());
    if (fail) {
      *error = "disk full";
      return false;
    }
    std::ofstream(path) << "saved " << workbook.Name();
    return true;
  }
  bool Read(const std::filesystem::path& path, Workbook* into, std::string* error) const override {
    calls.push_back("read " + path.filename().string());
    if (fail) {
      *error = "damaged";
      return false;
    }
    into->AppendWorksheet(path.stem().string());
    return true;
  }
};

TEST(WorkbookFilesTest, SavingAndOpeningGoThroughTheFilesHandedToTheApplication) {
  struct Case {
    std::string version;
    std::string save_as;
    std::string file;  // the name saved
  };
  for (const Case& c : {Case{"16.0", "meas", "meas.xlsx"}, Case{"11.0", "meas", "meas.xls"},
                        Case{"16.0", "meas.XLS", "meas.XLS"}}) {
    SCOPED_TRACE(c.version + " " + c.save_as);
    auto files = std::make_shared<RecordingFiles>();
    Application application(c.version, files);
    Workbook& book = application.Workbooks().Add();
    const testing::ScratchDir scratch;
    const std::filesystem::path& folder = scratch.path();
    book.SaveAs(folder / c.save_as);
    book.Save();
    application.Workbooks().Open(folder / "other.xlsx");
    application.Workbooks().Add(folder / "template.xlsx");
    EXPECT_EQ(files->calls,
              (std::vector<std::string>{"save Book1 " + c.file, "save " + c.file + " " + c.file,
                                        "read other.xlsx", "read template.xlsx"}));
    EXPECT_EQ(application.ActiveWorkbook().Name(), "template1");
    EXPECT_EQ(application.ActiveSheet().Name(), "template");
  }
}

TEST(WorkbookFilesTest, FailuresAndAnApplicationWithoutFilesAreRunTimeFailures) {
  auto files = std::make_shared<RecordingFiles>();
  files->fail = true;
  Application failing("16.0", files);
  Workbook& book = failing.Workbooks().Add();
  EXPECT_THROW(book.SaveAs("meas"), RuntimeFailure);
  EXPECT_FALSE(book.HasFile()) << "a failed save does not take the name";
  EXPECT_THROW(failing.Workbooks().Open("other.xlsx"), RuntimeFailure);
  EXPECT_EQ(failing.Workbooks().Count(), 1);

  Application without_files;
  Workbook& unsaved = without_files.Workbooks().Add();
  EXPECT_THROW(unsaved.SaveAs("meas"), RuntimeFailure);
  EXPECT_THROW(without_files.Workbooks().Open("other.xlsx"), RuntimeFailure);
}

std::string Contents(const std::filesystem::path& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(WorkbookFilesTest, SaveAsNewNeverReplacesAFile) {
  const testing::ScratchDir scratch;
  auto files = std::make_shared<RecordingFiles>();
  Application application("16.0", files);
  Workbook& book = application.Workbooks().Add();
  const std::filesystem::path taken = scratch / "taken.xlsx";
  std::ofstream(taken) << "saved by someone else";
  EXPECT_THROW(book.SaveAsNew(scratch / "taken"), OutputExists);
  EXPECT_FALSE(book.HasFile());
  EXPECT_EQ(Contents(taken), "saved by someone else");

  book.SaveAsNew(scratch / "free");
  EXPECT_TRUE(book.HasFile());
  EXPECT_EQ(Contents(scratch / "free.xlsx"), "saved Book1");
  EXPECT_THROW(book.SaveAsNew(scratch / "free"), OutputExists) << "not even its own file";
  // The name is claimed without waiting for the disk; the complete
  // workbook's save waits for it.
  book.Save();
  EXPECT_EQ(files->calls,
            (std::vector<std::string>{"claim Book1 free.xlsx", "save free.xlsx free.xlsx"}));

  files->fail = true;
  Workbook& other = application.Workbooks().Add();
  EXPECT_THROW(other.SaveAsNew(scratch / "failed"), RuntimeFailure);
  EXPECT_FALSE(std::filesystem::exists(scratch / "failed.xlsx")) << "no file is left";
}

}  // namespace
}  // namespace z4400
