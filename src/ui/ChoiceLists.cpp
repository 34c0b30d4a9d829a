#include "ui/ChoiceLists.h"

#include <initializer_list>
#include <string>
#include <utility>

#include "ghostscript/modGhostScript.h"
#include "system/Conversions.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

using Choices = std::initializer_list<std::pair<const char*, const char*>>;  // stored value, tagged caption

Dictionary Translated(Run& run, Choices choices) {
  Dictionary list;
  for (const auto& [value, caption] : choices) list.Add(value, Translate(run, caption));
  return list;
}

void FillList(Form& form, Control& control, const Dictionary& choices, bool select = true) {
  control.list.clear();
  control.keys.clear();
  for (const auto& [value, caption] : choices) {
    control.keys.push_back(value);
    control.list.push_back(SafeString(caption));
  }
  control.listIndex = -1;
  if (select && !control.list.empty()) form.SetListIndex(control, 0);
}

struct ListFiller {
  const char* control;
  void (*fill)(Run&, Form&, Control&);
};

constexpr ListFiller kFillers[] = {
    {"cbAppendPosition", FillAppendPositionList},
    {"cbWatermarkRotation", FillRotationList},
    {"cbKeyLength", FillKeyLengthList},
    {"cbPermissionsPrint", FillPrintPermissionList},
    {"cbQuality", FillQualityList},
    {"cbZoom", FillZoomList},
    {"cbWatermarkFontName", FillFontList},
    {"cbWatermarkVerticalPosition", FillVerticalPositionList},
    {"cbWatermarkHorizontalPosition", FillHorizontalPositionList},
    {"cbWatermarkLayer", FillLayerList},
};

}  // namespace

Dictionary GetQualities(Run& run) {
  return Translated(run, {{"default", "[L110]Default"},
                          {"screen", "[L111]Screen"},
                          {"ebook", "[L112]Ebook"},
                          {"printer", "[L113]Printer"},
                          {"prepress", "[L114]Prepress"}});
}

Dictionary GetZoomLevels(Run& run) {
  return Translated(run, {{"fitall", "[L152]Fit all"}, {"fitwidth", "[L153]Fit width"}});
}

Dictionary GetVerticalPositions(Run& run) {
  return Translated(run, {{"top", "[L160]Top"}, {"center", "[L141]Center"}, {"bottom", "[L159]Bottom"}});
}

Dictionary GetHorizontalPositions(Run& run) {
  return Translated(run, {{"left", "[L142]Left"}, {"center", "[L141]Center"}, {"right", "[L143]Right"}});
}

Dictionary GetWatermarkLayers(Run& run) {
  return Translated(run,
                    {{"stamp", "[L149]Stamp (over print)"}, {"watermark", "[L150]Watermark (under print)"}});
}

void FillQualityList(Run& run, Form& form, Control& control) { FillList(form, control, GetQualities(run)); }
void FillZoomList(Run& run, Form& form, Control& control) { FillList(form, control, GetZoomLevels(run)); }

void FillVerticalPositionList(Run& run, Form& form, Control& control) {
  FillList(form, control, GetVerticalPositions(run));
}

void FillHorizontalPositionList(Run& run, Form& form, Control& control) {
  FillList(form, control, GetHorizontalPositions(run));
}

void FillLayerList(Run& run, Form& form, Control& control) {
  FillList(form, control, GetWatermarkLayers(run));
  control.keys = {"top", "bottom"};
}

void FillKeyLengthList(Run& run, Form& form, Control& control) {
  FillList(form, control, Translated(run, {{"40", "40"}, {"128", "128"}}));
}

void FillPrintPermissionList(Run& run, Form& form, Control& control) {
  FillList(
      form, control,
      Translated(
          run, {{"none", "[L115]not allowed"}, {"low", "[L116]low quality"}, {"high", "[L117]high quality"}}));
}

void FillAppendPositionList(Run& run, Form& form, Control& control) {
  FillList(form, control, Translated(run, {{"bottom", "[L120]Bottom"}, {"top", "[L121]Top"}}));
}

void FillFontList(Run& run, Form& form, Control& control) { FillList(form, control, GetInstalledFonts(run)); }

void FillRotationList(Run& run, Form& form, Control& control) {
  FillList(form, control,
           Translated(run, {{"c2c", "[L118]Lower left corner to Upper right corner"},
                            {"-c2c", "[L119]Upper left corner to Lower right corner"}}),
           false);
}

void FillLists(Run& run, Form& form) {
  for (const ListFiller& filler : kFillers)
    if (Control* control = form.Find(filler.control)) filler.fill(run, form, *control);
}

}  // namespace tessary
