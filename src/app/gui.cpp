#include "config/ScriptMacros.h"
#include "host/posix/PosixMachine.h"
#include "job/modMain.h"

int main(int argc, char** argv) {
  tessary::PosixMachine machine(argc, argv);
  tessary::Run run(machine.host());
  run.macros.makeEngine = tessary::MakeScriptMacros(machine.host());
  return tessary::Main(run);
}
