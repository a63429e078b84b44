#include "app/batch_sources.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "driver/file_list.h"

namespace z4400 {
namespace {

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// The extension with its dot, as written: ".xml", ".XML", "" …
std::string ExtensionOf(const std::string& path) {
  return std::filesystem::path(path).extension().string();
}

/// The files of folder `root` to convert, sorted; others of a source's
/// extension in another case go to `skipped`.
std::vector<std::filesystem::path> FolderFiles(const std::filesystem::path& root,
                                               const std::string& shown_root,
                                               std::vector<std::string>& skipped) {
  std::vector<std::filesystem::path> files;
  std::error_code error;
  const auto options = std::filesystem::directory_options::skip_permission_denied;
  for (std::filesystem::recursive_directory_iterator entry(root, options, error), end;
       !error && entry != end; entry.increment(error)) {
    std::error_code kind_error;
    if (!entry->is_regular_file(kind_error)) continue;
    const std::string extension = ExtensionOf(entry->path().string());
    if (extension == ".xml" || extension == ".csv") {
      files.push_back(entry->path().lexically_relative(root));
    } else if (Lowered(extension) == ".xml" || Lowered(extension) == ".csv") {
      const std::filesystem::path shown =
          std::filesystem::path(shown_root) / entry->path().lexically_relative(root);
      skipped.push_back(shown.string() + ": skipped: " + ExtensionRefusal(shown.string()));
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::string ListedPath(const std::string& argument) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
  if (error) return argument;
  return absolute.lexically_normal().string();
}

std::string ExtensionRefusal(const std::string& path) {
  const std::string extension = ExtensionOf(path);
  if (extension == ".xml" || extension == ".csv") return {};
  if (Lowered(extension) == ".xml" || Lowered(extension) == ".csv") {
    return "the extension must be \".xml\" or \".csv\" in lower case";
  }
  return "not an .xml or .csv file";
}

BatchSources CollectSources(const std::vector<std::string>& arguments,
                            const std::optional<std::string>& output_dir) {
  BatchSources sources;
  const std::string output_root = output_dir ? ListedPath(*output_dir) : std::string();
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (!std::filesystem::is_directory(argument, error)) {
      BatchEntry entry{ListedPath(argument), argument, output_root, ExtensionRefusal(argument)};
      sources.entries.push_back(std::move(entry));
      continue;
    }
    const std::filesystem::path root(ListedPath(argument));
    for (const std::filesystem::path& relative : FolderFiles(root, argument, sources.skipped)) {
      BatchEntry entry;
      entry.Source = (root / relative).string();
      entry.Name = (std::filesystem::path(argument) / relative).string();
      if (output_dir) {
        entry.OutputFolder = relative.has_parent_path()
                                 ? (std::filesystem::path(output_root) / relative.parent_path())
                                       .lexically_normal()
                                       .string()
                                 : output_root;
      }
      sources.entries.push_back(std::move(entry));
    }
  }
  return sources;
}

}  // namespace z4400
