#include <gtest/gtest.h>

#include "ghostscript/modGhostScript.h"
#include "tests/support/Golden.h"
#include "tests/support/SimulatedMachine.h"

namespace tessary {
namespace {

struct ImageDevicesTest : testing::Test {
  /// Writes the file and gives its text.
  std::string Written() {
    outputFile = R"(C:\Temp\x_page_%08d)";
    const std::string parameters = R"(C:\Temp\x_device_param.gs)";
    WriteDeviceParameterFile(run, parameters, outputFile, settings, R"(C:\Temp\x_device_param.out)",
                             R"(C:\Temp\x_printer.pdf)", extension);
    return machine.files.Text(parameters);
  }
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
  Dictionary settings;
  std::string outputFile, extension;
};

TEST_F(ImageDevicesTest, ParameterFile) {
  EXPECT_FALSE(IsDeviceOutput(settings));
  settings.Set("device", " ");
  EXPECT_FALSE(IsDeviceOutput(settings));
  settings.Set("device", "PNGalpha");
  settings.Set("res", "150");
  settings.Set("backgroundcolor", " FFCC00 ");
  EXPECT_TRUE(IsDeviceOutput(settings));
  ExpectGolden("device_param.gs", Written());
  EXPECT_EQ(outputFile + " " + extension, R"(C:\Temp\x_page_%08d.png png)");
}

TEST_F(ImageDevicesTest, DevicesAndTheirExtensions) {
  settings.Set("backgroundcolor", "FFCC00");
  extension = "as before";
  for (const auto& [device, expected] : {std::pair{"nosuch", "as before"},
                                         {"TIFFsep", "tif"},
                                         {"jpeg", "jpg"},
                                         {" jpeg", "jpg"},
                                         {"png16m", "png"}}) {
    settings.Set("device", device);
    const std::string text = Written();
    EXPECT_EQ(extension, expected) << device;
    EXPECT_EQ(text.find("-dBackgroundColor") != std::string::npos, extension == "png") << device;
  }
  settings.Set("device", "nosuch");
  extension.clear();
  EXPECT_NE(Written().find("x_page_%08d.\"\r\n"), std::string::npos);
}

TEST_F(ImageDevicesTest, ResolutionAndAlphaBits) {
  struct Case {
    const char *resx, *resy, *res, *text, *graphics, *lines;
  };
  for (const Case& c : {Case{"200", "", "0", "", "", "-r200x200 -dTextAlphaBits#4 -dGraphicsAlphaBits#4"},
                        {"200", "0", "300", " ", "2", "-r200x300 -dTextAlphaBits#4 -dGraphicsAlphaBits#2"},
                        {"0", "100", "300", "0", "4", "-r300x100 -dGraphicsAlphaBits#4"},
                        {"", "100", "", "1", "x", "-r100x100 -dTextAlphaBits#1"},
                        {"x", "", "300", "0", "0", "-r300"},
                        {"", "", "", "0", "0", ""}}) {
    settings.Set("device", "jpeg");
    settings.Set("resx", c.resx);
    settings.Set("resy", c.resy);
    settings.Set("res", c.res);
    settings.Set("textalphabits", c.text);
    settings.Set("graphicsalphabits", c.graphics);
    const std::string text = Written(), before = "-sDEVICE#jpeg\r\n", after = "-sFONTPATH";
    const std::size_t start = text.find(before) + before.size();
    std::string lines = text.substr(start, text.find(after) - start);
    for (std::size_t end; (end = lines.find("\r\n")) != std::string::npos;)
      lines.replace(end, 2, end + 2 < lines.size() ? " " : "");
    EXPECT_EQ(lines, c.lines);
  }
}

}  // namespace
}  // namespace tessary
