// xlsxwriter-convert SOURCE OUTPUT: the comparison program of the
// side-by-side benchmark, a whole process that converts one instrument file
// with pugixml and libxlsxwriter (see xlsxwriter_baseline.h).
#include <cstdio>

#include "bench/xlsxwriter_baseline.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: xlsxwriter-convert SOURCE OUTPUT\n");
    return 2;
  }
  return z4400::WriteWithLibxlsxwriter(argv[1], argv[2]) ? 0 : 1;
}
