#include "host/posix/cups/PrinterDescription.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <langinfo.h>
#include <locale.h>

namespace tessary {

namespace {

struct PageSize {
  const char* name;
  const char* label;
  int width, height;  // points
};

constexpr PageSize kPageSizes[] = {
    {"A4", "A4", 595, 842},
    {"A3", "A3", 842, 1191},
    {"A5", "A5", 420, 595},
    {"A6", "A6", 298, 420},
    {"Letter", "US Letter", 612, 792},
    {"Legal", "US Legal", 612, 1008},
    {"Tabloid", "US Tabloid", 792, 1224},
    {"Executive", "US Executive", 522, 756},
    {"Statement", "US Statement", 396, 612},
    {"FanFoldGermanLegal", "Foolscap", 612, 936},
    {"ISOB5", "B5", 499, 709},
    {"B4", "JIS B4", 729, 1032},
    {"B5", "JIS B5", 516, 729},
    {"A2", "A2", 1191, 1684},
    {"A1", "A1", 1684, 2384},
    {"A0", "A0", 2384, 3370},
    {"ARCHC", "ARCH C", 1296, 1728},
    {"ARCHD", "ARCH D", 1728, 2592},
    {"ARCHE", "ARCH E", 2592, 3456},
    {"Env10", "Envelope #10", 297, 684},
    {"EnvDL", "Envelope DL", 312, 624},
    {"EnvC5", "Envelope C5", 459, 649},
    {"EnvC6", "Envelope C6", 323, 459},
};

constexpr const char* kFonts[] = {
    "Courier",          "Courier-Bold",          "Courier-BoldOblique", "Courier-Oblique", "Helvetica",
    "Helvetica-Bold",   "Helvetica-BoldOblique", "Helvetica-Oblique",   "Symbol",          "Times-Bold",
    "Times-BoldItalic", "Times-Italic",          "Times-Roman",
};

// The cost of the PDF line keeps PostScript from being turned into PDF on its way: that costs nothing by
// itself.
constexpr const char* kHead =
    "*FormatVersion: \"4.3\"\n"
    "*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n"
    "*PCFileName: \"TESSARY.PPD\"\n"
    "*PSVersion: \"(3010.000) 0\"\n"
    "*LanguageLevel: \"3\"\n"
    "*ColorDevice: True\n"
    "*DefaultColorSpace: RGB\n"
    "*FileSystem: False\n"
    "*Throughput: \"60\"\n"
    "*LandscapeOrientation: Plus90\n"
    "*TTRasterizer: Type42\n"
    "*DefaultResolution: 600dpi\n"
    "*cupsVersion: 2.4\n"
    "*cupsSNMPSupplies: False\n"
    "*cupsLanguages: \"en\"\n"
    "*cupsFilter: \"application/pdf 5 tessaryframe\"\n"
    "*cupsFilter: \"application/vnd.cups-pdf 10 tessaryframe\"\n"
    "*cupsFilter: \"application/postscript 0 tessaryframe\"\n"
    "*cupsFilter: \"application/vnd.cups-raw 0 tessaryframe\"\n";

// Both ends in points: a quarter of an inch, and the largest page that a PDF can have.
constexpr const char* kAnyOtherSize =
    "*HWMargins: 0 0 0 0\n"
    "*VariablePaperSize: True\n"
    "*MaxMediaWidth: \"14400\"\n"
    "*MaxMediaHeight: \"14400\"\n"
    "*NonUIOrderDependency: 10 AnySetup *CustomPageSize\n"
    "*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]/ImagingBBox null>>setpagedevice\"\n"
    "*ParamCustomPageSize Width: 1 points 18 14400\n"
    "*ParamCustomPageSize Height: 2 points 18 14400\n"
    "*ParamCustomPageSize WidthOffset: 3 points 0 0\n"
    "*ParamCustomPageSize HeightOffset: 4 points 0 0\n"
    "*ParamCustomPageSize Orientation: 5 int 0 3\n";

std::string Area(const PageSize& size) {
  return std::to_string(size.width) + " " + std::to_string(size.height);
}

/// The option `keyword`, which chooses among the page sizes.
std::string Choice(const std::string& keyword, const std::string& defaultSize) {
  std::string text = "*OpenUI *" + keyword + "/Page Size: PickOne\n*OrderDependency: 10 AnySetup *" + keyword +
                     "\n*Default" + keyword + ": " + defaultSize + "\n";
  for (const PageSize& size : kPageSizes)
    text += "*" + keyword + " " + size.name + "/" + size.label + ": \"<</PageSize[" + Area(size) +
            "]/ImagingBBox null>>setpagedevice\"\n";
  return text + "*CloseUI: *" + keyword + "\n";
}

/// One line for each page size; `origin` stands before its width and height.
std::string Table(const std::string& keyword, const std::string& origin, const std::string& defaultSize) {
  std::string text = "*Default" + keyword + ": " + defaultSize + "\n";
  for (const PageSize& size : kPageSizes)
    text += "*" + keyword + " " + size.name + "/" + size.label + ": \"" + origin + Area(size) + "\"\n";
  return text;
}

}  // namespace

std::string PrinterDescription(const std::string& product, const std::string& defaultSize) {
  const std::string maker = product.substr(0, product.find(' '));
  std::string text = "*PPD-Adobe: \"4.3\"\n*Manufacturer: \"" + maker + "\"\n*Product: \"(" + product +
                     ")\"\n*ModelName: \"" + product + "\"\n*ShortNickName: \"" + product +
                     "\"\n*NickName: \"" + product + "\"\n";
  text += kHead;
  text += Choice("PageSize", defaultSize) + Choice("PageRegion", defaultSize);
  text += Table("ImageableArea", "0 0 ", defaultSize) + Table("PaperDimension", "", defaultSize);
  text += kAnyOtherSize;
  text += "*DefaultFont: Courier\n";
  for (const char* font : kFonts)
    text += std::string("*Font ") + font +
            (std::string(font) == "Symbol" ? ": Special \"(001.005)\" Special ROM\n"
                                           : ": Standard \"(001.005)\" Standard ROM\n");
  return text;
}

bool IsPageSize(const std::string& name) {
  return std::any_of(std::begin(kPageSizes), std::end(kPageSizes),
                     [&](const PageSize& size) { return name == size.name; });
}

std::string UsualPageSize() {
  constexpr std::intptr_t kLetterHeight = 279;  // millimetres
  const locale_t locale = newlocale(LC_PAPER_MASK, "", nullptr);
  if (locale == nullptr) return "A4";
  // The C library gives this number in the place of a pointer.
  const auto height = reinterpret_cast<std::intptr_t>(nl_langinfo_l(_NL_PAPER_HEIGHT, locale)) & 0xFFFF;
  freelocale(locale);
  return height == kLetterHeight ? "Letter" : "A4";
}

}  // namespace tessary
