#include "driver/file_dialogs.h"

#include <filesystem>
#include <system_error>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

constexpr std::string_view kSeparators = "\\/";

/// FileExists of the overwrite check: a file (not a folder) of that path.
bool FileExists(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  return !error && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::string ChooseOutputPathOrThrow(const GeneralInfo& info, int16_t spreadsheet_version,
                                    const OutputNamingContext& context) {
  UserInterface& ui = context.status.ui();
  const OutputKind kind = OutputKindFor(spreadsheet_version);
  bool ask = context.run.UseOutputDirectory == 0 || context.run.OutputDirectory.empty();
  const std::string folder = ask ? ui.DefaultDataFolder() : context.run.OutputDirectory;
  const OutputProposal proposal = ProposeOutputPath(info.SourcePath, folder, spreadsheet_version);
  std::string path = proposal.path;
  for (;;) {
    if (ask) {
      path = ui.ChooseSaveFile({kSaveResultsTitle, kind.filter, path, folder});
      if (path.empty()) return {};
    }
    if (!FileExists(path)) break;
    const bool overwrite =
        context.settings.WarnOnOverwrite != 1 ||
        ui.AskYesNo(path + " already exists", "Do you want to overwrite this file");
    if (overwrite) {
      std::error_code error;
      if (!std::filesystem::remove(path, error) || error) {
        throw RuntimeFailure("cannot delete " + path);
      }
      break;
    }
    ask = true;
  }
  if (static_cast<int>(path.size()) < proposal.extension_length) {
    throw RuntimeFailure("output path shorter than its extension: " + path);
  }
  return path.substr(0, path.size() - proposal.extension_length);
}

}  // namespace

OutputKind OutputKindFor(int16_t spreadsheet_version) {
  if (spreadsheet_version < 12) return {"xls", "Excel Files (*.xls),*.xls"};
  return {"xlsx", "Excel Files (*.xlsx),*.xlsx"};
}

std::string WithFolderSeparator(std::string folder) {
  if (folder.empty() || kSeparators.find(folder.back()) != std::string_view::npos) return folder;
  const size_t last = folder.find_last_of(kSeparators);
  const char separator = last != std::string::npos
                             ? folder[last]
                             : static_cast<char>(std::filesystem::path::preferred_separator);
  folder += separator;
  return folder;
}

OutputProposal ProposeOutputPath(std::string_view source_path, const std::string& folder,
                                 int16_t spreadsheet_version) {
  const size_t separator = source_path.find_last_of(kSeparators);
  const size_t dot = source_path.find('.');
  if (separator == std::string_view::npos || dot == std::string_view::npos) return {};
  if (dot < separator) {
    throw RuntimeFailure("the first dot of " + std::string(source_path) +
                         " stands in a folder name");
  }
  // From after the separator up to and including the dot.
  const std::string base(source_path.substr(separator + 1, dot - separator));
  const std::string extension = OutputKindFor(spreadsheet_version).extension;
  return {WithFolderSeparator(folder) + base + extension, static_cast<int>(extension.size()) + 1};
}

std::string ChooseSourceFile(const FileList& files, UserInterface& ui) {
  if (files.FileCount() >= 1) return files.Entry(files.CurrentIndex()).Path;
  std::string chosen =
      ui.ChooseOpenFile({kOpenSourceTitle, kSourceFileFilter, "", ui.DefaultDataFolder()});
  if (chosen == "False") return {};
  return chosen;
}

void AddFileByDialog(FileList& files, UserInterface& ui) {
  const std::string chosen =
      ui.ChooseOpenFile({kOpenSourceTitle, kAddFileFilter, "", ui.DefaultDataFolder()});
  if (files.AddDialogResult(chosen)) ui.ShowFileList(files.Names());
}

std::string ChooseOutputPath(const GeneralInfo& info, int16_t spreadsheet_version,
                             const OutputNamingContext& context) {
  try {
    return ChooseOutputPathOrThrow(info, spreadsheet_version, context);
  } catch (const std::exception&) {
    context.status.ShowError(kCannotSaveMessage);
    return {};
  }
}

}  // namespace z4400
