#include "script/ClassInstance.h"

#include "script/NativeFunction.h"

namespace tessary::script {

ClassInstance::ClassInstance(InstanceOwner& owner, Ref<ClassType> type, ClassInstance*& all)
    : owner_(owner), type_(std::move(type)), fields_(static_cast<std::size_t>(type_->fieldCount)), all_(all) {
  for (const FixedArray& array : type_->arrays)
    fields_[static_cast<std::size_t>(array.place)] = MakeArray(array);
  next_ = all_;
  if (next_) next_->previous_ = this;
  all_ = this;
}

ClassInstance::~ClassInstance() {
  (previous_ ? previous_->next_ : all_) = next_;
  if (next_) next_->previous_ = previous_;
}

void ClassInstance::LastReferenceGone() noexcept {
  if (terminated_) return;
  terminated_ = true;
  if (type_->terminate) owner_.Terminate(*this);
}

void ClassInstance::End() noexcept {
  LastReferenceGone();
  std::vector<Value>().swap(fields_);
  fields_.resize(static_cast<std::size_t>(type_->fieldCount));
}

Value ClassInstance::Get(Context&, std::string_view member, std::span<Value> arguments) {
  return owner_.GetMember(*this, member, arguments);
}

void ClassInstance::Put(Context&, std::string_view member, std::span<Value> arguments, const Value& value,
                        bool isSet) {
  owner_.PutMember(*this, member, arguments, value, isSet);
}

Value ProcedureReference::Get(Context& context, std::string_view member, std::span<Value> arguments) {
  if (!member.empty()) Raise(kNoSuchMember, member);
  return context.Call(Value::Of(Ref<Object>(this)), arguments);
}

void ProcedureReference::Put(Context&, std::string_view member, std::span<Value>, const Value&, bool) {
  Raise(kNoSuchMember, member);
}

Value MakeArray(const FixedArray& array) {
  return Value::Of(array.dynamic ? Make<Array>() : Make<Array>(array.bounds, true));
}

}  // namespace tessary::script
