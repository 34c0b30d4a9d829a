#include <bit>
#include <list>
#include <unordered_map>

#include "script/library/Arguments.h"
#include "script/library/Objects.h"

namespace tessary::script {
namespace {

constexpr int kElementNotFound = 32811;

class Dictionary final : public NativeObject {
 public:
  [[nodiscard]] std::string ClassName() const override { return "Dictionary"; }
  std::unique_ptr<Enumerator> Enumerate(Context&) override {
    return std::make_unique<ListEnumerator>(KeyList());
  }

  static Value Add(Object& self, Context&, Arguments arguments) {
    As<Dictionary>(self).Insert(arguments[0], arguments[1]);
    return {};
  }
  static Value Count(Object& self, Context&, Arguments) { return LongOf(As<Dictionary>(self).entries_.size()); }
  static Value Exists(Object& self, Context&, Arguments arguments) {
    auto& dictionary = As<Dictionary>(self);
    return Value::Boolean(dictionary.places_.contains(dictionary.Identity(arguments[0])));
  }
  static Value Items(Object& self, Context&, Arguments) {
    std::vector<Value> items;
    for (const Entry& entry : As<Dictionary>(self).entries_) items.push_back(entry.item);
    return Value::Of(Make<script::Array>(std::move(items)));
  }
  static Value Keys(Object& self, Context&, Arguments) {
    return Value::Of(Make<script::Array>(As<Dictionary>(self).KeyList()));
  }

  // Reading an item that is not there adds its key.
  static Value GetItem(Object& self, Context&, Arguments arguments) {
    return As<Dictionary>(self).FindOrAdd(arguments[0]).item;
  }
  static void PutItem(Object& self, Context&, Arguments arguments, const Value& value, bool) {
    const Value before = std::exchange(As<Dictionary>(self).FindOrAdd(arguments[0]).item, value);
  }
  static void PutKey(Object& self, Context&, Arguments arguments, const Value& value, bool) {
    As<Dictionary>(self).Rename(arguments[0], value);
  }
  static Value Remove(Object& self, Context&, Arguments arguments) {
    As<Dictionary>(self).Erase(arguments[0]);
    return {};
  }
  static Value RemoveAll(Object& self, Context&, Arguments) {
    auto& dictionary = As<Dictionary>(self);
    dictionary.places_.clear();
    const std::list<Entry> gone = std::exchange(dictionary.entries_, {});
    return {};
  }
  static Value GetCompareMode(Object& self, Context&, Arguments) {
    return Value::Long(As<Dictionary>(self).compareMode_);
  }
  static void PutCompareMode(Object& self, Context&, Arguments, const Value& value, bool) {
    auto& dictionary = As<Dictionary>(self);
    const std::int32_t mode = ToLong(value);
    if (mode < 0 || mode > 2 || !dictionary.entries_.empty()) Raise(kInvalidCall);
    dictionary.compareMode_ = mode;
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;

 private:
  struct Entry {
    Value key, item;
  };

  // What makes two keys the same: numbers of all subtypes by their value, texts by their letters, objects by
  // being the same one.
  [[nodiscard]] std::string Identity(const Value& key) const {
    switch (key.type()) {
      case Type::Empty:
        return "e";
      case Type::Null:
        return "n";
      case Type::String:
        return "s" + (compareMode_ == 0 ? key.string() : LowerCase(key.string()));
      case Type::Object:
        return "o" + std::to_string(reinterpret_cast<std::uintptr_t>(key.object()));
      case Type::Array:
      case Type::Error:
        Raise(kInvalidCall);
      default:
        return "d" + std::to_string(std::bit_cast<std::uint64_t>(ToDouble(key) + 0.0));
    }
  }

  [[nodiscard]] std::vector<Value> KeyList() const {
    std::vector<Value> keys;
    for (const Entry& entry : entries_) keys.push_back(entry.key);
    return keys;
  }

  void Insert(const Value& key, const Value& item) {
    std::string identity = Identity(key);
    if (places_.contains(identity)) Raise(kDuplicateKey);
    if (entries_.size() >= kMaxElements) Raise(kOutOfMemory);
    places_.emplace(std::move(identity), entries_.insert(entries_.end(), {key, item}));
  }

  Entry& FindOrAdd(const Value& key) {
    if (const auto place = places_.find(Identity(key)); place != places_.end()) return *place->second;
    Insert(key, {});
    return entries_.back();
  }

  void Rename(const Value& oldKey, const Value& newKey) {
    const auto place = places_.find(Identity(oldKey));
    if (place == places_.end()) Raise(kElementNotFound);
    std::string identity = Identity(newKey);
    if (places_.contains(identity)) Raise(kDuplicateKey);
    const auto entry = place->second;
    places_.erase(place);
    places_.emplace(std::move(identity), entry);
    entry->key = newKey;
  }

  void Erase(const Value& key) {
    const auto place = places_.find(Identity(key));
    if (place == places_.end()) Raise(kElementNotFound);
    const Entry gone = std::move(*place->second);  // it may run a script when it ends, so it ends last
    entries_.erase(place->second);
    places_.erase(place);
  }

  std::list<Entry> entries_;  ///< in the order in which they came
  std::unordered_map<std::string, std::list<Entry>::iterator> places_;
  std::int32_t compareMode_ = 0;
};

constexpr Member kMembers[] = {
    {"Item", 1, 1, Dictionary::GetItem, Dictionary::PutItem},
    {"Add", 2, 2, Dictionary::Add},
    {"CompareMode", 0, 0, Dictionary::GetCompareMode, Dictionary::PutCompareMode},
    {"Count", 0, 0, Dictionary::Count},
    {"Exists", 1, 1, Dictionary::Exists},
    {"Items", 0, 0, Dictionary::Items},
    {"Key", 1, 1, nullptr, Dictionary::PutKey},
    {"Keys", 0, 0, Dictionary::Keys},
    {"Remove", 1, 1, Dictionary::Remove},
    {"RemoveAll", 0, 0, Dictionary::RemoveAll},
};

std::span<const Member> Dictionary::Members() const { return kMembers; }

}  // namespace

Ref<Object> MakeDictionary(Context&) { return Make<Dictionary>(); }

}  // namespace tessary::script
