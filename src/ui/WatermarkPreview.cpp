#include "ui/WatermarkPreview.h"

#include <cmath>

#include "config/modConfig.h"
#include "system/Conversions.h"
#include "ui/Validators.h"
#include "ui/modSharedGUI.h"

namespace tessary {

namespace {

/// Where the stamp begins along one side of the paper. A positive adjustment moves it into the page from the
/// edge that it stands at.
std::int32_t StampPosition(std::int32_t position, std::int32_t paper, std::int32_t stamp,
                           const std::string& adjustment) {
  const double room = paper - stamp;
  const double shift = paper * LeadingNumber(NormalizeAdjustment(adjustment)) / 100;
  const double start = position == 0 ? shift : position == 1 ? room / 2 + shift : room - shift;
  return static_cast<std::int32_t>(std::lround(start));
}

}  // namespace

std::string GetPreviewColor(Form& form) {
  const std::string& text = form["txtWatermarkColor"].text;
  return NormalizeColor(text.empty() ? GetDefaultSetting("watermarkcolor") : text);
}

void DrawWatermarkPreview(Form& form) {
  const Box& paper = form["pbWatermarkPaper"].box;
  Control& stamp = form["shapeWatermarkPreviewColor"];
  stamp.fillColor = form["shapeWatermarkColor"].fillColor = HexToColor(GetPreviewColor(form));
  stamp.box.top = StampPosition(form["cbWatermarkVerticalPosition"].listIndex, paper.height, stamp.box.height,
                                form["txtWatermarkVerticalAdjustment"].text);
  stamp.box.left = StampPosition(form["cbWatermarkHorizontalPosition"].listIndex, paper.width, stamp.box.width,
                                 form["txtWatermarkHorizontalAdjustment"].text);
}

void AttachWatermarkPreview(Form& form) {
  const auto draw = [&form] { DrawWatermarkPreview(form); };
  for (const char* list : {"cbWatermarkVerticalPosition", "cbWatermarkHorizontalPosition"})
    form[list].click = draw;
  for (const char* field :
       {"txtWatermarkColor", "txtWatermarkVerticalAdjustment", "txtWatermarkHorizontalAdjustment"})
    form[field].change = draw;
}

}  // namespace tessary
