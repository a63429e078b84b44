// Test side: the parameters, markers and trace levels of an instrument
// sample, read straight from its text (XML through pugixml, CSV line by line)
// so that the end-to-end tests derive what a converted workbook must show
// without going through the converter's own readers.
#ifndef Z4400_APP_INSTRUMENT_SAMPLE_TEST_UTIL_H_
#define Z4400_APP_INSTRUMENT_SAMPLE_TEST_UTIL_H_

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace z4400::testing {

using Parameters = std::map<std::string, std::string>;

struct SampleTrace {
  std::string unit;
  /// Level per point; missing XML items read −200.
  std::vector<double> levels;
};

struct SampleScreen {
  Parameters parameters;
  /// Marker parameters by marker number (1 to 10).
  std::map<int, Parameters> markers;
  std::vector<SampleTrace> traces;

  std::string Text(const std::string& id) const {
    const auto found = parameters.find(id);
    return found == parameters.end() ? std::string() : found->second;
  }
  double Number(const std::string& id) const { return std::atof(Text(id).c_str()); }
  bool IsDigital() const { return Text("DGT_EXE") == "ON"; }
};

struct InstrumentSample {
  Parameters file;
  std::vector<SampleScreen> screens;
  int points = 0;
};

inline std::vector<std::string> SplitCells(const std::string& line) {
  std::vector<std::string> cells;
  std::string cell;
  std::istringstream stream(line);
  while (std::getline(stream, cell, ',')) cells.push_back(cell);
  if (!line.empty() && line.back() == ',') cells.emplace_back();
  return cells;
}

inline InstrumentSample ReadXmlSample(const std::filesystem::path& path) {
  InstrumentSample sample;
  pugi::xml_document document;
  if (!document.load_file(path.c_str())) return sample;
  const pugi::xml_node root = document.child("AnalyserData");
  for (const pugi::xml_node parameter : root.children("Parameter")) {
    sample.file[parameter.attribute("Id").value()] = parameter.attribute("Value").value();
  }
  sample.points = std::atoi(sample.file["TP"].c_str());
  for (const pugi::xml_node context : root.children("Context")) {
    SampleScreen screen;
    for (const pugi::xml_node parameter : context.children("Parameter")) {
      screen.parameters[parameter.attribute("Id").value()] = parameter.attribute("Value").value();
    }
    for (const pugi::xml_node marker : context.children("Marker")) {
      Parameters& parameters = screen.markers[marker.attribute("Nb").as_int()];
      for (const pugi::xml_node parameter : marker.children("Parameter")) {
        parameters[parameter.attribute("Id").value()] = parameter.attribute("Value").value();
      }
    }
    for (const pugi::xml_node trace : context.children("Trace")) {
      const pugi::xml_node table = trace.child("Table");
      SampleTrace values{table.attribute("Unit").value(),
                         std::vector<double>(static_cast<size_t>(sample.points), -200.0)};
      for (const pugi::xml_node item : table.children("Item")) {
        const int point = item.attribute("Point").as_int(-1);
        if (point >= 0 && point < sample.points) {
          values.levels[static_cast<size_t>(point)] = item.attribute("Lvl").as_double();
        }
      }
      screen.traces.push_back(std::move(values));
    }
    sample.screens.push_back(std::move(screen));
  }
  return sample;
}

inline InstrumentSample ReadCsvSample(const std::filesystem::path& path) {
  InstrumentSample sample;
  std::ifstream in(path, std::ios::binary);
  std::string line;
  SampleScreen* screen = nullptr;
  Parameters* marker = nullptr;
  SampleTrace* trace = nullptr;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::vector<std::string> cells = SplitCells(line);
    if (cells.size() < 2) continue;
    const std::string& key = cells[0];
    if (key == "Context Nb") {
      sample.screens.emplace_back();
      screen = &sample.screens.back();
      marker = nullptr;
      trace = nullptr;
    } else if (screen == nullptr) {
      sample.file[key] = cells[1];
    } else if (key == "Marker Nb") {
      marker = &screen->markers[std::atoi(cells[1].c_str())];
    } else if (key == "Trace Nb") {
      marker = nullptr;
      screen->traces.emplace_back();
      trace = &screen->traces.back();
    } else if (trace != nullptr && key == "UNIT" && cells.size() >= 4) {
      trace->unit = cells[3];
    } else if (trace != nullptr && key == "Point" && cells.size() >= 4) {
      trace->levels.push_back(std::atof(cells[3].c_str()));
    } else if (trace == nullptr && marker != nullptr) {
      (*marker)[key] = cells[1];
    } else if (trace == nullptr) {
      screen->parameters[key] = cells[1];
    }
  }
  sample.points = std::atoi(sample.file["TP"].c_str());
  return sample;
}

inline InstrumentSample ReadSample(const std::filesystem::path& path) {
  return path.extension() == ".xml" ? ReadXmlSample(path) : ReadCsvSample(path);
}

}  // namespace z4400::testing

#endif  // Z4400_APP_INSTRUMENT_SAMPLE_TEST_UTIL_H_
