#include "host/posix/ShellScript.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessary {

namespace {

/// What the shell is reading. Each but the first ends where its closing character stands.
enum class Context {
  Command,       // words and operators, at the top or in ( )
  Substitution,  // the same in $( )
  Braces,        // ${ } outside of quotes
  Quotes,        // " "
  QuotedBraces,  // ${ } in them
  Arithmetic,    // one of the two pairs of $(( )), or a pair in it
  Apostrophes,   // ' '
};

bool IsQuoted(Context context) {
  return context == Context::Quotes || context == Context::QuotedBraces || context == Context::Arithmetic;
}

bool IsCommand(Context context) { return context == Context::Command || context == Context::Substitution; }

/// True for a character behind which a word begins.
bool PartsWords(char c) { return std::string_view(" \t\n;&|()<>").find(c) != std::string_view::npos; }

/// The command between two backquotes: the level of backslashes that the backquotes ask for is taken off.
std::string Unescaped(std::string_view inner, bool inQuotes) {
  const std::string_view escaped = inQuotes ? "$`\\\"" : "$`\\";
  std::string command;
  for (std::size_t i = 0; i < inner.size(); ++i) {
    const bool drops =
        inner[i] == '\\' && i + 1 < inner.size() && escaped.find(inner[i + 1]) != std::string::npos;
    command += inner[drops ? ++i : i];
  }
  return command;
}

class ScriptWriter {
 public:
  ScriptWriter(std::string_view command, std::size_t count) : command_(command), count_(count) {}

  std::string Write() {
    while (at_ < command_.size()) Step();
    return std::move(script_);
  }

 private:
  [[nodiscard]] char At(std::size_t place) const { return place < command_.size() ? command_[place] : '\0'; }
  [[nodiscard]] bool IsPlaceholder(std::size_t place) const {
    const char digit = At(place + 1);
    return At(place) == '%' && digit >= '1' && static_cast<std::size_t>(digit - '0') <= count_;
  }
  [[nodiscard]] Context Now() const { return contexts_.back(); }

  void Copy(std::size_t length) {
    script_ += command_.substr(at_, length);
    at_ = std::min(at_ + length, command_.size());
    atWordStart_ = PartsWords(script_.back());
  }

  void Enter(Context context, std::size_t length) {
    Copy(length);
    contexts_.push_back(context);
  }

  void Leave() {
    Copy(1);
    atWordStart_ = Now() == Context::Command;  // the other brackets and quotes are parts of a word
    contexts_.pop_back();
  }

  void Step() {
    if (IsPlaceholder(at_)) return Refer();
    const char c = At(at_);
    if (Now() == Context::Apostrophes) return c == '\'' ? Leave() : Copy(1);
    switch (c) {
      case '\\':
        return Escape();
      case '`':
        return Backquoted();
      case '$':
        return Dollar();
      case '"':
        if (Now() == Context::Quotes) return Leave();
        return IsQuoted(Now()) ? Copy(1) : Enter(Context::Quotes, 1);
      case '\'':
        return IsQuoted(Now()) ? Copy(1) : Enter(Context::Apostrophes, 1);
      case '#':
        return IsCommand(Now()) && atWordStart_ ? Copy(command_.find('\n', at_) - at_) : Copy(1);
      default:
        return Bracket(c);
    }
  }

  void Bracket(char c) {
    const Context now = Now();
    if (c == '(' && IsCommand(now)) return Enter(Context::Command, 1);
    if (c == '(' && now == Context::Arithmetic) return Enter(now, 1);
    const bool closes = c == ')' ? (IsCommand(now) || now == Context::Arithmetic) && contexts_.size() > 1
                                 : c == '}' && (now == Context::Braces || now == Context::QuotedBraces);
    return closes ? Leave() : Copy(1);
  }

  void Refer() {
    const std::string number(1, At(at_ + 1));
    if (Now() == Context::Apostrophes)
      script_ += "'\"$" + number + "\"'";
    else
      script_ += IsQuoted(Now()) ? "${" + number + "}" : "\"$" + number + "\"";
    at_ += 2;
    atWordStart_ = false;
  }

  void Escape() {
    if (!IsPlaceholder(at_ + 1)) {
      Copy(2);
      atWordStart_ = false;
      return;
    }
    if (IsQuoted(Now())) script_ += "\\\\";  // there it is a character of its own
    ++at_;
  }

  void Dollar() {
    if (IsPlaceholder(at_ + 1)) {
      script_ += "\\$";
      ++at_;
      return;
    }
    const std::string_view rest = command_.substr(at_);
    if (rest.starts_with("$((")) {
      Enter(Context::Arithmetic, 2);
      return Enter(Context::Arithmetic, 1);
    }
    if (rest.starts_with("$(")) return Enter(Context::Substitution, 2);
    if (rest.starts_with("${")) return Enter(IsQuoted(Now()) ? Context::QuotedBraces : Context::Braces, 2);
    return Copy(rest.starts_with("$$") ? 2 : 1);
  }

  /// Backquotes want backslashes of their own in front of much, at each level again. A command in them that
  /// holds a placeholder goes into $( ) instead, which wants none.
  void Backquoted() {
    std::size_t end = at_ + 1;
    while (end < command_.size() && command_[end] != '`') end += command_[end] == '\\' ? 2 : 1;
    bool holds = false;
    for (std::size_t i = at_; i < end; ++i) holds = holds || IsPlaceholder(i);
    if (!holds || end >= command_.size()) {
      Copy(end + 1 - at_);
    } else {
      const std::string inner = Unescaped(command_.substr(at_ + 1, end - at_ - 1), IsQuoted(Now()));
      // The blank keeps a "(" from making it arithmetic, the line end a comment from taking the bracket.
      script_ += "$( " + ScriptWriter(inner, count_).Write() + "\n)";
      at_ = end + 1;
    }
    atWordStart_ = false;
  }

  std::string_view command_;
  std::size_t count_;
  std::size_t at_ = 0;
  std::string script_;
  std::vector<Context> contexts_{Context::Command};
  bool atWordStart_ = true;
};

}  // namespace

std::string ShellScript(std::string_view command, std::size_t count) {
  return ScriptWriter(command, count).Write();
}

}  // namespace tessary
