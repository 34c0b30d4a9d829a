#include <iostream>
#include <string>
#include <vector>

#include "monitor/posix/Filter.h"

int main(int argc, char** argv) {
  tessary::JobReport report(std::cerr);
  return tessary::RunFilter(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), report);
}
