// The device settings of a printer or a job: a snapshot.
#pragma once

#include <cstdint>
#include <string>

#include "host/PrinterRecords.h"

namespace tessary {

/// Each member is the field of the platform's record with the prefix "dm"; ScaleFactor is dmScale. Everything
/// is 0 and empty before something is loaded.
class CDevMode {
 public:
  /// Takes over `record`; does nothing for a null pointer. The two names end at their NUL; one that fills its
  /// field loses the blanks at its ends.
  void Load(const DeviceMode* record);

  [[nodiscard]] std::int32_t BitsPerPel() const { return record_.bitsPerPel; }
  [[nodiscard]] std::int16_t Collate() const { return record_.collate; }
  [[nodiscard]] std::int16_t Color() const { return record_.color; }
  [[nodiscard]] std::int16_t Copies() const { return record_.copies; }
  [[nodiscard]] std::int16_t DefaultSource() const { return record_.defaultSource; }
  [[nodiscard]] const std::string& DeviceName() const { return record_.deviceName; }
  [[nodiscard]] std::int32_t DisplayFrequency() const { return record_.displayFrequency; }
  [[nodiscard]] std::int16_t DriverVersion() const { return record_.driverVersion; }
  [[nodiscard]] std::int16_t Duplex() const { return record_.duplex; }
  [[nodiscard]] std::int32_t Fields() const { return record_.fields; }
  [[nodiscard]] const std::string& FormName() const { return record_.formName; }
  [[nodiscard]] std::int16_t LogPixels() const { return record_.logPixels; }
  [[nodiscard]] std::int32_t NUP() const { return record_.nup; }
  [[nodiscard]] std::int16_t Orientation() const { return record_.orientation; }
  [[nodiscard]] std::int16_t PaperLength() const { return record_.paperLength; }
  [[nodiscard]] std::int16_t PaperSize() const { return record_.paperSize; }
  [[nodiscard]] std::int16_t PaperWidth() const { return record_.paperWidth; }
  [[nodiscard]] std::int32_t PelsHeight() const { return record_.pelsHeight; }
  [[nodiscard]] std::int32_t PelsWidth() const { return record_.pelsWidth; }
  [[nodiscard]] std::int16_t PrintQuality() const { return record_.printQuality; }
  [[nodiscard]] std::int16_t ScaleFactor() const { return record_.scale; }
  [[nodiscard]] std::int16_t SpecVersion() const { return record_.specVersion; }
  [[nodiscard]] std::int16_t TTOption() const { return record_.ttOption; }
  [[nodiscard]] std::int16_t YResolution() const { return record_.yResolution; }

 private:
  DeviceMode record_;
};

}  // namespace tessary
