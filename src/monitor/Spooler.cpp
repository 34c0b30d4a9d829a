#include "monitor/Spooler.h"

#include <cstdint>
#include <string_view>

#include "monitor/Ascii85.h"
#include "monitor/CleanText.h"
#include "monitor/DocumentRange.h"
#include "monitor/Passages.h"
#include "system/Blocks.h"

namespace tessary {

namespace {

/// Runs before everything else of the job. The page count stands in global memory, where the job's save and
/// restore do not reach it, and the operators are bound, so that the job's own names do not matter. An EndPage
/// that is there already stays in force and decides whether the page goes out; a job that puts one of its own
/// in its place goes on without markers. Ghostscript makes the filter in global memory too, where the file
/// below it is, so that a restore within the data does not close it.
constexpr std::string_view kPrologue =
    "% Data that is not clean text comes in ASCII85.\r\n"
    "userdict /TessaryData { currentfile /ASCII85Decode filter cvx exec } bind put\r\n"
    "% Each page that goes out is announced on standard output.\r\n"
    "<< /EndPage [\r\n"
    "  currentpagedevice /EndPage get /exec load /dup load\r\n"
    "  [ currentglobal true setglobal [ 0 ] exch setglobal\r\n"
    "    { dup 0 2 copy get 1 add put 0 get\r\n"
    "      (%%[Page: ) print 12 string cvs print (]%%\\n) print flush } bind /exec load ] cvx /if load\r\n"
    "] cvx >> setpagedevice\r\n";

constexpr std::string_view kDataFollows = "TessaryData\r\n";

class Spooler {
 public:
  Spooler(BlockReader& reader, BlockWriter& writer) : reader_(reader), writer_(writer) {}

  void Spool() {
    CopyHeader();
    writer_.Append(kPrologue);
    do {
      CopySection();
    } while (CopyPageLine());
  }

 private:
  /// The comments at the head of the document, up to the first line that is something else.
  void CopyHeader() {
    for (Line line = reader_.PeekLine(); IsHeaderLine(line); line = reader_.PeekLine()) {
      const bool last = line.text.starts_with("%%EndComments");
      Put(line);
      if (last) return;
    }
  }

  static bool IsHeaderLine(const Line& line) {
    if (line.end == LineEnd::None) return false;
    if (line.text.find_first_not_of(" \t\f") == std::string_view::npos) return true;
    return line.text.starts_with('%') && !line.text.starts_with("%%Page:") && !line.text.starts_with("%%Begin");
  }

  void CopySection() {
    const std::uint64_t from = reader_.Position(), to = writer_.Position();
    if (CopyAsText()) return;
    reader_.ReturnTo(from);
    writer_.ReturnTo(to);
    CopyAsData();
  }

  /// False if the section is not clean text, or its line ends are not all alike, as in a text with data in it.
  bool CopyAsText() {
    depth_ = 0;
    LineEnd common = LineEnd::None;
    for (std::string_view passage; !(passage = NextInSection()).empty(); reader_.Skip(passage)) {
      if (common == LineEnd::None) common = FirstLineEnd(passage);
      if (!HasOnlyLineEnds(passage, common) || !IsCleanText(passage, reader_.BeginsLine())) return false;
      WriteLines(writer_, passage, common);
    }
    return true;
  }

  void CopyAsData() {
    depth_ = 0;
    writer_.Append(kDataFollows);
    Ascii85Encoder encoder(writer_);
    for (std::string_view passage; !(passage = NextInSection()).empty(); reader_.Skip(passage))
      encoder.Append(passage);
    encoder.Finish();
  }

  /// The next passage, or nothing at the next page and at the end of the document. Pages of documents within
  /// the document do not count.
  std::string_view NextInSection() {
    const std::string_view passage = reader_.PeekPassage();
    if (!reader_.BeginsLine()) return passage;
    if (passage.starts_with("%%BeginDocument:")) ++depth_;
    if (passage.starts_with("%%EndDocument") && depth_ > 0) --depth_;
    return depth_ == 0 && passage.starts_with("%%Page:") ? std::string_view() : passage;
  }

  bool CopyPageLine() {
    Line line = reader_.PeekLine();
    const bool found = line.size > 0;
    for (; line.size > 0 && line.end == LineEnd::None; line = reader_.PeekLine()) Put(line);
    if (line.size > 0) Put(line);
    return found;
  }

  void Put(const Line& line) {
    writer_.Append(line.text);
    if (line.end != LineEnd::None) writer_.Append("\r\n");
    reader_.Skip(line);
  }

  PassageReader reader_;
  BlockWriter& writer_;
  int depth_ = 0;  ///< documents around the current place, within the document itself
};

}  // namespace

std::string SpoolDocument(File& input, File& output) {
  const DocumentRange range = FindDocument(input);
  if (!range.problem.empty()) return range.problem;
  BlockReader reader(input, range.begin, range.end);
  BlockWriter writer(output);
  Spooler(reader, writer).Spool();
  if (reader.failure()) return "cannot be read: " + reader.failure().text;
  Failure failure = writer.Finish();
  if (!failure) failure = output.Close();
  if (failure) return "cannot be spooled: " + failure.text;
  return {};
}

}  // namespace tessary
