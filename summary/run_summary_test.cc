#include "summary/run_summary.h"

#include <gtest/gtest.h>

#include <fstream>

#include "testing/instrument_generator.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

TEST(RunSummaryTest, FilesInRunOrderAFileAddedAgainKeepsItsPlace) {
  testing::ScratchDir scratch;
  GeneratorOptions options;
  options.points = 21;
  options.markers = 2;
  options.title = "Bench 7";
  const auto write = [&](const std::string& name, const GeneratorOptions& with) {
    const std::filesystem::path path = scratch / name;
    std::ofstream(path, std::ios::binary) << InstrumentXml(GenerateInstrumentFile(with));
    return path.string();
  };
  const std::string first = write("first.xml", options);
  GeneratorOptions two_screens = options;
  two_screens.screens = {ScreenKind::kSpectrum, ScreenKind::kZeroSpan};
  two_screens.delta = true;
  const std::string second = write("second.xml", two_screens);
  const std::string broken = (scratch / "broken.xml").string();
  std::ofstream(broken) << "<AnalyserData";

  RunSummary run;
  run.Add(first, true, "", "first.xlsx");
  run.Add(second, true, "", "second.xlsx");
  run.Add(broken, false, "Not MQD Data.", "");
  ASSERT_EQ(run.files().size(), 3u);
  const FileSummary& one = run.files()[0];
  EXPECT_EQ(one.model, "Z4420");
  EXPECT_EQ(one.title, "Bench 7");
  EXPECT_EQ(one.screens, 1);
  ASSERT_EQ(one.markers.size(), 2u);
  EXPECT_EQ(one.markers[1].screen, 1);
  EXPECT_EQ(one.markers[1].entry.label, CellValue(2));
  EXPECT_EQ(one.markers[1].delta_reference, 0);
  const FileSummary& two = run.files()[1];
  EXPECT_EQ(two.screens, 2);
  ASSERT_FALSE(two.markers.empty());
  EXPECT_EQ(two.markers.back().screen, 2);
  EXPECT_EQ(two.markers.back().entry.label, CellValue("Reference"));
  EXPECT_NE(two.markers.back().delta_reference, 0);
  const FileSummary& bad = run.files()[2];
  EXPECT_FALSE(bad.converted);
  EXPECT_EQ(bad.reason, "Not MQD Data.");
  EXPECT_EQ(bad.model, "");

  // The first file replaced by a newer measurement and converted again.
  options.title = "Bench 8";
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kSpectrum, ScreenKind::kSpectrum};
  write("first.xml", options);
  run.Add(first, true, "", "first.xlsx");
  ASSERT_EQ(run.files().size(), 3u);
  EXPECT_EQ(run.files()[0].title, "Bench 8");
  EXPECT_EQ(run.files()[0].screens, 3);
  EXPECT_EQ(run.files()[1].source, second);
}

}  // namespace
}  // namespace z4400
