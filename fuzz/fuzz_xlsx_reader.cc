// libFuzzer target over the reading of .xlsx packages: any bytes must give a
// workbook or a clean error, never a crash, a hang or unbounded memory.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // Small limits, so that the fuzzer explores refusals instead of running
  // out of memory on what the real limits would still accept.
  z4400::XlsxReadLimits limits;
  limits.zip.max_member_size = 4 << 20;
  limits.zip.max_total_size = 16 << 20;
  limits.cells.remaining = 1 << 20;
  z4400::Application application;
  z4400::Workbook workbook(&application, "Book1");
  std::string error;
  z4400::ReadXlsxBytes(bytes, &workbook, &error, limits);
  return 0;
}
