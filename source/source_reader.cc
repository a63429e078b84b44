#include "source/source_reader.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/runtime_failure.h"
#include "source/text_decoding.h"

namespace z4400 {
namespace {

std::string LastThree(const std::string& path) {
  return path.size() <= 3 ? path : path.substr(path.size() - 3);
}

/// The size of the open file `in`, when it can be read whole.
std::optional<size_t> ReadableSize(std::ifstream& in) {
  if (!in) return std::nullopt;
  const std::streamoff size = in.seekg(0, std::ios::end).tellg();
  if (size < 0 || static_cast<uintmax_t>(size) > kMaxSourceBytes) return std::nullopt;
  in.seekg(0);
  return static_cast<size_t>(size);
}

/// The whole file, or nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::optional<size_t> size = ReadableSize(in);
  if (!size) return std::nullopt;
  std::string bytes(*size, '\0');
  if (!in.read(bytes.data(), static_cast<std::streamsize>(*size))) return std::nullopt;
  return bytes;
}

/// Reads the whole file into the XML source's buffer and parses it there;
/// a file that cannot be read leaves an empty document.
void LoadXmlFile(const std::string& path, XmlSource& xml) {
  std::ifstream in(path, std::ios::binary);
  const std::optional<size_t> size = ReadableSize(in);
  if (!size) {
    xml.Load({});
    return;
  }
  const std::span<char> buffer = xml.Buffer(*size);
  if (!in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()))) {
    xml.Load({});
    return;
  }
  xml.LoadBuffer();
}

}  // namespace

int16_t SourceReader::OpenSource(const std::string& path) {
  const std::string kind = LastThree(path);
  if (kind != "xml" && kind != "csv") return OpenSourceBytes(path, {});
  std::error_code error;
  const uintmax_t size = std::filesystem::file_size(path, error);
  if (!error && size > kMaxSourceBytes) {
    source_kind_ = kind;
    source_path_ = path;
    xml_.Load({});
    grid_.Load({});
    error_text_ = std::string(kFileTooLargeText);
    return -1;
  }
  if (kind == "xml") {
    source_kind_ = kind;
    source_path_ = path;
    grid_.Load({});
    LoadXmlFile(path, xml_);
    return 0;
  }
  const std::optional<std::string> bytes = ReadWholeFile(path);
  if (!bytes) {
    source_kind_ = kind;
    source_path_ = path;
    grid_.Load({});
    error_text_ = std::string(kInvalidFileText);
    return -1;
  }
  return OpenSourceBytes(path, bytes ? *bytes : std::string());
}

int16_t SourceReader::OpenSourceBytes(const std::string& path, std::string_view bytes) {
  source_kind_ = LastThree(path);
  source_path_ = path;
  int16_t status = 1;
  if (source_kind_ != "xml" && source_kind_ != "csv") {
    status = 1;  // nothing loaded
  } else if (bytes.size() > kMaxSourceBytes) {
    error_text_ = std::string(kFileTooLargeText);
    status = -1;
  } else if (source_kind_ == "xml") {
    grid_.Load({});
    xml_.Load(bytes);
    status = 0;
  } else if (source_kind_ == "csv") {
    xml_.Load({});
    ++csv_file_number_;
    if (grid_.Load(DecodeCsvText(bytes))) {
      status = 0;
    } else {
      error_text_ = std::string(kInvalidFileText);
      status = -1;
    }
  }
  return status;
}

std::string SourceReader::FileParameter(std::string_view id) const {
  const pugi::xml_node node = xml_.FileParameter(id);
  return node ? node.attribute("Value").value() : std::string();
}

std::string SourceReader::ScreenParameter(std::string_view id, int screen) const {
  const std::string nb = std::to_string(screen);
  if (IsXml()) {
    const pugi::xml_node node = xml_.ScreenParameter(nb, id);
    return node ? node.attribute("Value").value() : std::string();
  }
  const int16_t context = grid_.FindRowWithValue("Context Nb", nb, 0, 0);
  const int16_t row = grid_.FindRow(id, context, 0);
  if (row < 0) return std::string();
  return std::string(grid_.Cell(row, 1));
}

std::string SourceReader::CsvValue(std::string_view key) const {
  return std::string(grid_.Value(key));
}

int32_t SourceReader::TraceTableCount() const {
  if (IsXml()) return xml_.TraceTableCount();
  int32_t count = 0;
  for (int row = grid_.FindRowWithValue("Point", "0", 1, 0); row >= 0;
       row = grid_.FindRowWithValue("Point", "0", row + 1, 0)) {
    ++count;
  }
  return count;
}

int32_t SourceReader::ScreenTraceCount(int screen) {
  const std::string nb = std::to_string(screen);
  if (IsXml()) return static_cast<int32_t>(xml_.ScreenTables(nb).size());
  trace_table_rows_.fill(-1);
  const int16_t context = grid_.FindRowWithValue("Context Nb", nb, 0, 0);
  int16_t end = grid_.FindRow("Context Nb", context + 1, 0);
  if (context > end) end = static_cast<int16_t>(grid_.LastRow() - 1);
  int previous = context;
  for (int32_t k = 0;; ++k) {
    const int16_t row = grid_.FindRow("Trace Nb", previous + 1, end);
    if (k >= kTraceTableRowSlots) {
      throw RuntimeFailure("more than 10 trace tables on CSV screen " + nb);
    }
    trace_table_rows_[static_cast<size_t>(k)] = row;
    if (row < 0) return k;
    previous = row;
  }
}

size_t SourceReader::ScreenSlot(int screen) {
  if (screen < 0 || screen >= kScreenSlots) {
    throw RuntimeFailure("screen " + std::to_string(screen) + " is outside the screen tables");
  }
  return static_cast<size_t>(screen);
}

const ScreenSummary& SourceReader::Summary(int screen) const {
  return summaries_[ScreenSlot(screen)];
}

const DigitalValues& SourceReader::Digital(int screen) const {
  return digital_[ScreenSlot(screen)];
}

const VerticalAxis& SourceReader::Vertical(int screen) const {
  return vertical_[ScreenSlot(screen)];
}

}  // namespace z4400
