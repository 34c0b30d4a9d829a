#include <iostream>
#include <string>
#include <vector>

#include "host/posix/PosixMachine.h"
#include "monitor/posix/PrinterCommand.h"

int main(int argc, char** argv) {
  tessary::PosixMachine machine(argc, argv);
  tessary::Run run(machine.host());
  return tessary::PrinterCommand(run, std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc),
                                 std::cout, std::cerr);
}
