// libFuzzer target over the reading of .xlsx packages: any bytes must give a
// workbook or a clean error, never a crash, a hang or unbounded memory.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "workbook/zip_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // Small limits, so that the fuzzer explores refusals instead of running
  // out of memory on what the real limits would still accept.
  z4400::ZipLimits limits;
  limits.max_member_size = 4 << 20;
  limits.max_total_size = 16 << 20;
  std::string error;
  auto reader = z4400::ZipReader::OpenBytes(bytes, &error, limits);
  if (!reader) return 0;
  std::string member;
  for (const std::string& name : reader->names()) reader->Read(name, &member, &error);
  return 0;
}
