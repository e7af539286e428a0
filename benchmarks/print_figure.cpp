// A row of the table for what a script has measured, or the table's head when nothing is given.
#include <cstdio>
#include <cstdlib>

#include "benchmarks/figure.h"

int main(int argc, char** argv) {
  if (argc == 1) {
    benchmarks::PrintHead();
    return 0;
  }
  if (argc < 5) {
    std::fprintf(stderr, "print_figure [WHAT UNIT BUDGET VALUE...]\n");
    return 2;
  }
  benchmarks::Sample sample;
  for (int i = 4; i < argc; ++i) sample.Add(std::atof(argv[i]));
  benchmarks::PrintRow(argv[1], argv[2], sample, std::atof(argv[3]));
  return 0;
}
