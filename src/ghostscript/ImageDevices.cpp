#include <algorithm>
#include <array>
#include <string_view>

#include "config/modSpecialFolders.h"
#include "ghostscript/ParameterLines.h"
#include "ghostscript/modGhostScript.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"

namespace tessary {

namespace {

constexpr std::string_view kPng = "png";

struct ImageDevice {
  std::string_view name, extension;
};

constexpr std::array kDevices{
    ImageDevice{"pngmono", kPng},   ImageDevice{"pnggray", kPng},   ImageDevice{"png16", kPng},
    ImageDevice{"png256", kPng},    ImageDevice{"png16m", kPng},    ImageDevice{"pngalpha", kPng},
    ImageDevice{"tiffgray", "tif"}, ImageDevice{"tiff12nc", "tif"}, ImageDevice{"tiff24nc", "tif"},
    ImageDevice{"tiff32nc", "tif"}, ImageDevice{"tiffsep", "tif"},  ImageDevice{"tiffcrle", "tif"},
    ImageDevice{"tiffg3", "tif"},   ImageDevice{"tiffg32d", "tif"}, ImageDevice{"tiffg4", "tif"},
    ImageDevice{"tifflzw", "tif"},  ImageDevice{"tiffpack", "tif"}, ImageDevice{"jpeg", "jpg"}};

/// The value of "-r": both directions, one for both, or empty where the settings name none.
std::string Resolution(Dictionary& settings) {
  std::int32_t x = SafeLong(settings.Text("resx")), y = SafeLong(settings.Text("resy"));
  const std::int32_t both = SafeLong(settings.Text("res"));
  if (x == 0 && y == 0) return both == 0 ? std::string() : std::to_string(both);
  if (x == 0) x = both != 0 ? both : y;
  if (y == 0) y = both != 0 ? both : x;
  return std::to_string(x) + "x" + std::to_string(y);
}

std::int32_t AlphaBits(const std::string& setting) {
  constexpr std::int32_t kDefault = 4;
  return TrimBlanks(setting).empty() ? kDefault : SafeLong(setting);
}

}  // namespace

bool IsDeviceOutput(Dictionary& settings) { return !TrimBlanks(settings.Text("device")).empty(); }

bool WriteDeviceParameterFile(Run& run, const std::string& parameterFile, std::string& outputFile,
                              Dictionary& settings, const std::string& stdoutFile, const std::string& inputFile,
                              std::string& extension) {
  const std::string device = ToLower(settings.Text("device")), resolution = Resolution(settings);
  const std::int32_t text = AlphaBits(settings.Text("textalphabits"));
  const std::int32_t graphics = AlphaBits(settings.Text("graphicsalphabits"));
  const std::string background = TrimBlanks(settings.Text("backgroundcolor"));
  const auto* known = std::find_if(kDevices.begin(), kDevices.end(),
                                   [&](const ImageDevice& entry) { return entry.name == device; });
  if (known != kDevices.end()) extension = known->extension;
  const bool hasBackground = known != kDevices.end() && known->extension == kPng && !background.empty();
  outputFile += "." + extension;

  std::vector<std::string> tokens = HeadTokens(stdoutFile);
  tokens.push_back("-sDEVICE#" + device);
  const auto add = [&](bool wanted, const std::string& token) {
    if (wanted) tokens.push_back(token);
  };
  add(!resolution.empty(), "-r" + resolution);
  add(text != 0, "-dTextAlphaBits#" + std::to_string(text));
  add(graphics != 0, "-dGraphicsAlphaBits#" + std::to_string(graphics));
  add(hasBackground, "-dBackgroundColor#16#" + background);
  tokens.push_back(QuotedSwitch("FONTPATH", GetSpecialFolder(run, folders::kFonts).value_or("")));
  tokens.push_back(QuotedSwitch("OutputFile", outputFile));
  tokens.push_back('"' + inputFile + '"');
  WriteTextFile(run, parameterFile, ParameterLines(tokens));
  return true;
}

}  // namespace tessary
