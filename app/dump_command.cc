#include <iostream>

#include "app/commands.h"

namespace z4400 {

int RunDump(const std::string& /*path*/) {
  std::cerr << "z4400conv: --dump is not available in this build yet\n";
  return 2;
}

}  // namespace z4400
