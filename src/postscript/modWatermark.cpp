#include "postscript/modWatermark.h"

#include <algorithm>
#include <cmath>

#include "config/modConfig.h"
#include "postscript/PostScriptHeader.h"
#include "postscript/StampProgram.h"
#include "system/Conversions.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

constexpr std::int32_t kLargestSize = 1000;

/// The setting, or the default where it is empty.
std::string TextOf(Dictionary& settings, const std::string& key) {
  const std::string text = settings.Text(key);
  return text.empty() ? GetDefaultSetting(key) : text;
}

/// The setting's number, or the default where it is below 0.
double NumberOf(Dictionary& settings, const std::string& key) {
  const double number = LeadingNumber(settings.Text(key));
  return number < 0 ? LeadingNumber(GetDefaultSetting(key)) : number;
}

double SizeOf(Dictionary& settings) {
  const double size = LeadingNumber(settings.Text("watermarkfontsize"));
  return size <= 0 ? LeadingNumber(GetDefaultSetting("watermarkfontsize")) : size;
}

std::string ColorOf(Dictionary& settings) {
  std::int32_t red = 0, green = 0, blue = 0;
  HexToRGB(TextOf(settings, "watermarkcolor"), red, green, blue);
  return FormatNumber(red / 255.0) + ' ' + FormatNumber(green / 255.0) + ' ' + FormatNumber(blue / 255.0);
}

std::string HorizontalPosition(Dictionary& settings) {
  const std::string position = ToLower(TextOf(settings, "watermarkhorizontalposition"));
  return position == "left" || position == "right" ? position + "_position" : "center_horizontal_position";
}

std::string VerticalPosition(Dictionary& settings) {
  const std::string position = ToLower(TextOf(settings, "watermarkverticalposition"));
  return position == "top" || position == "bottom" ? position + "_position" : "center_vertical_position";
}

}  // namespace

bool IsStampEnabled(Dictionary& settings) {
  return !settings.Text("watermarktext").empty() && GetWatermarkFontSize(settings) > 0;
}

std::int32_t GetWatermarkFontSize(Dictionary& settings) {
  const std::string text = TrimBlanks(settings.Text("watermarkfontsize"));
  std::int32_t size = SafeLong(text);
  if (text != std::to_string(size)) size = SafeLong(GetDefaultSetting("watermarkfontsize"));
  return std::clamp(size, 0, kLargestSize);
}

std::string GetWatermarkRotation(Dictionary& settings) {
  std::string angle = ToLower(TrimBlanks(settings.Text("watermarkrotation")));
  if (angle.empty()) angle = ToLower(GetDefaultSetting("watermarkrotation"));
  if (angle == "c2c") return "corner2corner";
  if (angle == "-c2c") return "corner2corner -1 mul";
  return FormatNumber(std::fmod(RoundHalfEven(LeadingNumber(angle)), 360));
}

std::string GetWatermarkFontFile(Run& run, Dictionary& settings) {
  const std::string name = TextOf(settings, "watermarkfontname");
  return run.host.shell.FontFile(name.substr(name.find_last_of("/\\") + 1));
}

std::string GetWatermarkShelter(Dictionary& settings) {
  return MakeStampShelter(GetWatermarkLayer(settings) == "top");
}

std::string GetWatermarkPostScript(Run& run, Dictionary& settings) {
  const double outline = NumberOf(settings, "watermarkoutlinewidth");
  StampValues values;
  values.text = EscapePostScriptString(settings.Text("watermarktext"));
  values.font = EscapePostScriptBytes(EncodeText(run.host.codePage, GetWatermarkFontFile(run, settings)));
  values.size = FormatNumber(SizeOf(settings));
  values.color = ColorOf(settings);
  values.outline = FormatNumber(outline);
  values.horizontalMargin = FormatNumber(NumberOf(settings, "watermarkhorizontaladjustment"));
  values.verticalMargin = FormatNumber(NumberOf(settings, "watermarkverticaladjustment"));
  values.angle = GetWatermarkRotation(settings);
  values.position = HorizontalPosition(settings) + ' ' + VerticalPosition(settings);
  values.isOutlined = outline > 0;
  values.isOnTop = GetWatermarkLayer(settings) == "top";
  return MakeStampProgram(values);
}

}  // namespace tessary
