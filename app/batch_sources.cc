#include "app/batch_sources.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
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

/// ".xml" or ".csv" in any case.
bool HasSourceExtension(const std::string& path) {
  const std::string extension = Lowered(ExtensionOf(path));
  return extension == ".xml" || extension == ".csv";
}

/// The files of folder `root` to convert, sorted. What the walk leaves out
/// that the user may have meant goes to `skipped`, with the reason: a
/// source's extension in another case, a source name that is not a regular
/// file (a pipe, a device), a folder that cannot be read.
std::vector<std::filesystem::path> FolderFiles(const std::filesystem::path& root,
                                               const std::string& shown_root,
                                               std::vector<std::string>& skipped) {
  std::vector<std::filesystem::path> files;
  const auto skip = [&](const std::filesystem::path& path, const std::string& reason) {
    const std::filesystem::path shown =
        std::filesystem::path(shown_root) / path.lexically_relative(root);
    skipped.push_back(shown.string() + ": skipped: " + reason);
  };
  std::error_code error;
  std::filesystem::recursive_directory_iterator entry(root, error);
  if (error) {
    skipped.push_back(shown_root + ": skipped: cannot read the folder: " + error.message());
    return files;
  }
  for (const std::filesystem::recursive_directory_iterator end; !error && entry != end;
       entry.increment(error)) {
    const std::filesystem::path& path = entry->path();
    std::error_code kind_error;
    if (entry->is_directory(kind_error)) {
      // A folder the walk cannot enter would end it: it is named and passed.
      if (::access(path.c_str(), R_OK | X_OK) != 0) {
        skip(path, std::string("cannot read the folder: ") + std::strerror(errno));
        entry.disable_recursion_pending();
      }
      continue;
    }
    if (!HasSourceExtension(path.string())) continue;
    if (!entry->is_regular_file(kind_error)) {
      skip(path, "not a regular file");
    } else if (const std::string refusal = ExtensionRefusal(path.string()); !refusal.empty()) {
      skip(path, refusal);
    } else {
      files.push_back(path.lexically_relative(root));
    }
  }
  if (error) {
    skipped.push_back(shown_root +
                      ": skipped: the rest of the folder, its walk stopped: " + error.message());
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
  if (HasSourceExtension(path)) return "the extension must be \".xml\" or \".csv\" in lower case";
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
