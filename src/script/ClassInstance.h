// Instances of a script's classes, and references to its procedures.
#pragma once

#include <string>
#include <vector>

#include "script/Code.h"
#include "script/Object.h"

namespace tessary::script {

class ClassInstance;

/// Who runs the code of instances; outlives all of them.
class InstanceOwner {
 public:
  virtual ~InstanceOwner() = default;
  virtual Value GetMember(ClassInstance& instance, std::string_view member, std::span<Value> arguments) = 0;
  virtual void PutMember(ClassInstance& instance, std::string_view member, std::span<Value> arguments,
                         const Value& value, bool isSet) = 0;
  /// Runs Class_Terminate. Whatever goes wrong in it stays in it.
  virtual void Terminate(ClassInstance& instance) noexcept = 0;
  [[nodiscard]] virtual const std::string& NameOf(const ClassType& type) const = 0;
};

class ClassInstance final : public Object {
 public:
  ClassInstance(InstanceOwner& owner, Ref<ClassType> type, ClassInstance*& all);
  ~ClassInstance() override;

  [[nodiscard]] ClassType& type() const noexcept { return *type_; }
  std::vector<Value>& fields() noexcept { return fields_; }
  /// Runs Class_Terminate, once in the instance's life, and lets go of what the fields hold.
  void End() noexcept;

  [[nodiscard]] std::string ClassName() const override { return owner_.NameOf(*type_); }
  Value Get(Context& context, std::string_view member, std::span<Value> arguments) override;
  void Put(Context& context, std::string_view member, std::span<Value> arguments, const Value& value,
           bool isSet) override;

 protected:
  void LastReferenceGone() noexcept override;

 private:
  InstanceOwner& owner_;
  Ref<ClassType> type_;
  std::vector<Value> fields_;
  bool terminated_ = false;
  // The list of all instances of an engine, which finds those that hold each other.
  ClassInstance*& all_;
  ClassInstance* previous_ = nullptr;
  ClassInstance* next_ = nullptr;
};

/// What GetRef gives. Its default member calls the procedure.
class ProcedureReference final : public Object {
 public:
  explicit ProcedureReference(Ref<Code> procedure) : procedure_(std::move(procedure)) {}
  [[nodiscard]] const Ref<Code>& procedure() const noexcept { return procedure_; }
  [[nodiscard]] std::string ClassName() const override { return "Object"; }
  Value Get(Context& context, std::string_view member, std::span<Value> arguments) override;
  void Put(Context& context, std::string_view member, std::span<Value> arguments, const Value& value,
           bool isSet) override;

 private:
  Ref<Code> procedure_;
};

/// The shape of a Dim with parentheses.
Value MakeArray(const FixedArray& array);

}  // namespace tessary::script
