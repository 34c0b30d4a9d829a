#include "desktop/qt/Program.h"

int main(int argc, char** argv) { return tessary::RunDesktopProgram(argc, argv); }
