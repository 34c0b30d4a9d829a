#include "monitor/PdfDocument.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

#include "ghostscript/ParameterLines.h"
#include "ghostscript/modGhostScript.h"
#include "monitor/PageMarkers.h"
#include "system/Blocks.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/HexString.h"

namespace tessary {

namespace {

constexpr std::int32_t kMostPages = std::numeric_limits<std::int16_t>::max();  // the most that `gui` can number
constexpr std::size_t kTailBytes = 4096;  // zeros may stand behind the mark of the end
constexpr std::size_t kMostAnswer = 16 * 1024;
constexpr std::string_view kPagesAre = "\nPages: ";

// The size of a page is set before its comment, because that clears the page, and what is laid under the page
// stands behind the comment. In between lies the state of an ordinary page: the PDF's own scale, rotation and
// clip are put aside until the page is drawn.
constexpr std::string_view kProgram =
    "% The pages are those of a PDF, drawn by the PDF interpreter.\r\n"
    "userdict begin\r\n"
    "/TessaryFault { (%%[Error: ) print print (]%%) = flush /TessaryFault cvx /undefinedresult signalerror "
    "}\r\n"
    "bind def\r\n"
    "/TessaryOpen { (r) file runpdfbegin } bind def\r\n"
    "/TessaryGraphics gstate def\r\n"
    "/TessarySize {\r\n"
    "  pdfgetpage dup null eq { (A page of the PDF cannot be read.) TessaryFault } if\r\n"
    "  pdfshowpage_init pdfshowpage_setpage userdict /TessaryPage 3 -1 roll put\r\n"
    "  TessaryGraphics currentgstate pop initgraphics\r\n"
    "} bind def\r\n"
    "/TessaryDraw { TessaryGraphics setgstate TessaryPage pdfshowpage_finish } bind def\r\n"
    "/TessaryClose {\r\n"
    "  currentpagedevice /PageCount get CumulativePageCount sub ne\r\n"
    "  { (A page of the PDF cannot be drawn.) TessaryFault } if runpdfend\r\n"
    "} bind def\r\n"
    "end\r\n";

/// The files of one run of Ghostscript, which go with the object. What it is given may be a translation of the
/// parameters.
class PassingRun {
 public:
  PassingRun(Run& run, const std::string& base) : run_(run), base_(base) {}
  ~PassingRun() {
    for (const char* ending : kEndings) run_.host.files.Remove(base_ + ending);
  }
  PassingRun(const PassingRun&) = delete;
  PassingRun& operator=(const PassingRun&) = delete;

  [[nodiscard]] const std::string& Parameters() const { return base_; }
  [[nodiscard]] std::string Output() const { return base_ + ".out"; }
  /// What Ghostscript has said on both its streams, the standard output last.
  [[nodiscard]] std::string Said() const {
    std::string said;
    for (const char* ending : {".err", ".run.err", ".out"}) said += ReadTail(run_, base_ + ending, kMostAnswer);
    return said;
  }

 private:
  static constexpr const char* kEndings[] = {"", ".run", ".err", ".run.err", ".out"};

  Run& run_;
  std::string base_;
};

/// What Ghostscript says when it opens `pdf`; the number of pages stands behind the last kPagesAre, 0 when it
/// cannot.
std::string AskForPages(Run& run, const std::string& pdf, const std::string& base) {
  const PassingRun files(run, base);
  std::vector<std::string> tokens = HeadTokens(files.Output());
  tokens.insert(tokens.end(), {"-dNODISPLAY", "-c",
                               HexString(EncodeText(run.host.codePage, pdf)) +
                                   " (r) file runpdfbegin pdfpagecount () = (Pages: ) print = flush"});
  WriteTextFile(run, files.Parameters(), ParameterLines(tokens));
  run.ghostscript.nextRun.readableFiles = {pdf};
  Dictionary settings;
  RunGhostscript(run, settings, files.Parameters(), files.Output());
  return files.Said();
}

/// Why there is no page; Ghostscript's words alone tell.
std::string WhyUnreadable(const std::string& said) {
  if (said.find("password") != std::string::npos) return "needs a password";
  return "is damaged: there is no page that can be read";
}

/// Of a PDF without its end nobody knows what is missing: the interpreter would leave the paper white there and
/// say nothing.
bool IsCutOff(Run& run, const std::string& pdf) {
  const std::string tail = ReadTail(run, pdf, kTailBytes);
  return tail.find("startxref") == std::string::npos && tail.find("%%EOF") == std::string::npos;
}

void WriteHead(Run& run, BlockWriter& writer, const DocumentTicket& ticket, std::int32_t pages) {
  const std::string comments = "%!PS-Adobe-3.0\r\n%%Title: " + OneLine(ticket.title) +
                               "\r\n%%For: " + OneLine(ticket.user) + "\r\n%%Pages: " + std::to_string(pages) +
                               "\r\n%%EndComments\r\n";
  writer.Append(EncodeText(run.host.codePage, comments));
  writer.Append(kPageMarkers);
  writer.Append(kProgram);
}

void WritePages(BlockWriter& writer, std::int32_t pages, std::int32_t copies) {
  for (std::int32_t drawn = 0; drawn < pages * copies; ++drawn) {
    const std::string page = std::to_string(drawn % pages + 1), ordinal = std::to_string(drawn + 1);
    writer.Append(page + " TessarySize\r\n%%Page: " + page + ' ' + ordinal + "\r\nTessaryDraw\r\n");
  }
}

}  // namespace

std::string SpoolDrawing(Run& run, SpooledJob& job, const DocumentTicket& ticket) {
  const std::string pdf = job.DocumentPath();
  if (IsCutOff(run, pdf)) return "is cut off: its end is missing";
  const std::string said = AskForPages(run, pdf, job.path() + ".count");
  const std::size_t at = said.rfind(kPagesAre);
  const std::int32_t copies = std::max(ticket.copies, 1);
  const double pages = at == std::string::npos ? 0 : LeadingNumber(said.substr(at + kPagesAre.size()));
  if (pages < 1) return WhyUnreadable(said);
  if (pages * copies > kMostPages) return "has more than " + std::to_string(kMostPages) + " pages";

  auto opened = run.host.files.Open(job.path(), OpenMode::Create);
  RaiseIf(opened.failure);
  BlockWriter writer(*opened.value);
  const auto count = static_cast<std::int32_t>(pages);
  WriteHead(run, writer, ticket, count * copies);
  writer.Append(HexString(EncodeText(run.host.codePage, pdf)) + " TessaryOpen\r\n");
  WritePages(writer, count, copies);
  writer.Append("%%Trailer\r\n" + std::to_string(count * copies) + " TessaryClose\r\n%%EOF\r\n");
  job.SetPages(count * copies);
  Failure failure = writer.Finish();
  if (!failure) failure = opened.value->Close();
  return failure ? "cannot be spooled: " + failure.text : "";
}

}  // namespace tessary
