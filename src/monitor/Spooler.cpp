#include "monitor/Spooler.h"

#include <cstdint>
#include <string_view>

#include "monitor/Ascii85.h"
#include "monitor/CleanText.h"
#include "monitor/PageMarkers.h"
#include "monitor/Passages.h"
#include "system/Blocks.h"

namespace tessary {

namespace {

/// Ghostscript makes the filter in global memory, where the file below it is, so that a restore within the data
/// does not close it.
constexpr std::string_view kDataProgram =
    "% Data that is not clean text comes in ASCII85.\r\n"
    "userdict /TessaryData { currentfile /ASCII85Decode filter cvx exec } bind put\r\n";

constexpr std::string_view kDataFollows = "TessaryData\r\n";

/// Each copy of a document finds everything as the first one did, whatever the one before has left.
constexpr std::string_view kCopyProgram =
    "userdict /TessaryCopied { clear cleardictstack userdict /TessaryBefore get restore } bind put\r\n";
constexpr std::string_view kCopyBegins = "userdict /TessaryBefore save put\r\n",
                           kCopyEnds = "\r\nTessaryCopied\r\n";

class Spooler {
 public:
  Spooler(BlockReader& reader, BlockWriter& writer) : reader_(reader), writer_(writer) {}

  /// Gives the number of page comments.
  std::int32_t Spool(int copies) {
    CopyHeader();
    writer_.Append(kDataProgram);
    writer_.Append(kPageMarkers);
    if (copies <= 1) {
      CopyBody();
      return pages_;
    }
    writer_.Append(kCopyProgram);
    const std::uint64_t body = reader_.Position();
    for (int copy = 0; copy < copies && !writer_.failure(); ++copy) {
      reader_.ReturnTo(body);
      writer_.Append(kCopyBegins);
      CopyBody();
      writer_.Append(kCopyEnds);
    }
    return pages_;
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

  void CopyBody() {
    for (CopySection(); CopyPageLine(); CopySection()) ++pages_;
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
  std::int32_t pages_ = 0;
  int depth_ = 0;  ///< documents around the current place, within the document itself
};

}  // namespace

std::string SpoolDocument(File& input, const DocumentRange& range, File& output, int copies,
                          std::int32_t& pages) {
  BlockReader reader(input, range.begin, range.end);
  BlockWriter writer(output);
  pages = Spooler(reader, writer).Spool(copies);
  if (reader.failure()) return "cannot be read: " + reader.failure().text;
  Failure failure = writer.Finish();
  if (!failure) failure = output.Close();
  if (failure) return "cannot be spooled: " + failure.text;
  return {};
}

}  // namespace tessary
