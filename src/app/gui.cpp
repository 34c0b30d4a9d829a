#include "config/ScriptMacros.h"
#include "desktop/Screen.h"
#include "host/posix/PosixMachine.h"
#include "job/modMain.h"

int main(int argc, char** argv) {
  tessary::Screen screen;
  tessary::PosixMachine machine(argc, argv, &screen.display);
  tessary::Run run(machine.host());
  run.macros.makeEngine = tessary::MakeScriptMacros(machine.host());
  return tessary::Main(run);
}
