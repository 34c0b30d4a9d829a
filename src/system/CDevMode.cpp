#include "system/CDevMode.h"

#include "system/Conversions.h"

namespace tessary {

namespace {

std::string FixedText(const std::string& field) {
  return field.find('\0') == std::string::npos ? TrimBlanks(field) : CutAtNul(field);
}

}  // namespace

void CDevMode::Load(const DeviceMode* record) {
  if (record == nullptr) return;
  record_ = *record;
  record_.deviceName = FixedText(record_.deviceName);
  record_.formName = FixedText(record_.formName);
}

}  // namespace tessary
