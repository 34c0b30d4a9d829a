#include "postscript/DscReader.h"

#include "system/Error.h"

namespace tessary {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

struct Prefix {
  std::string_view text;
  DscComment comment;
};

constexpr Prefix kPrefixes[] = {
    {"%%Page:", DscComment::Page}, {"%%Title:", DscComment::Title}, {"%%For:", DscComment::For}};

/// The longest prefix, which is also longer than the LF behind a CR.
constexpr std::size_t kLookAhead = 8;

DscComment CommentAt(std::string_view line) {
  for (const auto& [text, comment] : kPrefixes)
    if (line.starts_with(text)) return comment;
  return DscComment::None;
}

bool EndsLine(std::string_view bytes) { return bytes.ends_with('\r') || bytes.ends_with(kLineEnd); }

/// Where the first comment behind the first byte of `text` begins; `limit` if that is not in front of it.
std::size_t FindComment(std::string_view text, std::size_t limit) {
  // The percent sign is much rarer than a line end.
  for (std::size_t at = 1; (at = text.find('%', at)) < limit; ++at)
    if (EndsLine(text.substr(0, at)) && CommentAt(text.substr(at)) != DscComment::None) return at;
  return limit;
}

/// Where the first line of `text` ends; `limit` if that is not in front of it.
std::size_t FindLineEnd(std::string_view text, std::size_t limit) {
  const std::size_t at = text.find('\r');
  if (at >= limit) return limit;
  return text.substr(at).starts_with(kLineEnd) ? at + kLineEnd.size() : at + 1;
}

}  // namespace

bool DscReader::Next(DscPiece& piece) {
  if (settled_ == 0 && !Refill()) {
    if (beginsLine_) return false;
    piece = {kLineEnd, line_, false, true};
    beginsLine_ = true;
    return true;
  }
  const std::string_view window = blocks_.window();
  if (beginsLine_) line_ = CommentAt(window);
  const std::size_t size =
      line_ == DscComment::None ? FindComment(window, settled_) : FindLineEnd(window, settled_);
  piece = {window.substr(0, size), line_, beginsLine_, EndsLine(window.substr(0, size))};
  beginsLine_ = piece.ends;
  settled_ -= size;
  blocks_.Skip(size);
  return true;
}

/// Reads on until some bytes are settled; false at the end of the file.
bool DscReader::Refill() {
  while (settled_ == 0) {
    const bool more = blocks_.More();
    RaiseIf(blocks_.failure());
    const std::string_view window = blocks_.window();
    if (!more) {
      settled_ = window.size();
      return settled_ > 0;
    }
    if (window.size() <= kLookAhead) continue;
    settled_ = window.size() - kLookAhead;
    if (window.substr(settled_ - 1).starts_with(kLineEnd)) ++settled_;
  }
  return true;
}

}  // namespace tessary
