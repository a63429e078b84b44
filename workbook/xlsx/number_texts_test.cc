#include "workbook/xlsx/number_texts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

std::string Formatted(double value) {
  char buffer[kNumberBufferSize];
  return std::string(FormatNumber(value, buffer));
}

TEST(NumberTextsTest, GivesTheTextOfFormatNumberForEveryValueSeenOnceOrAgain) {
  std::vector<double> values = {0.0,
                                -0.0,
                                1.0,
                                -3.0,
                                0.1,
                                81.77,
                                1.0 / 3.0,
                                1e21,
                                -2.5e-7,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::denorm_min(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()};
  // More distinct levels than the table remembers, each seen twice (a cell
  // and a chart cache) in an order that mixes old and new values.
  std::mt19937 random(4400);
  std::uniform_int_distribution<int> level(-12000, 12000);
  for (int i = 0; i < 20000; ++i) values.push_back(level(random) / 100.0);
  NumberTexts texts;
  std::vector<std::string> first;
  first.reserve(values.size());
  for (double value : values) first.emplace_back(texts.Text(value));
  for (std::size_t i = values.size(); i-- > 0;) {
    EXPECT_EQ(first[i], Formatted(values[i])) << i;
    EXPECT_EQ(texts.Text(values[i]), first[i]) << i;
  }
}

// A chart cache reads a sheet's cells column by column after (or before)
// the sheet part wrote them row by row; each cell of each sheet keeps its
// own text, also where two sheets hold different numbers in the same place.
TEST(NumberTextsTest, RemembersTheTextOfEachCellOfEachSheet) {
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& first = book.Worksheets()(1);
  Worksheet& second = book.Worksheets().Add();
  std::mt19937 random(4401);
  std::uniform_real_distribution<double> level(-150, 30);
  constexpr int kRows = 1200;
  constexpr int kColumns = 6;
  const auto value_at = [](const Worksheet& sheet, int row, int column) {
    return sheet.ValueAt(row, column).Number();
  };
  for (Worksheet* sheet : {&first, &second}) {
    for (int row = 1; row <= kRows; ++row) {
      for (int column = 1; column <= kColumns; ++column) {
        sheet->StoreValue(row, column, CellValue(level(random)));
      }
    }
  }
  NumberTexts texts;
  for (const Worksheet* sheet : {&first, &second}) {
    for (int row = 1; row <= kRows; ++row) {
      for (int column = 1; column <= kColumns; ++column) {
        const double value = value_at(*sheet, row, column);
        ASSERT_EQ(texts.CellText(*sheet, row, column, value), Formatted(value)) << row;
      }
    }
  }
  for (const Worksheet* sheet : {&second, &first}) {
    for (int column = kColumns; column >= 1; --column) {
      for (int row = kRows; row >= 1; --row) {
        const double value = value_at(*sheet, row, column);
        ASSERT_EQ(texts.CellText(*sheet, row, column, value), Formatted(value))
            << sheet->Name() << " " << row << " " << column;
      }
    }
  }
}

}  // namespace
}  // namespace z4400
