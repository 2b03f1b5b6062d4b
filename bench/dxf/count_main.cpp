// bench_dxf_count DRAWING.dxf: reads the drawing with the DXF store and prints its number of model-space
// entities; exits with 1 and the store's message when it cannot be read. job.sh checks with it that every
// benchmarked job wrote a drawing that reads back whole.
#include "host/dxf/Document.h"

#include <iostream>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: bench_dxf_count DRAWING.dxf\n";
    return 2;
  }
  std::string error;
  const auto doc = dxf::Document::load(argv[1], error);
  if (!doc) {
    std::cerr << "bench_dxf_count: " << error << "\n";
    return 1;
  }
  std::cout << doc->modelSpace().size() << "\n";
  return 0;
}
