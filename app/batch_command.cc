#include <iostream>

#include "app/commands.h"

namespace z4400 {

int RunBatch(const BatchOptions& /*options*/) {
  std::cerr << "z4400conv: --batch is not available in this build yet\n";
  return 2;
}

}  // namespace z4400
