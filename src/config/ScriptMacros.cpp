#include "config/ScriptMacros.h"

#include <utility>
#include <vector>

#include "script/Engine.h"
#include "system/MachineServices.h"

namespace tessary {

namespace {

class ScriptMacros : public MacroEngine {
 public:
  explicit ScriptMacros(Host& host) : machine_(host), engine_(machine_.services()) {
    engine_.SetLanguage("VBScript");
  }

  void AddObject(const std::string& name, std::shared_ptr<Dictionary> items) override {
    std::vector<std::pair<std::string, std::string>> texts;
    for (const auto& [key, value] : *items)
      if (const std::string* text = value.AsText()) texts.emplace_back(key, *text);
    engine_.AddObject(name, engine_.CreateDictionary(texts));
  }

  std::optional<MacroSourceError> AddCode(const std::string& source) override {
    try {
      engine_.AddCode(source);
      return std::nullopt;
    } catch (const script::ScriptError& error) {
      return MacroSourceError{error.number, error.Message(), error.line, error.column, error.text};
    }
  }

  Result<std::string> Evaluate(const std::string& expression) override {
    try {
      return engine_.TextOf(engine_.Evaluate(expression));
    } catch (const script::ScriptError& error) {
      return Failure{error.number, error.Message()};
    }
  }

 private:
  MachineServices machine_;
  script::Engine engine_;
};

}  // namespace

MacroEngineFactory MakeScriptMacros(Host& host) {
  return [&host] { return std::make_unique<ScriptMacros>(host); };
}

}  // namespace tessary
