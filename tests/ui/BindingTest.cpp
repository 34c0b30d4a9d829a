// What the controls of the dialogs make of settings, and the settings of controls.
#include <gtest/gtest.h>

#include "tests/support/SimulatedMachine.h"
#include "ui/Binding.h"
#include "ui/ChoiceLists.h"
#include "ui/OptionsPages.h"
#include "ui/Validators.h"
#include "ui/WatermarkPreview.h"
#include "ui/modSharedGUI.h"

namespace tessary {
namespace {

/// A form with the controls of both dialogs.
struct BindingTest : testing::Test {
  BindingTest() {
    machine.shell.fonts = {{"Verdana (TrueType)", "verdana.ttf"}, {"Arial (TrueType)", "ARIAL.TTF"}};
    LayOutOptions(form);
    form.root.Add(ControlKind::CheckBox, "chkShowPDF");
    FillLists(run, form);
  }
  /// What becomes of a setting that is shown in a dialog and saved.
  std::string Through(Dialog dialog, const std::string& key, const std::string& value,
                      const std::string& outKey) {
    Dictionary settings, saved;
    settings.Set(key, value);
    SettingsToControls(form, dialog, settings);
    ControlsToSettings(run, form, dialog, saved);
    return saved.Text(outKey);
  }
  std::string Saved(const std::string& key) {
    Dictionary saved;
    ControlsToSettings(run, form, Dialog::Options, saved);
    return saved.Text(key);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Form form;
};

TEST_F(BindingTest, SettingsThroughTheDialogs) {
  constexpr auto C = Dialog::Create, O = Dialog::Options;
  struct Case {
    Dialog dialog;
    const char *key, *value, *saved, *outKey = nullptr;
  };
  for (const Case& c : {Case{O, "output", " <desktop>\\<title>.pdf ", "<desktop>\\<title>.pdf"},
                        {C, "target", " Printer", "printer"},
                        {C, "target", "vellum", "default"},
                        {O, "confirmoverwrite", "0", "yes"},
                        {O, "confirmoverwrite", "No ", "no"},
                        {C, "openfolder", "", "no"},
                        {C, "openfolder", "YES", "yes"},
                        {O, "showpdf", "Ask", "ask"},
                        {O, "showpdf", "No", "no"},
                        {C, "showpdf", "Ask", "yes"},
                        {C, "showpdf", "no", "no"},
                        {O, "rememberlastfilename", "", "yes"},
                        {O, "rememberlastfoldername", "no", "no"},
                        {O, "showsaveas", "sometimes", "nofile"},
                        {O, "showsaveas", "NEVER", "never"},
                        {O, "showsettings", "never", "never"},
                        {O, "showsettings", "", "always"},
                        {O, "suppresserrors", "1", "no"},
                        {O, "usedefaulttitle", "yes", "yes"},
                        {C, "title", "  a  b ", "a  b"},
                        {C, "watermarkfontname", "VERDANA.ttf", "verdana.ttf"},
                        {C, "watermarkfontname", "verdana", "verdana.ttf"},
                        {C, "watermarkfontname", "nosuch.ttf", "ARIAL.TTF"},
                        {C, "watermarkrotation", "", "c2c"},
                        {C, "watermarkrotation", "-C2C", "-c2c"},
                        {C, "watermarkrotation", "45.50 degrees", "45.5"},
                        {C, "watermarkrotation", "&h10", "16"},
                        {C, "watermarkcolor", " #abcdef", "#ABCDEF"},
                        {C, "watermarkoutlinewidth", "-1", ""},
                        {C, "watermarkoutlinewidth", "", "0"},
                        {C, "watermarklayer", "watermark", "top"},
                        {C, "watermarklayer", "Bottom", "bottom"},
                        {C, "watermarkverticalposition", "", "top"},
                        {C, "watermarkhorizontalposition", "center", "center"},
                        {C, "appendposition", "TOP", "top", "mergeposition"},
                        {C, "mergeposition", "top", "bottom"},
                        {C, "appendposition", "top", "", "appendposition"},
                        {C, "keylength", "256", "128"},
                        {C, "keylength", "40", "40"},
                        {C, "permissions", "", ""},
                        {O, "permissions", "none", ""},
                        {C, "permissions", "61632", "61632"},
                        {C, "permissions", "61636", "61636"},
                        {C, "permissions", "63700", "63700"},
                        {C, "permissions", "4294967295", "63700"},
                        {C, "permissions", "-1e300", "63700"},
                        {C, "zoom", "FitWidth", "fitwidth"},
                        {C, "zoom", "133.5%", "133.5"},
                        {C, "zoom", "-5", "fitall"}})
    EXPECT_EQ(Through(c.dialog, c.key, c.value, c.outKey ? c.outKey : c.key), c.saved)
        << c.key << "=" << c.value;
  EXPECT_EQ(form["cbPermissionsPrint"].listIndex, 2) << "no permissions show everything allowed";
  EXPECT_TRUE(form["chkPermissionsCopy"].checked);
}

TEST_F(BindingTest, TypedTexts) {
  struct Case {
    const char *control, *text, *key, *saved;
  };
  for (const Case& c :
       {Case{"txtWatermarkText", " a ", "watermarktext", " a "},
        {"txtWatermarkText", "   ", "watermarktext", ""},
        {"txtWatermarkFontSize", "", "watermarkfontsize", ""},
        {"txtWatermarkFontSize", "12.50pt", "watermarkfontsize", "12.5"},
        {"txtWatermarkVerticalAdjustment", "12.5", "watermarkverticaladjustment", "12.5"},
        {"txtWatermarkVerticalAdjustment", "12.50", "watermarkverticaladjustment", ""},
        {"txtWatermarkHorizontalAdjustment", "5x", "watermarkhorizontaladjustment", ""},
        {"cbWatermarkRotation", "Upper left corner to Lower right corner", "watermarkrotation", "-c2c"},
        {"cbWatermarkRotation", " ", "watermarkrotation", "c2c"},
        {"cbZoom", "Fit width", "zoom", ""},
        {"cbZoom", "90", "zoom", "90"},
        {"txtPDFFileName", "D:/a.pdf", "output", "D:/a.pdf"}}) {
    form.SetText(form[c.control], c.text);
    EXPECT_EQ(Saved(c.key), c.saved) << c.control << "=" << c.text;
  }
  form["cbQuality"].listIndex = form["cbKeyLength"].listIndex = -1;
  EXPECT_EQ(Saved("target"), "");
  EXPECT_EQ(Saved("keylength"), "128");

  machine.host().paths = PathStyle::Posix();
  form.SetText(form["txtSuperimposeFileName"], R"(\home\a.pdf<1><vbs:1\2>)");
  EXPECT_EQ(Saved("superimpose"), R"(/home/a.pdf<1><vbs:1\2>)") << "a backslash is an operator in a macro";
}

TEST_F(BindingTest, ListsThatAreNotFilled) {
  Form empty;
  LayOutOptions(empty);
  Dictionary settings, saved;
  for (const auto& [key, value] : {std::pair{"target", "screen"}, {"watermarkrotation", "5"}, {"zoom", "50"}})
    settings.Set(key, value);
  SettingsToControls(empty, Dialog::Create, settings);
  ControlsToSettings(run, empty, Dialog::Create, saved);
  EXPECT_EQ(empty["cbQuality"].listIndex, -1);
  EXPECT_EQ(empty["cbZoom"].text, "");
  EXPECT_EQ(saved.Text("watermarkrotation"), "c2c");
  EXPECT_EQ(saved.Text("watermarkfontname"), "");

  machine.shell.fonts.clear();
  FillLists(run, form);
  EXPECT_EQ(Through(Dialog::Create, "watermarkfontname", "arial.ttf", "watermarkfontname"), "");
}

TEST_F(BindingTest, FieldsAreCleanedWhenTheUserLeaves) {
  AttachValidators(form);
  struct Case {
    const char *control, *text, *left;
  };
  for (const Case& c : {Case{"txtWatermarkFontSize", " 45 ", "45"},
                        {"txtWatermarkFontSize", "1000", "1000"},
                        {"txtWatermarkFontSize", "1001", ""},
                        {"txtWatermarkFontSize", "-1", ""},
                        {"txtWatermarkFontSize", "4.5", ""},
                        {"txtWatermarkFontSize", "1e300", ""},
                        {"txtWatermarkColor", "abc", "#ABC000"},
                        {"txtWatermarkColor", " #00ff00x", "#00FF00"},
                        {"txtWatermarkColor", "12XZ00", "#112"},
                        {"txtWatermarkColor", "grün", "#1"},
                        {"txtWatermarkColor", "  ", ""},
                        {"txtWatermarkOutlineWidth", "-2.50", "2.5"},
                        {"txtWatermarkOutlineWidth", "wide", ""},
                        {"txtWatermarkVerticalAdjustment", "100", "100"},
                        {"txtWatermarkVerticalAdjustment", "100.5", ""},
                        {"txtWatermarkHorizontalAdjustment", "-0.50", "-0.5"},
                        {"txtWatermarkHorizontalAdjustment", "0", ""},
                        {"cbWatermarkRotation", "45.9", "45"},
                        {"cbWatermarkRotation", "361", "360"},
                        {"cbWatermarkRotation", "-45", "-45"},
                        {"cbZoom", "75.50%", "75.5"},
                        {"cbZoom", "none", "Fit all"}}) {
    form.SetFocus(form[c.control]);
    form.SetText(form[c.control], c.text);
    form.SetFocus(form["cmdOK"]);
    EXPECT_EQ(form[c.control].text, c.left) << c.control << "=" << c.text;
  }
  form.SetListIndex(form["cbWatermarkRotation"], 1);
  form.SetFocus(form["cbWatermarkRotation"]);
  form.SetFocus(form["cmdOK"]);
  EXPECT_EQ(form["cbWatermarkRotation"].text, "Upper left corner to Lower right corner");
}

TEST(Colors, Texts) {
  for (const auto& [text, color] :
       {std::pair{"#010203", 0x030201}, {"ff", 255}, {"#112", 0x11}, {"-1zz0g", 0}, {"", 0}})
    EXPECT_EQ(HexToColor(text), color) << text;
  EXPECT_EQ(ColorToHex(0x030B01), "#010B03");
}

TEST_F(BindingTest, PreviewOfTheWatermark) {
  AttachWatermarkPreview(form);
  Control& stamp = form["shapeWatermarkPreviewColor"];
  form["pbWatermarkPaper"].box = {0, 0, 100, 200};
  stamp.box = {0, 0, 40, 20};
  struct Case {
    std::int32_t vertical, horizontal;
    const char *down, *right;
    std::int32_t top, left;
  };
  for (const Case& c : {Case{0, 0, "10", "10", 20, 10},
                        {1, 1, "10", "-10", 110, 20},
                        {2, 2, "10", "10", 160, 50},
                        {2, 2, "101", "x", 180, 60}}) {
    form.SetListIndex(form["cbWatermarkVerticalPosition"], c.vertical);
    form.SetListIndex(form["cbWatermarkHorizontalPosition"], c.horizontal);
    form.SetText(form["txtWatermarkVerticalAdjustment"], c.down);
    form.SetText(form["txtWatermarkHorizontalAdjustment"], c.right);
    EXPECT_EQ(stamp.box.top, c.top) << c.vertical;
    EXPECT_EQ(stamp.box.left, c.left) << c.horizontal;
  }
  form.SetText(form["txtWatermarkColor"], "#FF0001");
  EXPECT_EQ(stamp.fillColor, 0x0100FF);
  form.SetText(form["txtWatermarkColor"], "");
  EXPECT_EQ(stamp.fillColor, 0xD9D9D9) << "the default setting";
  EXPECT_EQ(form["shapeWatermarkColor"].fillColor, 0xD9D9D9);
}

}  // namespace
}  // namespace tessary
