// The two file layouts of a generated measurement: the XML document and the
// CSV export, as the instrument writes them.
#include <string>

#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

std::string Escape(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out.push_back(c);
    }
  }
  return out;
}

void AppendParameter(std::string& out, std::string_view indent, std::string_view id,
                     std::string_view value) {
  out.append(indent).append("<Parameter Id=\"").append(Escape(id)).append("\" Value=\"");
  out.append(Escape(value)).append("\"/>\n");
}

}  // namespace

std::string InstrumentXml(const GeneratedFile& file) {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  out += "<AnalyserData Model=\"" + Escape(file.model) + "\" SerialNumber=\"" +
         Escape(file.serial) + "\" Year=\"" + file.year + "\" Month=\"" + file.month + "\" Day=\"" +
         file.day + "\" Hour=\"" + file.time.substr(0, 2) + "\" Minute=\"" +
         file.time.substr(3, 2) + "\" Second=\"" + file.time.substr(6, 2) + "\">\n";
  AppendParameter(out, "  ", "TITLE", file.title);
  AppendParameter(out, "  ", "NBCTXT", std::to_string(file.screens.size()));
  AppendParameter(out, "  ", "TP", std::to_string(file.points));
  for (size_t s = 0; s < file.screens.size(); ++s) {
    const GeneratedScreen& screen = file.screens[s];
    out += "  <Context Nb=\"" + std::to_string(s) + "\">\n";
    for (const auto& [id, value] : screen.parameters) AppendParameter(out, "    ", id, value);
    for (const GeneratedMarker& marker : screen.markers) {
      out += "    <Marker Nb=\"" + std::to_string(marker.number) + "\">\n";
      for (const auto& [id, value] : marker.parameters) AppendParameter(out, "      ", id, value);
      out += "    </Marker>\n";
    }
    for (size_t t = 0; t < screen.traces.size(); ++t) {
      const GeneratedTrace& trace = screen.traces[t];
      out += "    <Trace Nb=\"" + std::to_string(t + 1) + "\" Name=\"" + trace.letter + "\">\n";
      out += "      <Table Unit=\"" + Escape(trace.unit) + "\">\n";
      for (size_t i = 0; i < trace.levels.size(); ++i) {
        if (!trace.present[i]) continue;
        out.append("        <Item Point=\"").append(std::to_string(i)).append("\" Lvl=\"");
        out.append(trace.levels[i]).append("\"/>\n");
      }
      out += "      </Table>\n    </Trace>\n";
    }
    out += "  </Context>\n";
  }
  out += "</AnalyserData>\n";
  return out;
}

std::string InstrumentCsv(const GeneratedFile& file, bool bare_line_feeds) {
  const std::string eol = bare_line_feeds ? "\n" : "\r\n";
  std::string out;
  auto row = [&](std::string_view key, std::string_view value) {
    out.append(key).append(",").append(value).append(eol);
  };
  row("MODEL", file.model);
  row("SERIAL", file.serial);
  row("TITLE", file.title);
  out += "DAY " + file.day + ",YEAR " + file.year + ",MONTH " + file.month + eol;
  row("TIME", file.time);
  row("NBCTXT", std::to_string(file.screens.size()));
  row("TP", std::to_string(file.points));
  for (size_t s = 0; s < file.screens.size(); ++s) {
    const GeneratedScreen& screen = file.screens[s];
    row("Context Nb", std::to_string(s));
    for (const auto& [id, value] : screen.parameters) row(id, value);
    for (const GeneratedMarker& marker : screen.markers) {
      row("Marker Nb", std::to_string(marker.number));
      for (const auto& [id, value] : marker.parameters) row(id, value);
    }
    for (size_t t = 0; t < screen.traces.size(); ++t) {
      const GeneratedTrace& trace = screen.traces[t];
      row("Trace Nb", std::to_string(t + 1));
      row("TRACE", trace.letter);
      out += "UNIT,,," + trace.unit + eol;
      for (size_t i = 0; i < trace.levels.size(); ++i) {
        out.append("Point,").append(std::to_string(i)).append(",").append(trace.x[i]);
        out.append(",").append(trace.levels[i]).append(eol);
      }
    }
  }
  return out;
}

}  // namespace z4400
