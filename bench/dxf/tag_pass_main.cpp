// bench_dxf_tag_pass IN.dxf OUT.dxf [DX DY DZ]: the bare tag pass as a program of its own, so that a shell
// script can measure it with /usr/bin/time beside cadhost. Prints the number of tags and shifted values.
#include "TagPass.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  if (argc != 3 && argc != 6) {
    std::cerr << "usage: bench_dxf_tag_pass IN.dxf OUT.dxf [DX DY DZ]\n";
    return 2;
  }
  std::array<double, 3> offset = bench::kSurveyShift;
  if (argc == 6)
    for (std::size_t i = 0; i < 3; ++i) offset[i] = std::strtod(argv[3 + i], nullptr);
  bench::TagPassCount count;
  std::string error;
  if (!bench::shiftEveryCoordinate(argv[1], argv[2], offset, count, error)) {
    std::cerr << "bench_dxf_tag_pass: " << error << "\n";
    return 1;
  }
  std::cout << count.tags << " tags, " << count.shifted << " coordinates shifted\n";
  return 0;
}
