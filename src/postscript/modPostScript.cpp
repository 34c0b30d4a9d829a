#include "postscript/modPostScript.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

#include "config/modConfig.h"
#include "postscript/DscReader.h"
#include "postscript/LineEnds.h"
#include "postscript/modSuperimpose.h"
#include "postscript/modWatermark.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/modLog.h"
#include "system/modUtil.h"

namespace tessary {

namespace {

constexpr std::size_t kMostBytes = 1024 * 1024;
constexpr int kMostLines = 1000;

struct Comment {
  std::string_view prefix;
  const char* property;
};

constexpr Comment kComments[] = {
    {"%%for:", "author"}, {"%%title:", "title"}, {"%%creationdate:", "creationdate"}};

void TakeProperty(std::string_view piece, Dictionary& properties) {
  for (const auto& [prefix, property] : kComments) {
    if (ToLower(piece.substr(0, prefix.size())) != prefix) continue;
    properties.Set(property, TrimBlanks(DecodeText(CodePage::Utf8, piece.substr(prefix.size()))));
    return;
  }
}

using PageNumber = std::int16_t;
constexpr std::int32_t kMostPages = std::numeric_limits<PageNumber>::max();
/// A yield is due at every line but each 1000th one, and this way round it is meant.
constexpr std::uint32_t kUnyieldingLine = 1000;

PageNumber ToPageNumber(std::int32_t count) {
  if (count > kMostPages) throw Error(errors::kOverflow, "Overflow");
  return static_cast<PageNumber>(count);
}

std::unique_ptr<File> OpenFile(Run& run, const std::string& path, OpenMode mode) {
  auto opened = run.host.files.Open(path, mode);
  RaiseIf(opened.failure);
  return std::move(opened.value);
}

/// A setting as the value of a comment. Line ends and form feeds would end the comment, and what follows would
/// be program text; other control characters have no meaning in a comment.
std::string CommentValue(Run& run, const std::string& setting) {
  std::string value = EncodeText(run.host.codePage, setting);
  std::replace_if(
      value.begin(), value.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return value;
}

/// Writes the patched copy of a job from its pieces.
class Patcher {
 public:
  /// `pageMap` holds the EPS file of each page; empty when nothing is superimposed.
  Patcher(Run& run, Dictionary& settings, Dictionary pageMap, File& output)
      : run_(run),
        settings_(settings),
        pageMap_(std::move(pageMap)),
        stampBelow_(GetWatermarkLayer(settings) == "bottom" && IsStampEnabled(settings)),
        writer_(output) {}

  void Take(const DscPiece& piece) {
    const LineEndCount ends = CountLineEnds(piece.bytes);
    Yield(ends.all);
    if (page_ == 0 && (piece.line == DscComment::Title || piece.line == DscComment::For)) {
      if (piece.begins) WriteSetting(piece.line);
      return;
    }
    const bool pageLine = piece.line == DscComment::Page;
    if (pageLine && piece.begins) page_ = ToPageNumber(page_ + 1);
    WriteWithCrLf(writer_, piece.bytes, ends);
    if (pageLine && piece.ends) WriteUnderlay();
    RaiseIf(writer_.failure());
  }

  void Finish() { RaiseIf(writer_.Finish()); }

 private:
  /// One yield for all lines of a piece: they take much less time than the queue may rest.
  void Yield(std::size_t ends) {
    if (ends > 1 || (lines_ + 1) % kUnyieldingLine != 0) DoEvents(run_);
    lines_ += static_cast<std::uint32_t>(ends);
  }

  void WriteSetting(DscComment line) {
    const bool title = line == DscComment::Title;
    writer_.Append(title ? "%%Title: " : "%%For: ");
    writer_.Append(CommentValue(run_, settings_.Text(title ? "title" : "author")));
    writer_.Append("\r\n");
  }

  void WriteUnderlay() {
    const std::string page = std::to_string(page_);
    const std::string epsFile = pageMap_.Exists(page) ? pageMap_.Text(page) : std::string();
    std::string text = epsFile.empty() ? std::string() : ReadTextFile(run_, epsFile);
    if (stampBelow_) text += "gsave stamp grestore\r\n";
    if (text.empty()) return;
    writer_.Append(text);
    writer_.Append("\r\n");
  }

  Run& run_;
  Dictionary& settings_;
  Dictionary pageMap_;
  bool stampBelow_;
  BlockWriter writer_;
  PageNumber page_ = 0;      ///< 0: in front of the first page
  std::uint32_t lines_ = 0;  ///< ended so far
};

}  // namespace

Dictionary GetDocumentProperties(Run& run, const std::string& postScriptFile) {
  const std::string head = ReadHead(run, postScriptFile, kMostBytes);
  Dictionary properties;
  std::string_view rest = head;
  for (int lines = 0; lines < kMostLines && !rest.empty();) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    TakeProperty(rest.substr(0, end), properties);
    // A line ends at CR or CR LF. A bare LF parts comments within a line and ends none.
    if (rest.substr(end).starts_with('\r')) ++lines;
    rest.remove_prefix(rest.substr(end).starts_with("\r\n") ? end + 2 : std::min(end + 1, rest.size()));
  }
  return properties;
}

std::int32_t GetPageCount(Run& run, const std::string& postScriptFile) {
  const auto input = OpenFile(run, postScriptFile, OpenMode::Read);
  DscReader reader(*input);
  std::int32_t count = 0;
  for (DscPiece piece; reader.Next(piece);) count += piece.line == DscComment::Page && piece.begins;
  return count;
}

void PatchPostScriptFile(Run& run, Dictionary& settings, const std::string& superimposeFile,
                         const std::string& patchedFile, const std::string& postScriptFile) {
  WriteLog(run, "Begin PatchPostScriptFile");
  Dictionary pageMap;
  if (IsSuperimposeRequested(settings)) {
    WriteLog(run, "GetPageCount: " + postScriptFile);
    const PageNumber count = ToPageNumber(GetPageCount(run, postScriptFile));
    WriteLog(run, "MakeSuperimposePageMap: " + superimposeFile);
    pageMap = MakeSuperimposePageMap(settings, superimposeFile, count);
  }
  WriteLog(run, "Open: " + postScriptFile);
  const auto input = OpenFile(run, postScriptFile, OpenMode::Read);
  WriteLog(run, "Open: " + patchedFile);
  const auto output = OpenFile(run, patchedFile, OpenMode::Create);

  DscReader reader(*input);
  Patcher patcher(run, settings, std::move(pageMap), *output);
  for (DscPiece piece; reader.Next(piece);) patcher.Take(piece);
  patcher.Finish();

  WriteLog(run, "Close files");
  RaiseIf(output->Close());
  WriteLog(run, "End PatchPostScriptFile");
}

}  // namespace tessary
