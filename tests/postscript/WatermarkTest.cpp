#include <gtest/gtest.h>

#include "config/modConfig.h"
#include "postscript/modWatermark.h"
#include "tests/support/Golden.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

struct WatermarkTest : testing::Test {
  WatermarkTest() { settings.Set("watermarktext", "DRAFT"); }
  std::string Program() { return GetWatermarkPostScript(run, settings); }
  bool Has(const std::string& line) { return Program().find("\r\n" + line + "\r\n") != std::string::npos; }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Dictionary settings = *GetDefaultConfig();
};

TEST_F(WatermarkTest, WholeProgram) {
  settings.Set("watermarktext", "Entwurf (\xC3\xA9)");
  ExpectGolden("stamp.ps", Program());
}

TEST_F(WatermarkTest, SettingsBecomeLines) {
  struct Case {
    const char *key, *value, *line;
  };
  for (const Case& c :
       {Case{"watermarkfontsize", "12.5", "/fontsize 12.5 def"},
        {"watermarkfontsize", "1500", "/fontsize 1500 def"},
        {"watermarkfontsize", "abc", "/fontsize 45 def"},
        {"watermarkfontsize", "-3", "/fontsize 45 def"},
        {"watermarkoutlinewidth", "0", "show"},
        {"watermarkoutlinewidth", "", "show"},
        {"watermarkoutlinewidth", "-1", "/fontlinewidth 2 def"},
        {"watermarkoutlinewidth", ".5", "true charpath stroke"},
        {"watermarkcolor", "", "/fontcolor {.850980392156863 .850980392156863 .850980392156863} def"},
        {"watermarkcolor", "ff0080", "/fontcolor {1 0 .501960784313725} def"},
        {"watermarkcolor", "#zz0300", "/fontcolor {0 .0117647058823529 0} def"},
        {"watermarkhorizontaladjustment", "-4", "/relative_horizontal_margin 0 def"},
        {"watermarkverticaladjustment", "2.5%", "/relative_vertical_margin 2.5 def"},
        {"watermarkhorizontalposition", "left", "left_position center_vertical_position"},
        {"watermarkhorizontalposition", "middle", "center_horizontal_position center_vertical_position"},
        {"watermarkverticalposition", "Bottom", "center_horizontal_position bottom_position"},
        {"watermarkrotation", " C2C ", "/stampangle corner2corner def"},
        {"watermarkrotation", "-c2c", "/stampangle corner2corner -1 mul def"},
        {"watermarkrotation", "", "/stampangle corner2corner def"},
        {"watermarkrotation", "370", "/stampangle 10 def"},
        {"watermarkrotation", "-360", "/stampangle 0 def"},
        {"watermarkrotation", "-45.4", "/stampangle -45 def"},
        {"watermarkfontname", "", "/fontname (C:\\\\WINDOWS\\\\Fonts\\\\arial.ttf) def"},
        {"watermarkfontname", R"(..\../x (1).ttf)",
         "/fontname (C:\\\\WINDOWS\\\\Fonts\\\\x \\(1\\).ttf) def"}}) {
    const std::string before = settings.Text(c.key);
    settings.Set(c.key, c.value);
    EXPECT_TRUE(Has(c.line)) << c.key << "=" << c.value;
    settings.Set(c.key, before);
  }
}

TEST_F(WatermarkTest, LayerDecidesAboutTheHook) {
  const std::string onTop = Program();
  settings.Set("watermarklayer", "Bottom");
  const std::string below = Program();
  const std::size_t hook = onTop.find("<< /EndPage"), end = onTop.find("\r\n", hook) + 2;
  ASSERT_NE(hook, std::string::npos);
  EXPECT_EQ(below, onTop.substr(0, hook) + onTop.substr(end));
}

TEST_F(WatermarkTest, EnabledByTextAndSize) {
  struct Case {
    const char *text, *size;
    std::int32_t read;
    bool enabled;
  };
  for (const Case& c : {Case{"", "45", 45, false},
                        {" ", "45", 45, true},
                        {"x", "0", 0, false},
                        {"x", "-7", 0, false},
                        {"x", " 7 ", 7, true},
                        {"x", "1001", 1000, true},
                        {"x", "12.5", 45, true},
                        {"x", "abc", 45, true},
                        {"x", "", 45, true}}) {
    settings.Set("watermarktext", c.text);
    settings.Set("watermarkfontsize", c.size);
    EXPECT_EQ(GetWatermarkFontSize(settings), c.read) << c.size;
    EXPECT_EQ(IsStampEnabled(settings), c.enabled) << c.text << c.size;
  }
}

}  // namespace
}  // namespace tessary
