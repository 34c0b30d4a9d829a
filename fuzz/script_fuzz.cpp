// The lexer and the compiler of the macro language read any bytes. Nothing is run.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "script/Compiler.h"
#include "script/ScriptError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessary::script;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const CompileMode mode : {CompileMode::Global, CompileMode::Local}) {
    Names names;
    const auto source = Make<Source>(text, "fuzz");
    try {
      Compiler(names, source, mode, false).CompileScript();
    } catch (const ScriptError&) {
    }
    try {
      Compiler(names, source, mode, true).CompileExpression();
    } catch (const ScriptError&) {
    }
  }
  return 0;
}
