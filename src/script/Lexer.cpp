#include "script/Lexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>

#include "script/Object.h"
#include "script/library/TextForms.h"

namespace tessary::script {

namespace {

constexpr int kExpectedBracket = 1007;
constexpr int kNameTooLong = 1030;
constexpr int kInvalidNumber = 1031;
constexpr int kInvalidCharacter = 1032;
constexpr int kUnterminatedString = 1033;
constexpr int kSyntaxError = 1002;

constexpr std::string_view kKeywords[] = {
    "",      "And",      "ByRef",    "ByVal",  "Call",     "Case",     "Class", "Const", "Dim",
    "Do",    "Each",     "Else",     "ElseIf", "Empty",    "End",      "Eqv",   "Exit",  "False",
    "For",   "Function", "GoTo",     "If",     "Imp",      "In",       "Is",    "Let",   "Loop",
    "Me",    "Mod",      "New",      "Next",   "Not",      "Nothing",  "Null",  "On",    "Option",
    "Or",    "Private",  "Public",   "ReDim",  "Resume",   "Select",   "Set",   "Stop",  "Sub",
    "Then",  "To",       "True",     "Until",  "Wend",     "While",    "With",  "Xor",   "Default",
    "Erase", "Error",    "Explicit", "Get",    "Preserve", "Property", "Step"};
static_assert(std::size(kKeywords) == static_cast<std::size_t>(Keyword::Step) + 1);

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
// Letters beyond ASCII are welcome in names; what lies below U+00C0 is no letter.
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0xC3;
}
bool IsNamePart(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }
bool IsHexDigit(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool IsOctalDigit(char c) { return c >= '0' && c <= '7'; }

Keyword FindKeyword(std::string_view word) {
  const auto found =
      std::ranges::find_if(kKeywords, [word](std::string_view keyword) { return SameName(keyword, word); });
  return found == std::end(kKeywords) ? Keyword::None : static_cast<Keyword>(found - std::begin(kKeywords));
}

class Lexer {
 public:
  explicit Lexer(std::string_view source) : source_(source) {
    if (source_.starts_with("\xEF\xBB\xBF")) at_ = lineStart_ = 3;
  }

  std::vector<Token> Run() {
    do {
      const std::size_t before = at_;
      SkipBlanks();
      Begin(at_ > before);
      ReadToken();
      afterDot_ = token_.kind == TokenKind::Symbol && token_.symbol == SymbolOf('.');
      tokens_.push_back(std::move(token_));
    } while (tokens_.back().kind != TokenKind::End);
    return std::move(tokens_);
  }

 private:
  [[nodiscard]] char Peek(std::size_t ahead = 0) const {
    return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0';
  }
  [[nodiscard]] bool AtEnd() const { return at_ >= source_.size(); }
  [[nodiscard]] bool AtLineEnd() const { return AtEnd() || Peek() == '\n' || Peek() == '\r'; }

  void Begin(bool spaceBefore) {
    token_ = Token();
    token_.spaceBefore = spaceBefore;
    token_.line = line_;
    token_.column = static_cast<int>(at_ - lineStart_);
  }

  void Bad(int error) {
    token_.kind = TokenKind::Bad;
    token_.error = error;
  }

  void NextLine() {
    if (Peek() == '\r' && Peek(1) == '\n') ++at_;
    ++at_;
    ++line_;
    lineStart_ = at_;
  }

  // Blanks, continued lines and comments.
  void SkipBlanks() {
    while (!AtEnd()) {
      if (IsBlank(Peek())) {
        ++at_;
      } else if (Peek() == '\'') {
        SkipComment();
      } else if (Peek() != '_' || !SkipContinuation()) {
        return;
      }
    }
  }

  bool SkipContinuation() {
    std::size_t ahead = 1;
    while (IsBlank(Peek(ahead))) ++ahead;
    if (Peek(ahead) != '\n' && Peek(ahead) != '\r') return false;
    at_ += ahead;
    NextLine();
    return true;
  }

  void SkipComment() {
    while (!AtLineEnd()) ++at_;
  }

  void ReadToken() {
    if (AtEnd()) {
      token_.kind = TokenKind::End;
    } else if (AtLineEnd()) {
      token_.kind = TokenKind::NewLine;
      NextLine();
    } else if (IsLetter(Peek())) {
      ReadName();
    } else if (IsDigit(Peek()) || (Peek() == '.' && IsDigit(Peek(1)))) {
      ReadNumber();
    } else if (Peek() == '"') {
      ReadString();
    } else if (Peek() == '#') {
      ReadDate();
    } else if (Peek() == '[') {
      ReadBracketed();
    } else if (Peek() != '&') {
      ReadSymbol();
    } else if (IsBehindOperand() || !ReadRadix()) {
      Single();
    }
  }

  void ReadName() {
    const std::size_t start = at_;
    while (IsNamePart(Peek()) && !AtEnd()) ++at_;
    token_.kind = TokenKind::Name;
    token_.text = source_.substr(start, at_ - start);
    if (token_.text.size() > kMaxNameLength) return Bad(kNameTooLong);
    if (afterDot_) return;  // behind a point every word is a member
    if (SameName(token_.text, "Rem")) {
      SkipComment();
      return ReadToken();
    }
    token_.keyword = FindKeyword(token_.text);
  }

  void ReadBracketed() {
    const std::size_t start = ++at_;
    while (!AtLineEnd() && Peek() != ']') ++at_;
    if (AtLineEnd()) return Bad(kExpectedBracket);
    token_.kind = TokenKind::Name;
    token_.text = source_.substr(start, at_ - start);
    ++at_;
    if (token_.text.size() > kMaxNameLength) Bad(kNameTooLong);
  }

  void ReadNumber() {
    const std::size_t start = at_;
    while (IsDigit(Peek())) ++at_;
    bool real = false;
    if (Peek() == '.') {
      real = true;
      for (++at_; IsDigit(Peek());) ++at_;
    }
    if (Peek() == 'e' || Peek() == 'E') {
      const std::size_t sign = Peek(1) == '+' || Peek(1) == '-' ? 1 : 0;
      if (!IsDigit(Peek(1 + sign))) return Bad(kInvalidNumber);
      real = true;
      for (at_ += 1 + sign; IsDigit(Peek());) ++at_;
    }
    double number = 0;
    const auto result = std::from_chars(source_.data() + start, source_.data() + at_, number);
    if (result.ec != std::errc() && number == 0) {
      // Too large, or too small to be told from zero.
      const std::string_view text = source_.substr(start, at_ - start);
      if (text.find("e-") == std::string_view::npos && text.find("E-") == std::string_view::npos) {
        return Bad(kInvalidNumber);
      }
    }
    token_.kind = TokenKind::Literal;
    constexpr double kLongMax = 2147483647.0;
    token_.value =
        real || number > kLongMax ? Value::Double(number) : Value::Whole(static_cast<std::int64_t>(number));
  }

  // In "a"&header the & joins texts; in Echo &HFF it begins a number.
  [[nodiscard]] bool IsBehindOperand() const {
    if (tokens_.empty()) return false;
    const Token& last = tokens_.back();
    const bool isClosed = last.kind == TokenKind::Symbol && last.symbol == SymbolOf(')');
    const bool isJoinedName =
        last.kind == TokenKind::Name && last.keyword == Keyword::None && !token_.spaceBefore;
    return last.kind == TokenKind::Literal || isClosed || isJoinedName;
  }

  // &H12, &O17, &17, each perhaps with & behind it for a Long. False if it is the operator.
  bool ReadRadix() {
    const bool hex = Peek(1) == 'h' || Peek(1) == 'H';
    const bool letterO = Peek(1) == 'o' || Peek(1) == 'O';
    std::size_t digits = at_ + (hex || letterO ? 2 : 1);
    const auto isDigit = hex ? IsHexDigit : IsOctalDigit;
    const std::size_t start = digits;
    while (digits < source_.size() && isDigit(source_[digits])) ++digits;
    if (digits == start) return false;
    std::uint32_t number = 0;
    const auto result = std::from_chars(source_.data() + start, source_.data() + digits, number, hex ? 16 : 8);
    at_ = digits;
    const bool isLong = Peek() == '&';
    if (isLong) ++at_;
    token_.kind = TokenKind::Literal;
    if (result.ec != std::errc()) {
      Bad(kInvalidNumber);
    } else if (number <= 0xFFFF && !isLong) {
      token_.value = Value::Integer(static_cast<std::int16_t>(number));
    } else {
      token_.value = Value::Long(static_cast<std::int32_t>(number));
    }
    return true;
  }

  void ReadString() {
    std::string text;
    for (++at_; !AtLineEnd(); ++at_) {
      if (Peek() == '"') {
        ++at_;
        if (Peek() != '"') {
          token_.kind = TokenKind::Literal;
          token_.value = Value::String(std::move(text));
          return;
        }
      }
      text += Peek();
    }
    Bad(kUnterminatedString);
  }

  void ReadDate() {
    const std::size_t start = ++at_;
    while (!AtLineEnd() && Peek() != '#') ++at_;
    if (AtLineEnd()) return Bad(kSyntaxError);
    const std::optional<double> days = ParseDate(source_.substr(start, at_ - start));
    ++at_;
    if (!days) return Bad(kSyntaxError);
    token_.kind = TokenKind::Literal;
    token_.value = Value::Date(*days);
  }

  void Single() {
    token_.kind = TokenKind::Symbol;
    token_.symbol = SymbolOf(Peek());
    ++at_;
  }

  void Double(Symbol symbol) {
    token_.kind = TokenKind::Symbol;
    token_.symbol = symbol;
    at_ += 2;
  }

  void ReadSymbol() {
    const char first = Peek();
    const char second = Peek(1);
    if (first == ':') {
      token_.kind = TokenKind::Colon;
      ++at_;
    } else if (first == '<' && second == '>') {
      Double(Symbol::NotEqual);
    } else if ((first == '<' && second == '=') || (first == '=' && second == '<')) {
      Double(Symbol::LessOrEqual);
    } else if ((first == '>' && second == '=') || (first == '=' && second == '>')) {
      Double(Symbol::GreaterOrEqual);
    } else if (std::string_view("()+-*/\\^=<>,.").find(first) != std::string_view::npos) {
      Single();
    } else {
      ++at_;
      Bad(kInvalidCharacter);
    }
  }

  std::string_view source_;
  std::size_t at_ = 0;
  std::size_t lineStart_ = 0;
  int line_ = 1;
  bool afterDot_ = false;
  Token token_;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> Tokenize(std::string_view source) { return Lexer(source).Run(); }

}  // namespace tessary::script
