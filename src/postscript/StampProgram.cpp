#include "postscript/StampProgram.h"

#include <array>
#include <span>
#include <string_view>

namespace tessary {

namespace {

/// The encoding of the PostScript language for Latin 1, for interpreters that lack it, in the order of the
/// codes.
constexpr std::string_view kLatin1[] = {
    "/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef",
    "/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef",
    "/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef",
    "/.notdef/.notdef/.notdef/.notdef/.notdef/space/exclam/quotedbl/numbersign",
    "/dollar/percent/ampersand/quoteright/parenleft/parenright/asterisk/plus/comma",
    "/minus/period/slash/zero/one/two/three/four/five",
    "/six/seven/eight/nine/colon/semicolon/less/equal/greater",
    "/question/at/A/B/C/D/E/F/G",
    "/H/I/J/K/L/M/N/O/P",
    "/Q/R/S/T/U/V/W/X/Y",
    "/Z/bracketleft/backslash/bracketright/asciicircum/underscore/quoteleft/a/b",
    "/c/d/e/f/g/h/i/j/k",
    "/l/m/n/o/p/q/r/s/t",
    "/u/v/w/x/y/z/braceleft/bar/braceright",
    "/asciitilde/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef",
    "/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef/.notdef",
    "/dotlessi/grave/acute/circumflex/tilde/macron/breve/dotaccent/dieresis",
    "/.notdef/ring/cedilla/.notdef/hungarumlaut/ogonek/caron/space/exclamdown",
    "/cent/sterling/currency/yen/brokenbar/section/dieresis/copyright/ordfeminine",
    "/guillemotleft/logicalnot/hyphen/registered/macron/degree/plusminus/twosuperior/threesuperior",
    "/acute/mu/paragraph/periodcentered/cedilla/onesuperior/ordmasculine/guillemotright/onequarter",
    "/onehalf/threequarters/questiondown/Agrave/Aacute/Acircumflex/Atilde/Adieresis/Aring",
    "/AE/Ccedilla/Egrave/Eacute/Ecircumflex/Edieresis/Igrave/Iacute/Icircumflex",
    "/Idieresis/Eth/Ntilde/Ograve/Oacute/Ocircumflex/Otilde/Odieresis/multiply",
    "/Oslash/Ugrave/Uacute/Ucircumflex/Udieresis/Yacute/Thorn/germandbls/agrave",
    "/aacute/acircumflex/atilde/adieresis/aring/ae/ccedilla/egrave/eacute",
    "/ecircumflex/edieresis/igrave/iacute/icircumflex/idieresis/eth/ntilde/ograve",
    "/oacute/ocircumflex/otilde/odieresis/divide/oslash/ugrave/uacute/ucircumflex",
    "/udieresis/yacute/thorn/ydieresis",
};

constexpr std::string_view kMeasuring[] = {
    "] def",
    "/ISOEncode {",
    "dup length dict begin",
    "{1 index /FID ne {def} {pop pop} ifelse} forall",
    "/Encoding ISOLatin1Encoding def",
    "currentdict",
    "end",
    "/Temporary exch definefont",
    "} bind def",
    " /stamp {",
    "gsave",
    " initgraphics",
    " clippath ",
    " pathbbox",
    "   /ury exch def ",
    "   /urx exch def",
    "   /lly exch def ",
    "   /llx exch def",
    " /h ury lly sub def",
    " /w urx llx sub def",
    " /len h dup mul w dup mul add sqrt def",
    " newpath",
    " fontname findfont fontsize scalefont ISOEncode setfont",
    " fontlinewidth setlinewidth",
    " fontcolor setrgbcolor ",
    "",
    "/corner2corner h w atan def",
};

constexpr std::string_view kPlacing[] = {
    "/stampwidth stampstring stringwidth pop def",
    "",
    "% Trigonometry",
    "/boxwidth stampstring stringwidth pop def",
    "/boxheight fontsize 0.7327 mul def",
    "",
    "%",
    "% Calculate how much to displace the stamp to place it in the lower left corner",
    "%",
    "/width_gone_x % how much of the width has gone",
    "  stampangle cos boxwidth mul -1 mul",
    "def",
    "/height_gone_x % how much of the height has gone",
    "  stampangle 90 add cos boxheight mul -1 mul",
    "def",
    "/width_gone_y % how much of the width has gone",
    "  stampangle sin boxwidth mul -1 mul",
    "def",
    "/height_gone_y % how much of the height has gone",
    "  stampangle 90 add sin boxheight mul -1 mul",
    "def",
    "/deltax ",
    "  width_gone_x 0 ge {width_gone_x} {0} ifelse",
    "  height_gone_x 0 ge {height_gone_x} {0} ifelse",
    "  add",
    "def",
    "/deltay",
    "  width_gone_y 0 ge {width_gone_y} {0} ifelse",
    "  height_gone_y 0 ge {height_gone_y} {0} ifelse",
    "  add",
    "def",
    "",
    "% ",
    "% Calculate the size of the rectangle containing the stamp",
    "%",
    "/superrectangle_width",
    "  stampangle cos boxwidth mul abs",
    "  stampangle 90 add cos boxheight mul abs",
    "  add",
    "def",
    "/superrectangle_height",
    "  stampangle sin boxwidth mul abs",
    "  stampangle 90 add sin boxheight mul abs",
    "  add",
    "def",
    "",
    "%",
    "% Calculate margins",
    "%",
    "/horizontal_margin w 100 div relative_horizontal_margin mul def",
    "/vertical_margin h 100 div relative_vertical_margin mul def",
    "",
    "%",
    "% Calculate positions",
    "%",
    "",
    "% Calculate top position",
    "/top_position h superrectangle_height sub deltay add vertical_margin sub def",
    "",
    "% Calculate right position",
    "/right_position w superrectangle_width sub deltax add horizontal_margin sub def",
    "",
    "% Calculate bottom position",
    "/bottom_position deltay vertical_margin add def",
    "",
    "% Calculate left posotion",
    "/left_position deltax horizontal_margin add def",
    "",
    "% Calculate center horizontal position",
    "/center_horizontal_position w superrectangle_width sub 2 div deltax add horizontal_margin add def",
    "",
    "% Calculate center vertical position",
    "/center_vertical_position h superrectangle_height sub 2 div deltay add vertical_margin sub def",
    "",
    "%center_horizontal_position center_vertical_position ",
};

constexpr std::string_view kOnTop =
    "<< /EndPage [ /stamp load /exec load currentpagedevice /EndPage get /exec load ] cvx >> setpagedevice";

constexpr std::string_view kShelter[] = {
    "% The stamp works in a dictionary of its own",
    "fontname findfont pop",
    "/stamp 80 dict begin",
    "[ /stampstring /fontname /fontsize /fontcolor /fontlinewidth /relative_horizontal_margin",
    "  /relative_vertical_margin /ISOLatin1Encoding /ISOEncode ] { dup load def } forall",
    "[ currentdict /stamp load",
    "{ currentglobal 3 1 roll false setglobal exch begin exec end setglobal } bind /exec load ] cvx",
    "end def",
};

// The hook that is there draws once more when it is replaced, and then should draw nothing.
constexpr std::string_view kShelterOnTop[] = {
    "/stampstring () def",
    "<< /EndPage [ /dup load 2 /ne load /stamp load /if load",
    "currentpagedevice /EndPage get 2 get /exec load ] cvx >> setpagedevice",
};

void AddLine(std::string& program, std::string_view line) { program.append(line).append("\r\n"); }

void AddLines(std::string& program, std::span<const std::string_view> lines) {
  for (const std::string_view line : lines) AddLine(program, line);
}

std::string Options(const StampValues& values) {
  std::string program;
  AddLines(program, std::to_array<std::string_view>({"%!PS", "%", "% Options", "%"}));
  AddLine(program, "/stampstring " + values.text + " def");
  AddLine(program, "/fontname " + values.font + " def");
  AddLine(program, "/fontsize " + values.size + " def");
  AddLine(program, "/fontcolor {" + values.color + "} def");
  AddLine(program, "/fontlinewidth " + values.outline + " def");
  AddLine(program, "/relative_horizontal_margin " + values.horizontalMargin + " def");
  AddLine(program, "/relative_vertical_margin " + values.verticalMargin + " def");
  AddLine(program, "");
  return program;
}

}  // namespace

std::string MakeStampProgram(const StampValues& values) {
  std::string program = Options(values);
  AddLine(program, "/ISOLatin1Encoding [");
  AddLines(program, kLatin1);
  AddLines(program, kMeasuring);
  AddLine(program, "/stampangle " + values.angle + " def");
  AddLines(program, kPlacing);
  AddLine(program, values.position);
  AddLines(program, std::to_array<std::string_view>({"moveto", "stampangle rotate", "stampstring", " "}));
  AddLine(program, values.isOutlined ? "true charpath stroke" : "show");
  AddLines(program, std::to_array<std::string_view>({"grestore", "} bind def", "10 dict begin"}));
  if (values.isOnTop) AddLine(program, kOnTop);
  AddLine(program, "end");
  return program;
}

std::string MakeStampShelter(bool isOnTop) {
  std::string program;
  AddLines(program, kShelter);
  if (isOnTop) AddLines(program, kShelterOnTop);
  return program;
}

}  // namespace tessary
