#include "script/Engine.h"

#include <utility>

#include "script/Conversions.h"
#include "script/Interpreter.h"
#include "script/library/Library.h"

namespace tessary::script {

Engine::Engine(Services services) : interpreter_(std::make_unique<Interpreter>(std::move(services))) {
  interpreter_->AddFunctions(LibraryFunctions());
  for (const NamedConstant& constant : LibraryConstants())
    interpreter_->AddConstant(constant.name, constant.value);
}

Engine::~Engine() = default;

void Engine::SetLanguage(std::string_view name) {
  if (!SameName(name, "VBScript")) Raise(kInvalidCall, name);
  hasLanguage_ = true;
}

void Engine::RequireLanguage() const {
  if (!hasLanguage_) Raise(kInvalidCall);
}

void Engine::AddObject(std::string_view name, const Ref<Object>& object) {
  RequireLanguage();
  interpreter_->AddObject(name, object);
}

void Engine::AddCode(std::string_view source, std::string_view origin) {
  RequireLanguage();
  interpreter_->AddCode(source, origin);
}

Value Engine::Evaluate(std::string_view expression) {
  RequireLanguage();
  return interpreter_->Evaluate(expression);
}

std::string Engine::TextOf(const Value& value) {
  try {
    return ToText(interpreter_->Plain(value));
  } catch (const ScriptError&) {
    return {};
  }
}

Ref<Object> Engine::CreateObject(std::string_view className) {
  return CreateLibraryObject(*interpreter_, className);
}

Ref<Object> Engine::CreateDictionary(const std::vector<std::pair<std::string, std::string>>& items) {
  Ref<Object> dictionary = CreateObject("Scripting.Dictionary");
  for (const auto& [key, text] : items) {
    Value name = Value::String(key);
    dictionary->Put(*interpreter_, "Item", {&name, 1}, Value::String(text), false);
  }
  return dictionary;
}

}  // namespace tessary::script
