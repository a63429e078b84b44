// Markers of a screen: the marker-wide settings and up to ten markers.
#include <limits>
#include <string>

#include "common/numeric_text.h"
#include "common/runtime_failure.h"
#include "source/source_reader.h"

namespace z4400 {
namespace {

/// The marker parameters, in the order a CSV marker block is read.
constexpr std::array<std::string_view, 6> kMarkerIds = {"MKRON",    "MKRPOSY",    "MKRPOSX",
                                                        "MKRINDEX", "MKRPOSYGUI", "MKRTRACE"};

/// A slot with no marker. The trace name is kept from whatever the slot
/// held before, as the marker table has always done.
void Blank(MarkerRecord& record) {
  record.On = 0;
  record.Trace = -1;
  record.Screen = -1;
  record.PointIndex = 0;
  record.PosX = 0;
  record.PosY = 0;
  record.PosYDisplay = 0;
}

/// Fills one field of a marker record from parameter `id`.
void SetMarkerField(MarkerRecord& record, std::string_view id, const std::string& text) {
  if (id == "MKRON") {
    record.On = text == "ON" ? -1 : 0;
  } else if (id == "MKRPOSY") {
    record.PosY = NumericValue(text);
  } else if (id == "MKRPOSX") {
    record.PosX = NumericValue(text);
  } else if (id == "MKRINDEX") {
    record.PointIndex = RoundToInt32(NumericValue(text));
  } else if (id == "MKRPOSYGUI") {
    record.PosYDisplay = NumericValue(text);
  } else if (id == "MKRTRACE") {
    record.TraceName = text;
    if (text == "A") record.Trace = 0;
    if (text == "B") record.Trace = 1;
    if (text == "C") record.Trace = 2;
  }
}

}  // namespace

std::string SourceReader::MarkerParameter(pugi::xml_node marker, std::string_view id) {
  const pugi::xml_node parameter = XmlSource::ChildParameter(marker, id);
  return parameter ? parameter.attribute("Value").value() : std::string();
}

const std::array<MarkerRecord, kMarkerSlots>& SourceReader::MarkerRow(int screen) const {
  return marker_table_[ScreenSlot(screen)];
}

MarkersInfo SourceReader::ReadMarkers(int screen) {
  std::array<MarkerRecord, kMarkerSlots>& row = marker_table_[ScreenSlot(screen)];
  MarkersInfo info;
  const bool delta = ScreenParameter("MKRDLT", screen) == "ON";
  const double markers_on = NumericValue(ScreenParameter("MKRNBON", screen));
  info.DeltaMode = RoundToInt16(markers_on) >= 1 ? (delta ? 2 : 1) : 0;
  info.Reserved = -1;
  info.FixedMarker = ScreenParameter("MKRFIX", screen) == "ON" ? -1 : 0;
  const int64_t count = static_cast<int64_t>(RoundToInt32(markers_on)) - (delta ? 1 : 0);
  if (count < std::numeric_limits<int32_t>::min()) throw RuntimeFailure("overflow of MKRNBON");
  info.MarkerCount = static_cast<int32_t>(count);
  info.Spare = 0;
  const std::string selected = ScreenParameter("MKRSEL", screen);
  info.SelectedMarker = selected == "Ref" ? 0 : RoundToInt32(NumericValue(selected));

  for (MarkerRecord& record : row) Blank(record);
  // The table keeps what was read even when a later marker stops the read.
  auto copy_row = [&] { info.Markers = row; };
  try {
    if (IsXml()) {
      ReadMarkerRecordsXml(screen, row);
    } else {
      ReadMarkerRecordsCsv(screen, row);
    }
  } catch (const RuntimeFailure&) {
    copy_row();
    throw;
  }
  const DigitalValues& digital = Digital(screen);
  if (digital.DigitalMode == "ON" && digital.MeasurementFunction != "Phase-Freq" &&
      digital.MeasurementFunction != "PartialFFT") {
    for (MarkerRecord& record : row) record.PosX /= 1000000;  // the file holds microseconds
  }
  copy_row();
  return info;
}

void SourceReader::ReadMarkerRecordsXml(int screen,
                                        std::array<MarkerRecord, kMarkerSlots>& row) const {
  const std::string nb = std::to_string(screen);
  for (int m = 0; m < 10; ++m) {
    const pugi::xml_node marker = xml_.Marker(nb, std::to_string(m + 1));
    if (!marker) continue;
    MarkerRecord& record = row[static_cast<size_t>(m)];
    for (const std::string_view id :
         {"MKRON", "MKRPOSY", "MKRPOSX", "MKRINDEX", "MKRPOSYGUI", "MKRTRACE"}) {
      SetMarkerField(record, id, MarkerParameter(marker, id));
    }
    record.Screen = screen;
  }
}

void SourceReader::ReadMarkerRecordsCsv(int screen,
                                        std::array<MarkerRecord, kMarkerSlots>& row) const {
  const int16_t context = grid_.FindRowWithValue("Context Nb", std::to_string(screen), 0, 0);
  int16_t end = grid_.FindRow("Context Nb", context + 1, 0);
  if (end < context) end = static_cast<int16_t>(grid_.LastRow() - 1);
  for (int m = 0; m < 10; ++m) {
    const int16_t header =
        grid_.FindRowWithValue("Marker Nb", std::to_string(m + 1), context + 1, end);
    if (header <= 0) continue;
    MarkerRecord& record = row[static_cast<size_t>(m)];
    for (const std::string_view id : kMarkerIds) {
      // A marker block without one of its rows stops the read here.
      const int16_t found = grid_.FindRow(id, header + 1, end);
      SetMarkerField(record, id, std::string(grid_.Cell(found, 1)));
    }
    record.Screen = screen;
  }
}

}  // namespace z4400
