#include <array>
#include <vector>

#include "script/library/DateSerial.h"
#include "script/library/TextForms.h"

namespace tessary::script {
namespace {

std::string TwoDigits(int number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
bool IsLetter(char c) { return Lower(c) >= 'a' && Lower(c) <= 'z'; }

// The number from 1 of the name in `names` that `word` is, in full or as its first three letters; 0 if none.
template <std::size_t Count>
int NameNumber(const std::array<std::string_view, Count>& names, std::string_view word) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (word.size() != names[i].size() && word.size() != 3) continue;
    bool same = true;
    for (std::size_t j = 0; j < word.size(); ++j) same = same && word[j] == Lower(names[i][j]);
    if (same) return static_cast<int>(i) + 1;
  }
  return 0;
}

struct DateNumber {
  int value;
  std::size_t digits;
  [[nodiscard]] bool MustBeYear() const { return digits > 2 || value > 31; }
};

class DateScanner {
 public:
  DateScanner(std::string_view text, int currentYear) : text_(text), currentYear_(currentYear) {}

  std::optional<double> Scan() {
    for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) {
      if (!ScanPiece()) return std::nullopt;
    }
    if (separator_ != '\0') return std::nullopt;
    if (numbers_.empty() && month_ == 0) return hasTime_ ? SerialOf(0, seconds_) : std::nullopt;
    const auto day = FindDay();
    return day ? SerialOf(*day, seconds_) : std::nullopt;
  }

 private:
  [[nodiscard]] char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  void SkipBlanks() {
    while (IsBlank(Peek())) ++at_;
  }

  bool ScanPiece() {
    if (IsDigit(Peek())) return ScanNumberOrTime();
    if (IsLetter(Peek())) return TakeWord(ScanWord());
    const char separator = text_[at_++];
    const bool known = separator == '/' || separator == '-' || separator == '.' || separator == ',';
    if (!known || separator_ != '\0' || !behindDatePart_) return false;
    if (separator != ',') separator_ = separator;
    points_ += separator == '.' ? 1 : 0;
    behindDatePart_ = separator != ',';
    return true;
  }

  std::string ScanWord() {
    std::string word;
    for (; IsLetter(Peek()); ++at_) word += Lower(Peek());
    return word;
  }

  bool TakeWord(const std::string& word) {
    if (const int month = NameNumber(kMonthNames, word)) {
      if (month_ != 0) return false;
      month_ = month;
      separator_ = '\0';
      behindDatePart_ = true;
      return true;
    }
    if (NameNumber(kDayNames, word) != 0 && separator_ == '\0' && !hasWeekday_) {
      hasWeekday_ = behindDatePart_ = true;
      return true;
    }
    return word == "t" && separator_ == '\0' && numbers_.size() == 3 && !hasTime_ && IsDigit(Peek());
  }

  std::optional<DateNumber> ScanNumber() {
    DateNumber number{0, 0};
    for (; IsDigit(Peek()); ++at_, ++number.digits) {
      if (number.digits == 4) return std::nullopt;
      number.value = number.value * 10 + (Peek() - '0');
    }
    if (number.digits == 0) return std::nullopt;
    return number;
  }

  bool ScanNumberOrTime() {
    const auto number = ScanNumber();
    if (!number) return false;
    const std::size_t behind = at_;
    SkipBlanks();
    if (Peek() == ':') return separator_ == '\0' && ScanTime(number->value);
    int hour = number->value;
    if (TakeHalfOfDay(hour)) return separator_ == '\0' && SetTime(hour, 0, 0);
    at_ = behind;
    if (numbers_.size() == 3) return false;
    numbers_.push_back(*number);
    separator_ = '\0';
    behindDatePart_ = true;
    return true;
  }

  bool ScanTime(int hour) {
    std::array<int, 2> rest{};
    for (int& part : rest) {
      SkipBlanks();
      if (Peek() != ':') break;
      ++at_;
      SkipBlanks();
      const auto number = ScanNumber();
      if (!number || number->value > 59) return false;
      part = number->value;
    }
    SkipBlanks();
    TakeHalfOfDay(hour);
    return SetTime(hour, rest[0], rest[1]);
  }

  // "AM" or "PM" turns the hour into one of 24; false when neither follows.
  bool TakeHalfOfDay(int& hour) {
    const std::size_t start = at_;
    const std::string word = ScanWord();
    const bool morning = word == "am" || word == "a";
    if (!morning && word != "pm" && word != "p") {
      at_ = start;
      return false;
    }
    if (morning && hour > 12) hour = 24;  // "13 AM" is no time
    if (hour <= 12) hour = hour % 12 + (morning ? 0 : 12);
    return true;
  }

  bool SetTime(int hour, int minute, int second) {
    if (hasTime_ || hour > 23) return false;
    hasTime_ = true;
    behindDatePart_ = false;
    seconds_ = hour * 3600 + minute * 60 + second;
    return true;
  }

  [[nodiscard]] std::optional<std::int64_t> Day(DateNumber year, int month, int day) const {
    const auto full = static_cast<int>(year.digits <= 2 ? FullYear(year.value) : year.value);
    if (full < 100 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(full, month)) return std::nullopt;
    return DayNumber(full, month, day);
  }

  [[nodiscard]] std::optional<std::int64_t> FindDay() const {
    const DateNumber thisYear{currentYear_, 4};
    if (month_ != 0) {
      if (numbers_.empty() || numbers_.size() > 2) return std::nullopt;
      const DateNumber first = numbers_[0];
      if (numbers_.size() == 1)
        return first.MustBeYear() ? Day(first, month_, 1) : Day(thisYear, month_, first.value);
      const DateNumber second = numbers_[1];
      return first.MustBeYear() ? Day(first, month_, second.value) : Day(second, month_, first.value);
    }
    if (numbers_.size() < 2) return std::nullopt;
    const DateNumber first = numbers_[0], second = numbers_[1];
    if (numbers_.size() == 2) {
      if (points_ > 0) return std::nullopt;  // "1.5" is a number
      if (first.MustBeYear()) return Day(first, second.value, 1);
      if (second.MustBeYear()) return Day(second, first.value, 1);
      return EitherOrder(thisYear, first.value, second.value);
    }
    if (first.MustBeYear()) return EitherOrder(first, second.value, numbers_[2].value);
    return EitherOrder(numbers_[2], first.value, second.value);
  }

  [[nodiscard]] std::optional<std::int64_t> EitherOrder(DateNumber year, int month, int day) const {
    return month > 12 ? Day(year, day, month) : Day(year, month, day);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int currentYear_;
  std::vector<DateNumber> numbers_;
  int month_ = 0, points_ = 0, seconds_ = 0;
  char separator_ = '\0';  ///< one that waits for the next part
  bool behindDatePart_ = false, hasTime_ = false, hasWeekday_ = false;
};

}  // namespace

std::string ShortDate(double serial) {
  const DateParts parts = PartsOf(serial);
  return std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" + std::to_string(parts.year);
}

std::string LongDate(double serial) {
  const DateParts parts = PartsOf(serial);
  const int weekday = PartOf(Interval::Weekday, serial, 1, 1);
  return std::string(kDayNames[static_cast<std::size_t>(weekday - 1)]) + ", " +
         std::string(kMonthNames[static_cast<std::size_t>(parts.month - 1)]) + " " + std::to_string(parts.day) +
         ", " + std::to_string(parts.year);
}

std::string LongTime(double serial) {
  const DateParts parts = PartsOf(serial);
  return std::to_string((parts.hour + 11) % 12 + 1) + ":" + TwoDigits(parts.minute) + ":" +
         TwoDigits(parts.second) + (parts.hour < 12 ? " AM" : " PM");
}

std::string ShortTime(double serial) {
  const DateParts parts = PartsOf(serial);
  return TwoDigits(parts.hour) + ":" + TwoDigits(parts.minute);
}

std::string DateText(double serial) {
  const std::int64_t seconds = SecondsOf(serial);
  if (seconds % kSecondsPerDay == 0 && seconds != 0) return ShortDate(serial);
  if (seconds >= 0 && seconds < kSecondsPerDay) return LongTime(serial);
  return ShortDate(serial) + " " + LongTime(serial);
}

std::optional<double> ParseDate(std::string_view text, int currentYear) {
  return DateScanner(text, currentYear).Scan();
}

}  // namespace tessary::script
