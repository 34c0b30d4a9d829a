#include <optional>

#include "script/library/Arguments.h"
#include "script/library/Objects.h"
#include "script/library/RegExpMatcher.h"

namespace tessary::script {
namespace {

// A fixed list of values that scripts read as a collection: matches, or the groups of one match.
class ValueList final : public NativeObject {
 public:
  ValueList(std::string className, std::vector<Value> items)
      : className_(std::move(className)), items_(std::move(items)) {}
  [[nodiscard]] std::string ClassName() const override { return className_; }
  std::unique_ptr<Enumerator> Enumerate(Context&) override { return std::make_unique<ListEnumerator>(items_); }

  static Value Count(Object& self, Context&, Arguments) { return LongOf(As<ValueList>(self).items_.size()); }
  static Value Item(Object& self, Context&, Arguments arguments) {
    const auto& items = As<ValueList>(self).items_;
    const std::int32_t index = ToLong(arguments[0]);
    if (index < 0 || static_cast<std::size_t>(index) >= items.size()) Raise(kInvalidCall);
    return items[static_cast<std::size_t>(index)];
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override {
    static constexpr Member kMembers[] = {{"Item", 1, 1, Item}, {"Count", 0, 0, Count}};
    return kMembers;
  }

 private:
  std::string className_;
  std::vector<Value> items_;
};

class Match final : public NativeObject {
 public:
  Match(std::u16string_view text, const RegExpMatcher& matcher, std::size_t groups)
      : start_(matcher.Group(0).start), length_(matcher.Group(0).end - start_) {
    value_ = PartOf(text, matcher.Group(0));
    std::vector<Value> parts;
    for (std::size_t group = 1; group <= groups; ++group) parts.push_back(PartOf(text, matcher.Group(group)));
    subMatches_ = NewObject<ValueList>("ISubMatches", std::move(parts));
  }
  [[nodiscard]] std::string ClassName() const override { return "IMatch2"; }

  static Value GetValue(Object& self, Context&, Arguments) { return As<Match>(self).value_; }
  static Value FirstIndex(Object& self, Context&, Arguments) {
    return LongOf(static_cast<std::size_t>(As<Match>(self).start_));
  }
  static Value Length(Object& self, Context&, Arguments) {
    return LongOf(static_cast<std::size_t>(As<Match>(self).length_));
  }
  static Value SubMatches(Object& self, Context& context, Arguments arguments) {
    const Value& parts = As<Match>(self).subMatches_;
    return arguments.empty() ? parts : ValueList::Item(*parts.object(), context, arguments);
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override {
    static constexpr Member kMembers[] = {{"Value", 0, 0, GetValue},
                                          {"FirstIndex", 0, 0, FirstIndex},
                                          {"Length", 0, 0, Length},
                                          {"SubMatches", 0, 1, SubMatches}};
    return kMembers;
  }

 private:
  // Empty for a group that took no part.
  static Value PartOf(std::u16string_view text, RegExpSpan span) {
    if (span.start < 0) return {};
    const auto start = static_cast<std::size_t>(span.start);
    return Value::String(ToUtf8(text.substr(start, static_cast<std::size_t>(span.end) - start)));
  }

  std::ptrdiff_t start_, length_;
  Value value_, subMatches_;
};

class RegExp final : public NativeObject {
 public:
  [[nodiscard]] std::string ClassName() const override { return "IRegExp2"; }

  static Value Test(Object& self, Context& context, Arguments arguments) {
    bool found = false;
    As<RegExp>(self).ForEachMatch(ToUtf16(TextArgument(context, arguments[0])), [&](const RegExpMatcher&) {
      found = true;
      return false;
    });
    return Value::Boolean(found);
  }

  static Value Execute(Object& self, Context& context, Arguments arguments) {
    auto& regExp = As<RegExp>(self);
    const std::u16string text = ToUtf16(TextArgument(context, arguments[0]));
    std::vector<Value> matches;
    regExp.ForEachMatch(text, [&](const RegExpMatcher& matcher) {
      if (matches.size() >= kMaxElements) Raise(kOutOfMemory);
      matches.push_back(NewObject<Match>(text, matcher, regExp.program_->groups));
      return regExp.global_;
    });
    return NewObject<ValueList>("IMatchCollection2", std::move(matches));
  }

  static Value Replace(Object& self, Context& context, Arguments arguments) {
    auto& regExp = As<RegExp>(self);
    const std::u16string text = ToUtf16(TextArgument(context, arguments[0])),
                         replacement = ToUtf16(TextArgument(context, arguments[1]));
    std::u16string result;
    std::size_t at = 0;
    regExp.ForEachMatch(text, [&](const RegExpMatcher& matcher) {
      const RegExpSpan span = matcher.Group(0);
      result.append(text, at, static_cast<std::size_t>(span.start) - at);
      regExp.Expand(replacement, text, matcher, result);
      CheckTextSize(result.size());
      at = static_cast<std::size_t>(span.end);
      return regExp.global_;
    });
    return Text8(ToUtf8(result.append(text, at)));
  }

  static Value GetPattern(Object& self, Context&, Arguments) {
    return Value::String(As<RegExp>(self).pattern_);
  }
  static void PutPattern(Object& self, Context& context, Arguments, const Value& value, bool) {
    As<RegExp>(self).pattern_ = TextArgument(context, value);
    As<RegExp>(self).program_.reset();
  }
  template <bool RegExp::*Flag>
  static Value GetFlag(Object& self, Context&, Arguments) {
    return Value::Boolean(As<RegExp>(self).*Flag);
  }
  template <bool RegExp::*Flag>
  static void PutFlag(Object& self, Context&, Arguments, const Value& value, bool) {
    As<RegExp>(self).*Flag = ToBoolean(value);
    As<RegExp>(self).program_.reset();
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override {
    static constexpr Member kMembers[] = {
        {},  // no default member
        {"Execute", 1, 1, Execute},
        {"Global", 0, 0, GetFlag<&RegExp::global_>, PutFlag<&RegExp::global_>},
        {"IgnoreCase", 0, 0, GetFlag<&RegExp::ignoreCase_>, PutFlag<&RegExp::ignoreCase_>},
        {"MultiLine", 0, 0, GetFlag<&RegExp::multiLine_>, PutFlag<&RegExp::multiLine_>},
        {"Pattern", 0, 0, GetPattern, PutPattern},
        {"Replace", 2, 2, Replace},
        {"Test", 1, 1, Test},
    };
    return kMembers;
  }

 private:
  // Calls `use` with each match until it answers false.
  template <class Use>
  void ForEachMatch(const std::u16string& text, Use use) {
    if (!program_) {
      RegExpProgram program;
      if (const int error = CompileRegExp(pattern_, ignoreCase_, multiLine_, program)) Raise(error);
      program_ = std::move(program);
    }
    try {
      RegExpMatcher matcher(*program_, text);
      for (std::size_t from = 0; from <= text.size() && matcher.Search(from);) {
        if (!use(matcher)) break;
        const RegExpSpan span = matcher.Group(0);
        from = static_cast<std::size_t>(span.end) + (span.end == span.start ? 1 : 0);
      }
    } catch (const RegExpLimitReached&) {
      Raise(kOutOfStack);
    }
  }

  // Appends `replacement` with $1 to $99, $&, $`, $' and $$ filled in.
  void Expand(std::u16string_view replacement, std::u16string_view text, const RegExpMatcher& matcher,
              std::u16string& result) const {
    const auto append = [&](RegExpSpan span) {
      if (span.start < 0) return;
      result +=
          text.substr(static_cast<std::size_t>(span.start), static_cast<std::size_t>(span.end - span.start));
    };
    const RegExpSpan whole = matcher.Group(0);
    for (std::size_t i = 0; i < replacement.size(); ++i) {
      const char16_t next = i + 1 < replacement.size() ? replacement[i + 1] : u'\0';
      if (replacement[i] != u'$') {
        result += replacement[i];
        continue;
      }
      if (const auto [group, digits] = GroupIn(replacement.substr(i + 1)); digits > 0) {
        append(matcher.Group(group));
        i += digits;
        continue;
      }
      switch (next) {
        case u'$':
          result += u'$';
          break;
        case u'&':
          append(whole);
          break;
        case u'`':
          append({0, whole.start});
          break;
        case u'\'':
          append({whole.end, static_cast<std::ptrdiff_t>(text.size())});
          break;
        default:
          result += u'$';
          continue;
      }
      ++i;
    }
  }

  struct GroupReference {
    std::size_t group = 0, digits = 0;
  };

  // One or two digits that name an existing group.
  [[nodiscard]] GroupReference GroupIn(std::u16string_view text) const {
    GroupReference reference, longest;
    while (reference.digits < 2 && reference.digits < text.size()) {
      const char16_t digit = text[reference.digits];
      if (digit < u'0' || digit > u'9') break;
      reference.group = reference.group * 10 + static_cast<std::size_t>(digit - u'0');
      ++reference.digits;
      if (reference.group >= 1 && reference.group <= program_->groups) longest = reference;
    }
    return longest;
  }

  std::string pattern_;
  bool global_ = false, ignoreCase_ = false, multiLine_ = false;
  std::optional<RegExpProgram> program_;
};

}  // namespace

Ref<Object> MakeRegExp(Context&) { return Make<RegExp>(); }

}  // namespace tessary::script
