#include "script/Object.h"

#include <algorithm>

namespace tessary::script {

namespace {

char Lower(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
}

void CheckCount(const Member& member, std::size_t count) {
  const int given = static_cast<int>(count);
  if (given < member.minArguments || (member.maxArguments >= 0 && given > member.maxArguments)) {
    Raise(kWrongArguments, member.name);
  }
}

}  // namespace

bool SameName(std::string_view left, std::string_view right) noexcept {
  return std::ranges::equal(left, right, [](char a, char b) { return Lower(a) == Lower(b); });
}

std::unique_ptr<Enumerator> Object::Enumerate(Context&) { Raise(kNotACollection); }

const Member& NativeObject::FindMember(std::string_view name) const {
  const std::span<const Member> members = Members();
  if (name.empty()) {
    if (!members.empty() && !members[0].name.empty()) return members[0];
    Raise(kNoSuchMember);
  }
  for (const Member& member : members) {
    if (SameName(member.name, name)) return member;
  }
  Raise(kNoSuchMember, name);
}

Value NativeObject::Get(Context& context, std::string_view name, std::span<Value> arguments) {
  const Member& member = FindMember(name);
  if (!member.get) Raise(kWrongArguments, member.name);
  CheckCount(member, arguments.size());
  return member.get(*this, context, arguments);
}

void NativeObject::Put(Context& context, std::string_view name, std::span<Value> arguments, const Value& value,
                       bool isSet) {
  const Member& member = FindMember(name);
  if (!member.put) Raise(kNoSuchMember, member.name);
  CheckCount(member, arguments.size());
  member.put(*this, context, arguments, value, isSet);
}

}  // namespace tessary::script
