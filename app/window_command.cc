#include <iostream>

#include "app/commands.h"

namespace z4400 {

int RunWindow(int /*argc*/, char** /*argv*/, const std::vector<std::string>& /*files*/,
              const std::optional<std::string>& /*settings_dir*/) {
  std::cerr << "z4400conv: the desktop window is not available yet; use --batch or --dump\n";
  return 2;
}

}  // namespace z4400
