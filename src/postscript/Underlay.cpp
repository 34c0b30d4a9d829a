#include "postscript/Underlay.h"

#include <string_view>

#include "config/modSpecialFolders.h"
#include "ghostscript/ParameterLines.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/HexString.h"

namespace tessary {

namespace {

constexpr std::size_t kHeadBytes = 1024;  // readers look for the mark of a PDF this far

// Pictures are kept without loss and JPEGs as they are; the job's own settings treat them afterwards. Level 1.4
// is the highest that keeps all objects in plain text. A page with a fault somewhere is drawn as far as it
// goes, as readers do, and so undefines what the dialect defines for runs that read PDFs.
constexpr std::string_view kSwitches = R"(-sDEVICE#pdfwrite
-dCompatibilityLevel#1.4
-dFirstPage#1
-dLastPage#1
-dUseCropBox
-dPreserveAnnots#false
-uPDFSTOPONERROR
-dAutoRotatePages#/None
-dAutoFilterColorImages#false
-dAutoFilterGrayImages#false
-dColorImageFilter#/FlateEncode
-dGrayImageFilter#/FlateEncode
)";

// Ghostscript ends well, with an empty page, when it cannot read a PDF.
constexpr std::string_view kPageCheck =
    "currentpagedevice /PageCount get 1 lt {(There is no page that can be read.) = flush null 1 .quit} if";

// `Page` is the count of pages before the one that has a background, `Number` the background. In a form all
// that lies outside the paper would be lost, so the paper is made as large as the form needs while it is made.
// A job that opens a namespace of its own for pdfmarks hides the form; it is then made anew.
// NONATIVEFONTMAP: the interpreter would list the folders of FONTPATH, which the job's own search for fonts has
// emptied by then, and an empty folder name is the whole disk to it.
constexpr std::string_view kProcedures = R"(
/Plain {initgraphics {} {} {} {} setcolortransfer false setoverprint} bind def
/Capture {
  6 dict begin
  dup /Form get /Form exch def
  /File get (r) file /File exch def
  /Pdf <</QUIET true /NONATIVEFONTMAP true>> .PDFInit def
  File Pdf .PDFStream
  /Box Pdf 0 .PDFPageInfo /MediaBox get def
  matrix currentmatrix save
  Plain clippath pathbbox newpath
  Box 3 get lt exch Box 2 get lt or 3 1 roll pop pop
  {<</PageSize [Box 2 get Box 3 get]>> setpagedevice} if
  mark /_objdef /Form load /BBox Box /BP pdfmark
  Pdf 0 .PDFDrawPage
  mark /EP pdfmark
  restore setmatrix
  Pdf .PDFClose File closefile
  end
} bind def
/Lay {mark exch /Form get /SP pdfmark} bind def
/Draw {
  gsave Plain
  Backgrounds Number 1 sub get
  dup /Made get {
    {dup Lay} stopped {cleartomark $error /newerror false put true} {false} ifelse
  } {true} ifelse
  {dup Capture dup /Made true put Lay} {pop} ifelse
  grestore
} bind def
/PageNow {currentpagedevice /PageCount get} bind def
/Show {
  PageNow dup Page eq {pop pop} {exch /Number exch def Draw /Page exch def} ifelse
} bind def
/Again {
  PageNow dup Page eq {/Page -1 def Draw /Page exch def} {pop} ifelse
} bind def
end put
globaldict /TessaryBeginPage {systemdict begin globaldict /TessaryUnderlay get begin Again end end} bind put
<<
  /BeginPage [
    globaldict /TessaryBeginPage get /exec cvx currentpagedevice /BeginPage get /exec cvx
  ] cvx
>> setpagedevice
setglobal end
)";

std::string WithLineEnds(std::string_view text) { return ReplaceAll(text, "\n", "\r\n"); }

}  // namespace

bool IsPdf(Run& run, const std::string& file) {
  return ReadHead(run, file, kHeadBytes).find("%PDF-") != std::string::npos;
}

void WriteUnderlayParameterFile(Run& run, const std::string& parameterFile, const std::string& inputFile,
                                const std::string& pageFile, const std::string& stdoutFile) {
  const std::string fonts = GetSpecialFolder(run, folders::kFonts).value_or("");
  WriteTextFile(run, parameterFile,
                ParameterLines(HeadTokens(stdoutFile)) + WithLineEnds(kSwitches) + "-sFONTPATH#\"" + fonts +
                    "\"\r\n-sOutputFile#\"" + pageFile + "\"\r\n-f\r\n\"" + inputFile + "\"\r\n-c\r\n" +
                    std::string(kPageCheck) + "\r\n");
}

void RemovePageGroup(Run& run, const std::string& pageFile) {
  static constexpr std::string_view kGroup = "/Group", kUnknownKey = "/group";
  std::string pdf = ReadFile(run, pageFile);
  const std::size_t page = pdf.rfind("<</Type/Page/");
  if (page == std::string::npos) return;
  const std::size_t group = pdf.find(kGroup, page);
  if (group == std::string::npos || group > pdf.find("endobj", page)) return;
  WriteBinaryFile(run, pageFile, pdf.replace(group, kGroup.size(), kUnknownKey));
}

std::string UnderlayPrelude(const std::vector<std::string>& pageFiles) {
  std::string text =
      "%!\nsystemdict begin currentglobal true setglobal\nglobaldict /TessaryUnderlay 10 dict dup begin\n"
      "/Page -1 def /Number 0 def\n/Backgrounds [\n";
  for (std::size_t number = 1; const std::string& file : pageFiles)
    text += "<</File " + HexString(file) + " /Form {TessaryBackground" + std::to_string(number++) +
            "} /Made false>>\n";
  text.append("] def").append(kProcedures);
  return WithLineEnds(text);
}

std::string UnderlayCall(std::size_t number) {
  return "systemdict begin globaldict /TessaryUnderlay get begin " + std::to_string(number) +
         " Show end end\r\n";
}

}  // namespace tessary
