// File-level information: the model (which decides whether the file is
// converted at all), date, title and the counts of screens and points.
#include <array>
#include <utility>

#include "common/numeric_text.h"
#include "common/runtime_failure.h"
#include "source/source_reader.h"

namespace z4400 {
namespace {

/// The models the converter accepts and their class.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kModels = {{
    {"Z4410", "MQD"},
    {"Z4420", "MQD"},
    {"Z4430", "MQD"},
    {"Z4510", "KTR"},
    {"Z4520", "KTR"},
    {"Z4530", "KTR"},
    {"Z4540", "KTR"},
}};

/// An attribute that must be present: reading a missing one has always
/// stopped the read.
std::string RequiredAttribute(pugi::xml_node element, const char* name) {
  const pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) throw RuntimeFailure(std::string("missing attribute ") + name);
  return attribute.value();
}

}  // namespace

std::string SourceReader::ModelClass(std::string_view model) {
  for (const auto& [name, model_class] : kModels) {
    if (model == name) return std::string(model_class);
  }
  error_text_ = std::string(kUnknownModelText);
  return std::string();
}

int16_t SourceReader::ReadGeneralInfo(GeneralInfo& info) {
  try {
    const int16_t status = IsXml() ? ReadGeneralInfoXml(info) : ReadGeneralInfoCsv(info);
    if (status != 0) return status;
    current_trace_points_ = RoundToInt16(info.TracePoints);
  } catch (const RuntimeFailure&) {
    error_text_ = std::string(kUnreadableInfoText);
    return 1;
  }
  info.FixedC = 10;
  info.FixedA = 14592;
  info.FixedB = 1792;
  return 0;
}

int16_t SourceReader::ReadGeneralInfoXml(GeneralInfo& info) {
  const pugi::xml_node root = xml_.Root();
  info.SourcePath = source_path_;
  if (!root) throw RuntimeFailure("no AnalyserData element");
  info.Model = RequiredAttribute(root, "Model");
  if (ModelClass(info.Model).empty()) return 1;
  info.Date = RequiredAttribute(root, "Year") + "-" + RequiredAttribute(root, "Month") + "-" +
              RequiredAttribute(root, "Day");
  info.Title = FileParameter("TITLE");
  info.ContextCount = RoundToInt32(NumericValue(FileParameter("NBCTXT")));
  info.TraceTableCount = TraceTableCount();
  info.TracePoints = RoundToInt32(NumericValue(FileParameter("TP")));
  return 0;
}

int16_t SourceReader::ReadGeneralInfoCsv(GeneralInfo& info) {
  info.SourcePath = source_path_;
  info.Model = CsvValue("MODEL");
  if (ModelClass(info.Model).empty()) return 1;
  const int16_t day_row = grid_.FindRowByPrefix("DAY", 0, 0, 0);
  info.Date = std::string(RightChars(grid_.Cell(day_row, 1), 4)) + "-" +
              std::string(RightChars(grid_.Cell(day_row, 2), 2)) + "-" +
              std::string(RightChars(grid_.Cell(day_row, 0), 2));
  info.Title = CsvValue("TITLE");
  info.ContextCount = RoundToInt32(NumericValue(CsvValue("NBCTXT")));
  info.TraceTableCount = TraceTableCount();
  info.TracePoints = RoundToInt32(NumericValue(CsvValue("TP")));
  return 0;
}

}  // namespace z4400
