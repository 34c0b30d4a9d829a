// The macro language: what the program does with it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "script/Object.h"
#include "script/ScriptError.h"
#include "script/Services.h"
#include "script/Value.h"

namespace tessary::script {

class Interpreter;

/// One engine keeps its variables, procedures and classes from call to call. Everything that goes wrong in a
/// script is thrown as a ScriptError with number, description, line (from 1), column (from 0) and the text of
/// the source line.
///
/// Nothing limits how long a script runs; how deep it recurses and how much it holds is limited (kMaxCalls,
/// kMaxNestedRuns, kMaxNesting, kMaxTextBytes, kMaxElements).
class Engine {
 public:
  explicit Engine(Services services);
  ~Engine();
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  /// Comes first; only "VBScript", in any case, is known. Any other name, and every other call before this one,
  /// raises error 5.
  void SetLanguage(std::string_view name);
  /// Makes an object known to all scripts by a name.
  void AddObject(std::string_view name, const Ref<Object>& object);
  /// Declares and runs what the source text holds, which is UTF-8. Errors carry `origin`, such as a file's
  /// name. After an error at compile time (1001 to 1058) nothing of the text has been declared or run.
  void AddCode(std::string_view source, std::string_view origin = {});
  Value Evaluate(std::string_view expression);
  /// A value as text, objects by their default member; empty if it cannot be converted.
  std::string TextOf(const Value& value);

  /// What CreateObject gives a script; null for an unknown class.
  Ref<Object> CreateObject(std::string_view className);
  /// A Scripting.Dictionary that holds the given texts, which are data and never read as code.
  Ref<Object> CreateDictionary(const std::vector<std::pair<std::string, std::string>>& items);

 private:
  void RequireLanguage() const;

  std::unique_ptr<Interpreter> interpreter_;
  bool hasLanguage_ = false;
};

}  // namespace tessary::script
