// The conversion stages of a batch: the real stages, with a source that is
// refused before it is opened when it cannot be read as a file, and with a
// record of the workbook the file created.
#ifndef Z4400_DRIVER_BATCH_STAGES_H_
#define Z4400_DRIVER_BATCH_STAGES_H_

#include <string>

#include "driver/workbook_stages.h"

namespace z4400 {

/// Why `path` cannot be a source: the system's reason when it cannot be
/// found or read ("No such file or directory", "Permission denied"), "not a
/// regular file" for a folder, a named pipe or a device; empty when it can.
/// Never opens the file, so a named pipe does not block.
std::string SourceRefusal(const std::string& path);

/// `WorkbookStages` for one worker of a batch.
class BatchStages : public WorkbookStages {
 public:
  using WorkbookStages::WorkbookStages;

  void BeginFile() override;
  /// Refuses a source that `SourceRefusal` names (status 1, its reason as
  /// the error text), else opens it as the real stage does.
  int16_t OpenSource(const std::string& path) override;
  std::string ErrorText() const override;
  void CreateResultSheets(const std::string& output_path) override;

  /// True once the current file created its workbook.
  bool created() const { return created_; }
  /// True when the workbook's name was taken by a file that appeared after
  /// the name was checked.
  bool output_taken() const { return output_taken_; }

 private:
  std::string refusal_;
  bool created_ = false;
  bool output_taken_ = false;
};

/// The factory for a batch worker's converter.
StagesFactory BatchStagesFactory(std::string version_text);

}  // namespace z4400

#endif  // Z4400_DRIVER_BATCH_STAGES_H_
