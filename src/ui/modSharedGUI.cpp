#include "ui/modSharedGUI.h"

#include <charconv>
#include <cstdio>
#include <string_view>

#include "system/Conversions.h"
#include "system/Error.h"
#include "system/modCustom.h"
#include "system/modLog.h"

namespace tessary {

namespace {

std::string_view ButtonName(std::int32_t button) {
  switch (button) {
    case box::kAnswerCancel:
      return "Cancel";
    case box::kAnswerRetry:
      return "Retry";
    case box::kAnswerYes:
      return "Yes";
    case box::kAnswerNo:
      return "No";
    default:
      return "OK";
  }
}

constexpr const char* kHexDigits = "0123456789abcdefABCDEF";

/// The hexadecimal byte at `position`, or 0.
std::int32_t HexByte(std::string_view text, std::size_t position) {
  if (position + 2 > text.size()) return 0;
  std::int32_t byte = 0;
  const char* const end = text.data() + position + 2;
  const auto read = std::from_chars(text.data() + position, end, byte, 16);
  return read.ptr == end && byte >= 0 ? byte : 0;
}

}  // namespace

std::int32_t ShowMessage(Run& run, const std::string& text, std::int32_t flags) {
  const BoxAnswer answer = run.host.desktop.ShowBox(text, GetProductName(), flags);
  if (!answer.shown)
    LogQuietly(run, "Message without a display, answered with " + std::string(ButtonName(answer.button)) +
                        ": " + text.substr(0, text.find("\r\n")));
  return answer.button;
}

bool ShowModal(Run& run, Form& form) {
  if (run.host.desktop.ShowForm(form)) return true;
  if (form.okButton != nullptr) form.Press(*form.okButton);
  LogQuietly(run, "Dialog without a display, answered with " +
                      std::string(form.IsLoaded() ? "Cancel" : "its default button") + ": " +
                      form.root.caption);
  form.Unload();
  return false;
}

std::string ColorToHex(std::int32_t color) {
  std::int32_t red = 0, green = 0, blue = 0;
  SplitColor(color, red, green, blue);
  char text[40];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", static_cast<unsigned>(red), static_cast<unsigned>(green),
                static_cast<unsigned>(blue));
  return text;
}

void HexToRGB(std::string_view text, std::int32_t& red, std::int32_t& green, std::int32_t& blue) {
  if (text.starts_with('#')) text.remove_prefix(1);
  red = HexByte(text, 0);
  green = HexByte(text, 2);
  blue = HexByte(text, 4);
}

std::int32_t HexToColor(std::string_view text) {
  std::int32_t red = 0, green = 0, blue = 0;
  HexToRGB(text, red, green, blue);
  return red + 256 * green + 65536 * blue;
}

std::string NormalizeColor(std::string_view text) {
  static constexpr std::size_t kDigits = 6;
  std::string digits = TrimBlanks(text);
  if (digits.empty()) return {};
  if (digits.starts_with('#')) digits.erase(0, 1);
  digits = (digits + "000000").substr(0, kDigits);
  // The digits count behind a leading 1, which shows where fewer than six of them are good.
  std::string number = "1" + digits.substr(0, digits.find_first_not_of(kHexDigits));
  if (number.size() > kDigits) number.erase(0, number.size() - kDigits);
  return "#" + ToUpper(number);
}

}  // namespace tessary
