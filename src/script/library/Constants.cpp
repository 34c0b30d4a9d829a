#include <vector>

#include "script/library/Library.h"

namespace tessary::script {
namespace {

struct TextConstant {
  std::string_view name;
  std::string_view text;
};

struct NumberConstant {
  std::string_view name;
  std::int32_t number;
};

constexpr TextConstant kTexts[] = {
    {"vbCr", "\r"},       {"vbCrLf", "\r\n"},    {"vbFormFeed", "\f"},
    {"vbLf", "\n"},       {"vbNewLine", "\r\n"}, {"vbNullChar", std::string_view("\0", 1)},
    {"vbNullString", ""}, {"vbTab", "\t"},       {"vbVerticalTab", "\v"},
};

constexpr NumberConstant kColours[] = {
    {"vbBlack", 0x000000}, {"vbRed", 0x0000FF},     {"vbGreen", 0x00FF00}, {"vbYellow", 0x00FFFF},
    {"vbBlue", 0xFF0000},  {"vbMagenta", 0xFF00FF}, {"vbCyan", 0xFFFF00},  {"vbWhite", 0xFFFFFF},
};

// Integers where they fit, as if a script had written the number.
constexpr NumberConstant kNumbers[] = {
    // comparison
    {"vbBinaryCompare", 0},
    {"vbTextCompare", 1},
    {"vbDatabaseCompare", 2},
    // dates
    {"vbUseSystem", 0},
    {"vbUseSystemDayOfWeek", 0},
    {"vbSunday", 1},
    {"vbMonday", 2},
    {"vbTuesday", 3},
    {"vbWednesday", 4},
    {"vbThursday", 5},
    {"vbFriday", 6},
    {"vbSaturday", 7},
    {"vbFirstJan1", 1},
    {"vbFirstFourDays", 2},
    {"vbFirstFullWeek", 3},
    {"vbGeneralDate", 0},
    {"vbLongDate", 1},
    {"vbShortDate", 2},
    {"vbLongTime", 3},
    {"vbShortTime", 4},
    // errors
    {"vbObjectError", static_cast<std::int32_t>(0x80040000)},
    // message boxes
    {"vbOKOnly", 0},
    {"vbOKCancel", 1},
    {"vbAbortRetryIgnore", 2},
    {"vbYesNoCancel", 3},
    {"vbYesNo", 4},
    {"vbRetryCancel", 5},
    {"vbCritical", 16},
    {"vbQuestion", 32},
    {"vbExclamation", 48},
    {"vbInformation", 64},
    {"vbDefaultButton1", 0},
    {"vbDefaultButton2", 256},
    {"vbDefaultButton3", 512},
    {"vbDefaultButton4", 768},
    {"vbApplicationModal", 0},
    {"vbSystemModal", 4096},
    {"vbMsgBoxHelpButton", 16384},
    {"vbMsgBoxSetForeground", 65536},
    {"vbMsgBoxRight", 524288},
    {"vbMsgBoxRtlReading", 1048576},
    {"vbOK", 1},
    {"vbCancel", 2},
    {"vbAbort", 3},
    {"vbRetry", 4},
    {"vbIgnore", 5},
    {"vbYes", 6},
    {"vbNo", 7},
    // tristates
    {"vbUseDefault", -2},
    {"vbTrue", -1},
    {"vbFalse", 0},
    // subtypes
    {"vbEmpty", 0},
    {"vbNull", 1},
    {"vbInteger", 2},
    {"vbLong", 3},
    {"vbSingle", 4},
    {"vbDouble", 5},
    {"vbCurrency", 6},
    {"vbDate", 7},
    {"vbString", 8},
    {"vbObject", 9},
    {"vbError", 10},
    {"vbBoolean", 11},
    {"vbVariant", 12},
    {"vbDataObject", 13},
    {"vbDecimal", 14},
    {"vbByte", 17},
    {"vbArray", 8192},
};

}  // namespace

std::span<const NamedConstant> LibraryConstants() {
  static const std::vector<NamedConstant> constants = [] {
    std::vector<NamedConstant> all;
    for (const auto& [name, text] : kTexts) all.push_back({name, Value::String(std::string(text))});
    for (const auto& [name, number] : kColours) all.push_back({name, Value::Long(number)});
    for (const auto& [name, number] : kNumbers) all.push_back({name, Value::Whole(number)});
    return all;
  }();
  return constants;
}

}  // namespace tessary::script
