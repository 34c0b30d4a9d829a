// The objects of the library: what CreateObject makes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "script/Object.h"

namespace tessary::script {

Ref<Object> MakeDictionary(Context& context);
Ref<Object> MakeFileSystemObject(Context& context);
Ref<Object> MakeRegExp(Context& context);
Ref<Object> MakeShell(Context& context);

/// A walk through items that were collected before it began.
class ListEnumerator final : public Enumerator {
 public:
  explicit ListEnumerator(std::vector<Value> items) : items_(std::move(items)) {}
  bool Next(Value& item) override {
    if (next_ == items_.size()) return false;
    item = items_[next_++];
    return true;
  }

 private:
  std::vector<Value> items_;
  std::size_t next_ = 0;
};

template <class T, class... Arguments>
Value NewObject(Arguments&&... arguments) {
  return Value::Of(Ref<Object>(Make<T>(std::forward<Arguments>(arguments)...)));
}

/// The text of an argument. Objects are stricter than functions: Null is a type mismatch (13) for them.
std::string TextArgument(Context& context, const Value& value);

/// The members' own type behind the object that a member table's function gets.
template <class T>
T& As(Object& self) {
  return static_cast<T&>(self);
}

}  // namespace tessary::script
