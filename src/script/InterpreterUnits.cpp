#include <algorithm>
#include <array>
#include <utility>

#include "script/Compiler.h"
#include "script/Conversions.h"
#include "script/Interpreter.h"
#include "script/ScriptError.h"

namespace tessary::script {

Interpreter::Interpreter(Services services) : services_(std::move(services)), err_(Make<ErrObject>()) {
  AddObject("Err", err_);
  AddFunctions(EngineFunctions());
}

// Instances that hold each other are ended here; their Class_Terminate still finds the variables.
Interpreter::~Interpreter() {
  for (Global& global : globals_) {
    if (global.kind == Global::Kind::Variable) global.value = Value();
  }
  while (instances_) {
    const Ref<ClassInstance> instance(instances_);
    instance->End();
    if (instances_ == instance.get() && instance->references() > 1) break;  // somebody outside holds it
  }
}

void Interpreter::AddFunctions(std::span<const NativeFunction> functions) {
  for (const NativeFunction& function : functions) {
    Global& global = GlobalFor(names_.Intern(function.name));
    global.kind = Global::Kind::Native;
    global.native = &function;
  }
}

void Interpreter::AddObject(std::string_view name, const Ref<Object>& object) {
  AddConstant(name, Value::Of(object));
}

void Interpreter::AddConstant(std::string_view name, Value value) {
  Global& global = GlobalFor(names_.Intern(name));
  global.kind = Global::Kind::Constant;
  global.value = std::move(value);
}

void Interpreter::AddCode(std::string_view source, std::string_view origin) {
  const auto text = Make<Source>(source, origin);
  RunUnit(Compiler(names_, text, CompileMode::Global, IsExplicit()).CompileScript(), nullptr);
}

Value Interpreter::Evaluate(std::string_view expression) {
  const auto text = Make<Source>(expression, std::string_view());
  return RunUnit(Compiler(names_, text, CompileMode::Global, IsExplicit()).CompileExpression(), nullptr);
}

// The procedure whose names Execute and Eval see, null outside of procedures.
Interpreter::Frame* Interpreter::Host() const {
  if (!frame_ || frame_->code->kind == Code::Kind::Main) return nullptr;
  return frame_->host ? frame_->host : frame_;
}

void Interpreter::Execute(std::string_view source, bool here) {
  Frame* const host = here ? Host() : nullptr;
  if (nestedRuns_ >= kMaxNestedRuns) Raise(kOutOfStack);
  const auto text = Make<Source>(source, frame_ ? frame_->code->source->origin : std::string());
  RunUnit(Compiler(names_, text, host ? CompileMode::Local : CompileMode::Global, IsExplicit()).CompileScript(),
          host);
}

Value Interpreter::Eval(std::string_view expression) {
  Frame* const host = Host();
  const auto text = Make<Source>(expression, frame_ ? frame_->code->source->origin : std::string());
  const CompileMode mode = host ? CompileMode::Local : CompileMode::Global;
  return RunUnit(Compiler(names_, text, mode, IsExplicit()).CompileExpression(), host);
}

Value Interpreter::ReferenceToProcedure(std::string_view name) {
  const Global& global = GlobalFor(names_.Intern(name));
  if (global.kind != Global::Kind::Procedure) Raise(kInvalidCall);
  return Value::Of(Ref<Object>(new ProcedureReference(global.procedure)));
}

Value Interpreter::RunUnit(const Unit& unit, Frame* host) {
  globals_.resize(names_.size());
  Declare(unit);
  if (host) {
    if (!host->dynamic) host->dynamic = std::make_unique<DynamicScope>();
    DeclareIn(*host, unit);
  }
  return RunNested(unit.main, host ? host->me : nullptr, nullptr, 0, host);
}

void Interpreter::Declare(const Unit& unit) {
  for (const Ref<Code>& procedure : unit.procedures) {
    Global& global = globals_[procedure->name];
    global.kind = Global::Kind::Procedure;
    global.procedure = procedure;
  }
  for (const Ref<ClassType>& type : unit.classes) globals_[type->name].type = type;
  if (unit.main->kind == Code::Kind::Fragment) return;
  for (const NameId name : unit.variables) {
    if (globals_[name].kind == Global::Kind::Variable) continue;
    globals_[name].kind = Global::Kind::Variable;
    globals_[name].value = Value();
  }
  for (const auto& [name, value] : unit.constants) {
    globals_[name].kind = Global::Kind::Constant;
    globals_[name].value = value;
  }
  for (const FixedArray& array : unit.main->arrays) {
    globals_[static_cast<std::size_t>(array.place)].value = MakeArray(array);
  }
}

// What Execute declares inside a procedure. A name that the procedure itself uses has its place there already.
void Interpreter::DeclareIn(Frame& host, const Unit& unit) {
  const auto place = [&host](NameId name) -> Value& {
    const auto slot = std::ranges::find(host.code->slots, name);
    if (slot == host.code->slots.end()) return (*host.dynamic)[name];
    return host.slots[slot - host.code->slots.begin()].Target();
  };
  for (const NameId name : unit.variables) place(name);
  for (const auto& [name, value] : unit.constants) place(name) = value;
  for (const FixedArray& array : unit.main->arrays) place(static_cast<NameId>(array.place)) = MakeArray(array);
}

Value Interpreter::Plain(const Value& value) {
  Value current = value.Target();
  for (int depth = 0; current.Is(Type::Object); ++depth) {
    if (current.IsNothing()) Raise(kObjectNotSet);
    if (depth >= kMaxNestedRuns) Raise(kOutOfStack);
    const Value holder = current;
    current = holder.object()->Get(*this, {}, {});
  }
  return current;
}

Value Interpreter::Call(const Value& procedure, std::span<Value> arguments) {
  const Value target = procedure.Target();  // NOLINT(performance-unnecessary-copy-initialization): kept alive
  Object& object = RequireObject(target);
  if (const auto* reference = dynamic_cast<const ProcedureReference*>(&object)) {
    return RunNested(reference->procedure(), nullptr, arguments.data(), arguments.size(), nullptr);
  }
  return object.Get(*this, {}, arguments);
}

Value Interpreter::GetMember(ClassInstance& instance, std::string_view name, std::span<Value> arguments) {
  const ClassType& type = instance.type();
  if (name.empty() && type.defaultMember < 0) Raise(kNoSuchMember);
  const ClassType::Member& member = name.empty() ? type.members[static_cast<std::size_t>(type.defaultMember)]
                                                 : MemberOf(instance, names_.Intern(name));
  if (member.field >= 0 && arguments.empty()) return instance.fields()[static_cast<std::size_t>(member.field)];
  if (!member.get) Raise(kNoSuchMember, names_.Spelling(member.name));
  return RunNested(member.get, Ref<ClassInstance>(&instance), arguments.data(), arguments.size(), nullptr);
}

void Interpreter::PutMember(ClassInstance& instance, std::string_view name, std::span<Value> arguments,
                            const Value& value, bool isSet) {
  const ClassType& type = instance.type();
  if (name.empty() && type.defaultMember < 0) Raise(kNoSuchMember);
  const ClassType::Member& member = name.empty() ? type.members[static_cast<std::size_t>(type.defaultMember)]
                                                 : MemberOf(instance, names_.Intern(name));
  if (member.field >= 0 && arguments.empty()) {
    instance.fields()[static_cast<std::size_t>(member.field)] =
        ForAssignment(value, isSet ? kSet : std::uint8_t{0});
    return;
  }
  const Ref<Code>& code = isSet ? member.set : member.let;
  if (!code) Raise(kNoSuchMember, names_.Spelling(member.name));
  std::vector<Value> all(arguments.begin(), arguments.end());
  all.push_back(value);
  RunNested(code, Ref<ClassInstance>(&instance), all.data(), all.size(), nullptr);
}

void Interpreter::Terminate(ClassInstance& instance) noexcept {
  try {
    RunNested(instance.type().terminate, Ref<ClassInstance>(&instance), nullptr, 0, nullptr);
  } catch (...) {
    // The object ends all the same.
  }
}

namespace {

Interpreter& EngineOf(Context& context) { return static_cast<Interpreter&>(context); }

Value Eval(Context& context, std::span<Value> arguments) {
  if (!arguments[0].Is(Type::String)) return arguments[0];
  return EngineOf(context).Eval(arguments[0].string());
}

Value Execute(Context& context, std::span<Value> arguments) {
  EngineOf(context).Execute(ToText(arguments[0]), true);
  return {};
}

Value ExecuteGlobal(Context& context, std::span<Value> arguments) {
  EngineOf(context).Execute(ToText(arguments[0]), false);
  return {};
}

Value GetRef(Context& context, std::span<Value> arguments) {
  return EngineOf(context).ReferenceToProcedure(ToText(arguments[0]));
}

constexpr std::array kFunctions = std::to_array<NativeFunction>({
    {"Eval", 1, 1, Eval},
    {"Execute", 1, 1, Execute},
    {"ExecuteGlobal", 1, 1, ExecuteGlobal},
    {"GetRef", 1, 1, GetRef},
});

}  // namespace

std::span<const NativeFunction> EngineFunctions() { return kFunctions; }

}  // namespace tessary::script
