#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "script/library/TextForms.h"

namespace tessary::script {
namespace {

// A number as its digits, without zeros at the end, and the power of ten of the first of them.
struct Scientific {
  std::string digits;
  int exponent = 0;
};

template <class Number>
Scientific Digits(Number number, int precision) {
  std::array<char, 40> buffer;
  const auto end =
      std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::scientific, precision - 1).ptr;
  const auto letter = std::find(buffer.begin(), end, 'e');
  Scientific result;
  std::copy_if(buffer.begin(), letter, std::back_inserter(result.digits), [](char c) { return c != '.'; });
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  std::from_chars(letter + (letter[1] == '+' ? 2 : 1), end, result.exponent);
  return result;
}

// As many digits as `precision` says on each side of the point; a number that needs more gets an exponent.
template <class Number>
std::string GeneralText(Number number, int precision) {
  if (std::isnan(number)) return "-1.#IND";
  if (std::isinf(number)) return number < 0 ? "-1.#INF" : "1.#INF";
  if (number == 0) return "0";
  auto [digits, exponent] = Digits(std::fabs(number), precision);
  const auto size = static_cast<int>(digits.size());
  if (exponent >= precision || size - 1 - exponent > precision) {
    if (size > 1) digits.insert(1, ".");
    const std::string power = std::to_string(std::abs(exponent));
    digits += (exponent < 0 ? "E-" : "E+") + std::string(power.size() < 2 ? "0" : "") + power;
  } else if (exponent < 0) {
    digits.insert(0, "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0'));
  } else if (exponent >= size) {
    digits.append(static_cast<std::size_t>(exponent + 1 - size), '0');
  } else if (exponent + 1 < size) {
    digits.insert(static_cast<std::size_t>(exponent) + 1, ".");
  }
  return number < 0 ? "-" + digits : digits;
}

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A number taken apart: 0.digits times ten to the power of `point`.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

// Exponents beyond this are as good as infinite; a text of digits alone cannot be long enough to matter.
constexpr int kMaxExponent = 100'000;

class NumberScanner {
 public:
  explicit NumberScanner(std::string_view text) : text_(text) {}

  std::optional<Decimal> Scan() {
    Decimal decimal;
    if (!ScanFront() || !ScanDigits(decimal) || !ScanExponent(decimal) || !ScanBack()) return std::nullopt;
    decimal.negative = minus_ || parenthesis_;
    return decimal;
  }

 private:
  [[nodiscard]] char Peek(std::size_t ahead = 0) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
  }
  void SkipBlanks() {
    while (IsBlank(Peek())) ++at_;
  }

  bool ScanFront() {
    for (SkipBlanks(); !IsDigit(Peek()) && Peek() != '.'; SkipBlanks()) {
      if (!TakeMark('(')) return false;
    }
    return true;
  }

  bool ScanBack() {
    if (parenthesis_) open_ = true;
    for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) {
      if (!TakeMark(')')) return false;
    }
    return !open_;
  }

  // A sign, a "$" or a parenthesis, each at most once.
  bool TakeMark(char parenthesis) {
    const char mark = Peek();
    const bool sign = mark == '-' || mark == '+';
    bool& seen = sign ? signed_ : mark == '$' ? dollar_ : parenthesis == ')' ? closed_ : parenthesis_;
    if ((!sign && mark != '$' && mark != parenthesis) || seen || (mark == ')' && !open_)) return false;
    seen = true;
    if (mark == '-') minus_ = true;
    if (mark == ')') open_ = false;
    if (sign && parenthesis_) return false;
    ++at_;
    return true;
  }

  bool ScanDigits(Decimal& decimal) {
    bool any = false, behindPoint = false;
    for (;; ++at_) {
      const char c = Peek();
      if (IsDigit(c)) {
        any = true;
        if (!decimal.digits.empty() || c != '0') {
          decimal.digits += c;
          if (!behindPoint) ++decimal.point;
        } else if (behindPoint) {
          --decimal.point;
        }
      } else if (c == '.' && !behindPoint) {
        behindPoint = true;
      } else if (c != ',' || !any || behindPoint) {
        return any;
      }
    }
  }

  bool ScanExponent(Decimal& decimal) {
    const char letter = Peek();
    if (letter != 'e' && letter != 'E' && letter != 'd' && letter != 'D') return true;
    ++at_;
    const bool negative = Peek() == '-';
    if (negative || Peek() == '+') ++at_;
    if (!IsDigit(Peek())) return false;
    int exponent = 0;
    for (; IsDigit(Peek()); ++at_) exponent = std::min(exponent * 10 + (Peek() - '0'), kMaxExponent);
    decimal.point += negative ? -exponent : exponent;
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  bool signed_ = false, dollar_ = false, parenthesis_ = false, closed_ = false;
  bool minus_ = false, open_ = false;
};

// &H1F, &O17 and &17. Up to 16 bits are read as an Integer, so that &HFFFF is -1; an "&" behind makes it a
// Long.
std::optional<double> ParseBits(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  if (text.size() < 2 || text[0] != '&') return std::nullopt;
  const char letter = static_cast<char>(text[1] | 0x20);
  text.remove_prefix(letter == 'h' || letter == 'o' ? 2 : 1);
  const bool isLong = !text.empty() && text.back() == '&';
  if (isLong) text.remove_suffix(1);
  std::uint32_t bits = 0;
  const auto [end, error] = std::from_chars(text.begin(), text.end(), bits, letter == 'h' ? 16 : 8);
  if (end != text.end() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) return std::numeric_limits<double>::infinity();
  return !isLong && bits <= 0xFFFF ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
}

// The digits rounded half away from zero to `decimals` behind the point, as a text of digits alone without
// leading zeros; the last `decimals` of them stand behind the point.
std::string RoundedDigits(double number, int decimals) {
  constexpr int kDigits = 15;
  if (number == 0) return {};
  auto [digits, exponent] = Digits(std::fabs(number), kDigits);
  const int wanted = exponent + 1 + decimals;
  if (wanted < 0) return {};
  const bool up =
      static_cast<std::size_t>(wanted) < digits.size() && digits[static_cast<std::size_t>(wanted)] >= '5';
  digits.resize(static_cast<std::size_t>(wanted), '0');
  if (up) {
    auto digit = digits.rbegin();
    for (; digit != digits.rend() && *digit == '9'; ++digit) *digit = '0';
    if (digit != digits.rend())
      ++*digit;
    else
      digits.insert(digits.begin(), '1');
  }
  digits.erase(0, digits.find_first_not_of('0'));
  return digits;
}

}  // namespace

std::string NumberText(double number) { return GeneralText(number, 15); }

std::string SingleText(float number) { return GeneralText(number, 7); }

std::optional<double> ParseNumber(std::string_view text) {
  if (const auto bits = ParseBits(text)) return bits;
  const auto decimal = NumberScanner(text).Scan();
  if (!decimal) return std::nullopt;
  if (decimal->digits.empty()) return decimal->negative ? -0.0 : 0.0;
  const std::string plain = "0." + decimal->digits + "e" + std::to_string(decimal->point);
  double number = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (result.ec == std::errc::result_out_of_range) {
    number = decimal->point > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return decimal->negative ? -number : number;
}

std::optional<std::int64_t> ParseCurrency(std::string_view text, bool& overflow) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  overflow = false;
  if (const auto bits = ParseBits(text)) {
    overflow = std::isinf(*bits);
    return overflow ? 0 : static_cast<std::int64_t>(*bits) * 10000;
  }
  const auto decimal = NumberScanner(text).Scan();
  if (!decimal) return std::nullopt;
  const std::string& digits = decimal->digits;
  const int wanted = decimal->point + 4;
  std::int64_t amount = 0;
  for (int i = 0; i < wanted; ++i) {
    const int digit = i < static_cast<int>(digits.size()) ? digits[static_cast<std::size_t>(i)] - '0' : 0;
    if (amount == 0 && i >= static_cast<int>(digits.size())) break;
    if (amount > (kMost - digit) / 10) {
      overflow = true;
      return 0;
    }
    amount = amount * 10 + digit;
  }
  const auto rest = static_cast<std::size_t>(std::max(wanted, 0));
  if (wanted >= 0 && rest < digits.size() && digits[rest] >= '5') {
    const bool half = digits[rest] == '5' && digits.find_first_not_of('0', rest + 1) == std::string::npos;
    if ((!half || amount % 2 != 0) && amount < kMost) ++amount;
  }
  return decimal->negative ? -amount : amount;
}

std::string FormatDecimal(double number, const NumberFormat& format) {
  std::string digits = RoundedDigits(number, format.decimals);
  const bool negative = number < 0 && !digits.empty();
  const auto decimals = static_cast<std::size_t>(format.decimals);
  if (digits.size() < decimals) digits.insert(0, decimals - digits.size(), '0');
  std::string whole = digits.substr(0, digits.size() - decimals);
  if (format.groups) {
    for (std::size_t at = whole.size(); at > 3;) whole.insert(at -= 3, 1, ',');
  }
  if (whole.empty() && (format.leadingZero || decimals == 0)) whole = "0";
  std::string text(format.prefix);
  text += whole;
  if (decimals > 0) text += "." + digits.substr(digits.size() - decimals);
  text += format.suffix;
  if (!negative) return text;
  return format.parentheses ? "(" + text + ")" : "-" + text;
}

}  // namespace tessary::script
