#include "workbook/xlsx/number_texts.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

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
  // Enough distinct levels to grow the table several times, each seen twice
  // (a cell and a chart cache) in an order that mixes old and new values.
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
  std::set<std::uint64_t> distinct;
  for (double value : values) distinct.insert(std::bit_cast<std::uint64_t>(value));
  EXPECT_EQ(texts.size(), distinct.size());
}

}  // namespace
}  // namespace z4400
