#include "summary/run_summary.h"

#include <algorithm>

#include "common/runtime_failure.h"
#include "source/whole_source.h"

namespace z4400 {

void RunSummary::Add(const std::string& source, bool converted, const std::string& reason,
                     const std::string& workbook) {
  FileSummary file{source, converted, reason, workbook};
  WholeSource whole;
  try {
    whole = ReadWholeSource(reader_, source);
  } catch (const RuntimeFailure&) {
    // The conversion reports the failure; the summary lists what was read.
  }
  file.model = whole.Info.Model;
  file.date = whole.Info.Date;
  file.title = whole.Info.Title;
  file.screens = static_cast<int>(whole.Screens.size());
  for (size_t s = 0; s < whole.Screens.size(); ++s) {
    const ScreenRead& screen = whole.Screens[s];
    const MarkerAxes axes = MarkerAxesOf(screen.Kind, reader_.Digital(static_cast<int>(s)));
    const int reference = DeltaReferenceOf(screen.Markers);
    for (MarkerListEntry& entry : ListedMarkers(screen.Markers, axes)) {
      file.markers.push_back({static_cast<int>(s) + 1, std::move(entry), reference});
    }
  }
  // A file converted again (a watched file replaced by a newer one) keeps
  // its place with its new outcome.
  const auto same = std::find_if(files_.begin(), files_.end(),
                                 [&](const FileSummary& other) { return other.source == source; });
  if (same != files_.end()) {
    *same = std::move(file);
  } else {
    files_.push_back(std::move(file));
  }
}

}  // namespace z4400
