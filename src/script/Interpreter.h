// The machine that runs compiled code.
#pragma once

#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "script/ClassInstance.h"
#include "script/Code.h"
#include "script/ErrObject.h"
#include "script/Names.h"
#include "script/NativeFunction.h"
#include "script/Operators.h"
#include "script/ValueStack.h"

namespace tessary::script {

/// How deep procedures may call each other; deeper is error 28. Their frames live on the heap, so the limit
/// only keeps a recursion without end from taking all memory.
inline constexpr int kMaxCalls = 10000;
/// How deep scripts may call each other through the machine's own stack: default members inside of operators,
/// Execute, Eval, Class_Terminate. Deeper is error 28.
inline constexpr int kMaxNestedRuns = 150;

class Interpreter final : public Context, private InstanceOwner {
 public:
  explicit Interpreter(Services services);
  ~Interpreter() override;
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  /// Compiles and runs source text, its declarations becoming global.
  void AddCode(std::string_view source, std::string_view origin);
  Value Evaluate(std::string_view expression);
  /// A global constant that holds the object.
  void AddObject(std::string_view name, const Ref<Object>& object);
  void AddConstant(std::string_view name, Value value);
  void AddFunctions(std::span<const NativeFunction> functions);

  // For Execute, ExecuteGlobal, Eval and GetRef: `here` means in the procedure that runs.
  void Execute(std::string_view source, bool here);
  Value Eval(std::string_view expression);
  Value ReferenceToProcedure(std::string_view name);

  Services& services() override { return services_; }
  Value Plain(const Value& value) override;
  Value Call(const Value& procedure, std::span<Value> arguments) override;

 private:
  struct Global {
    enum class Kind : std::uint8_t { Undefined, Variable, Constant, Procedure, Native } kind = Kind::Undefined;
    Value value;
    Ref<Code> procedure;
    const NativeFunction* native = nullptr;
    Ref<ClassType> type;  // beside whatever the name means otherwise
  };

  // Variables that Execute declares inside a procedure.
  using DynamicScope = std::unordered_map<NameId, Value>;

  struct Frame {
    Ref<Code> code;
    Ref<ClassInstance> me;
    Value* slots = nullptr;
    Value* operands = nullptr;
    Value* top = nullptr;               // while another frame runs
    const Instruction* next = nullptr;  // likewise
    ValueStack::Mark mark;
    Frame* host = nullptr;  // the procedure whose names a fragment uses
    std::unique_ptr<DynamicScope> dynamic;
    bool resumeNext = false;
    bool discard = false;  // nobody takes the result
  };

  // What a name means at the moment; nothing set: it is undefined.
  struct Meaning {
    Value* variable = nullptr;
    bool isConstant = false;
    bool isUndefined = false;  // `variable` is where it would be made, if not null
    const Ref<Code>* procedure = nullptr;
    const NativeFunction* native = nullptr;
    const ClassType::Member* member = nullptr;  // of the instance that runs
  };

  using Handler = void (Interpreter::*)(const Instruction&);
  static const Handler kHandlers[static_cast<std::size_t>(Op::Fail) + 1];

  // Interpreter.cpp: running and unwinding.
  Value Run(std::size_t base);
  Value RunNested(const Ref<Code>& code, Ref<ClassInstance> me, Value* arguments, std::size_t count,
                  Frame* host);
  bool Recover(ScriptError& error, std::size_t base);
  void Locate(ScriptError& error) const;
  void Enter(const Ref<Code>& code, Ref<ClassInstance> me, Value* arguments, std::size_t count,
             Value* returnTop, bool discard);
  void BindArguments(const Code& code, Value* slots, Value* arguments);
  void Leave() noexcept;
  void Return(const Instruction& instruction);
  void Push(Value value) { new (top_++) Value(std::move(value)); }
  Value Pop() { return std::move(*--top_); }
  void DropTo(Value* top) noexcept;

  // InterpreterUnits.cpp: what the program and Execute ask for.
  Value RunUnit(const Unit& unit, Frame* host);
  void Declare(const Unit& unit);
  void DeclareIn(Frame& host, const Unit& unit);
  Frame* Host() const;
  bool IsExplicit() const { return frame_ && frame_->code->explicitNames; }
  Value GetMember(ClassInstance& instance, std::string_view member, std::span<Value> arguments) override;
  void PutMember(ClassInstance& instance, std::string_view member, std::span<Value> arguments,
                 const Value& value, bool isSet) override;
  void Terminate(ClassInstance& instance) noexcept override;
  const std::string& NameOf(const ClassType& type) const override { return names_.Spelling(type.name); }

  // InterpreterNames.cpp: variables.
  Global& At(std::int32_t name) { return globals_[static_cast<std::size_t>(name)]; }
  Global& GlobalFor(NameId name);
  NameId NameIn(const Instruction& instruction) const;
  const std::string& SpellingIn(const Instruction& instruction) const {
    return names_.Spelling(NameIn(instruction));
  }
  Meaning Find(const Instruction& instruction);
  Meaning FindGlobal(const Instruction& instruction);
  Meaning FindDynamic(const Instruction& instruction);
  Meaning MeaningOf(Global& global);
  Value& Variable(const Instruction& instruction, const Meaning& meaning);
  Value& Writable(const Instruction& instruction);
  Value ForAssignment(Value value, std::uint8_t flags);
  void Load(const Instruction& instruction);
  void LoadReference(const Instruction& instruction);
  void Store(const Instruction& instruction);
  void AppendTo(const Instruction& instruction);
  void ReDim(const Instruction& instruction);
  void Erase(const Instruction& instruction);

  // InterpreterCalls.cpp: calls, members, elements.
  void CallName(const Instruction& instruction);
  void CallReference(const Instruction& instruction);
  void CallMeaning(const Instruction& instruction, const Meaning& meaning);
  void CallNative(const NativeFunction& function, const Instruction& instruction);
  void StoreIndexed(const Instruction& instruction);
  void Member(const Instruction& instruction);
  void StoreMember(const Instruction& instruction);
  void Index(const Instruction& instruction);
  void StoreIndex(const Instruction& instruction);
  void New(const Instruction& instruction);
  void Me(const Instruction& instruction);
  void IndexValue(const Instruction& instruction, Value base, Value* arguments);
  void StoreElement(Value& base, const Instruction& instruction, Value* arguments);
  void CallMember(ClassInstance& instance, const ClassType::Member& member, const Instruction& instruction,
                  Value* arguments);
  void AssignMember(ClassInstance& instance, const ClassType::Member& member, const Instruction& instruction,
                    Value* arguments);
  const ClassType::Member& MemberOf(ClassInstance& instance, NameId name) const;
  std::size_t ElementOf(const Array& array, Value* arguments, std::size_t count);
  Object& RequireObject(const Value& value) const;
  Object& HolderOf(const Instruction& instruction, const Value& value) const;
  void PlainArguments(Value* arguments, std::size_t count, bool takesObjects);
  void Finish(const Instruction& instruction, Value* newTop, Value result);
  [[noreturn]] void RaiseUndefined(const Instruction& instruction) const;

  // InterpreterFlow.cpp: operators, jumps, loops.
  template <Value (*operation)(const Value&, const Value&)>
  void Binary(const Instruction& instruction);
  template <Value (*operation)(const Value&)>
  void Unary(const Instruction& instruction);
  void AddFast(const Instruction& instruction);
  void CompareFast(const Instruction& instruction);
  void MakePlain(Value& value);
  bool Condition();
  void Constant(const Instruction& instruction);
  void PlainTop(const Instruction& instruction);
  void IsSame(const Instruction& instruction);
  void Jump(const Instruction& instruction);
  void JumpIfFalse(const Instruction& instruction);
  void JumpIfTrue(const Instruction& instruction);
  void CaseJump(const Instruction& instruction);
  void ForPrepare(const Instruction& instruction);
  void ForTest(const Instruction& instruction);
  void ForNext(const Instruction& instruction);
  bool WithinLimit(const Value& counter, const Value* limitAndStep) const;
  void EachPrepare(const Instruction& instruction);
  void EachNext(const Instruction& instruction);
  void WithPrepare(const Instruction& instruction);
  void ClearSlot(const Instruction& instruction);
  void OnErrorResumeNext(const Instruction& instruction);
  void OnErrorGoTo0(const Instruction& instruction);
  void FailNow(const Instruction& instruction);
  void Skip(const Instruction&) {}
  void GoTo(std::int32_t target) { next_ = frame_->code->instructions.data() + target; }

  Services services_;
  Names names_;
  std::deque<Global> globals_;  // by NameId
  Ref<ErrObject> err_;
  ClassInstance* instances_ = nullptr;
  ValueStack stack_;
  std::deque<Frame> frames_;
  // Of the frame that runs.
  Frame* frame_ = nullptr;
  const Instruction* next_ = nullptr;
  Value* top_ = nullptr;
  std::size_t base_ = 0;  // frames below the innermost Run
  int nestedRuns_ = 0;
  Value result_;
};

/// Eval, Execute, ExecuteGlobal, GetRef.
std::span<const NativeFunction> EngineFunctions();

}  // namespace tessary::script
