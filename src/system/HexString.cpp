#include "system/HexString.h"

namespace tessary {

std::string HexString(std::string_view bytes) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "<";
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text.append({kDigits[value / 16], kDigits[value % 16]});
  }
  return text + '>';
}

}  // namespace tessary
