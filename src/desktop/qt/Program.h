// The helper program itself.
#pragma once

namespace tessary {

/// Shows what comes over the standard output, which is the line to gui, until gui is gone. Where no display can
/// be reached it ends at once, silently.
int RunDesktopProgram(int argc, char** argv);

}  // namespace tessary
