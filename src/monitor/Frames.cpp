#include "monitor/Frames.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::string_view kMark = "TESSARY";
constexpr std::string_view kVersion = "1";
constexpr std::size_t kMaxContentType = 200;
constexpr std::size_t kLengthBytes = 4;

bool IsContentType(std::string_view text) {
  const auto fits = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("/.+-_").find(c) != std::string_view::npos;
  };
  return !text.empty() && text.size() <= kMaxContentType && std::all_of(text.begin(), text.end(), fits);
}

/// The length of a chunk as it stands in front of it.
std::string LengthBytes(std::size_t length) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(length >> shift & 0xFF);
  return bytes;
}

/// The header that `line` is, or why it is none.
std::string ParseHeader(const std::string& line, FrameHeader& header) {
  const std::vector<std::string> words = Split(line, ' ');
  if (words[0] != kMark) return "is not framed as the filter does it";
  if (words.size() != 4) return "has a damaged header";
  if (words[1] != kVersion) return "is framed in a version that this program does not know";
  const char* end = words[3].data() + words[3].size();
  const auto [behind, code] = std::from_chars(words[3].data(), end, header.copies);
  const bool isNumber = code == std::errc() && behind == end;
  if (!isNumber || header.copies < 1 || header.copies > frames::kMaxCopies || !IsContentType(words[2]))
    return "has a damaged header";
  header.contentType = words[2];
  return {};
}

}  // namespace

Failure FrameWriter::Begin(const FrameHeader& header) {
  const std::string type = IsContentType(header.contentType) ? header.contentType : "application/octet-stream";
  const int copies = std::clamp(header.copies, 1, frames::kMaxCopies);
  return sink_(std::string(kMark) + ' ' + std::string(kVersion) + ' ' + type + ' ' + std::to_string(copies) +
               '\n');
}

Failure FrameWriter::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view part = bytes.substr(0, frames::kMaxChunk);
    chunk_ = LengthBytes(part.size());
    chunk_ += part;
    if (Failure failure = sink_(chunk_)) return failure;
    bytes.remove_prefix(part.size());
  }
  return {};
}

Failure FrameWriter::End() { return sink_(LengthBytes(0)); }

Failure FrameReader::Fail(Failure failure) {
  inDocument_ = false;
  return failure_ = std::move(failure);
}

Failure FrameReader::Fail(const std::string& problem) { return Fail({failures::kDeviceIo, problem}); }

/// Without the line end. Empty at the end of the stream.
Failure FrameReader::ReadLine(std::string& line) {
  for (char c = 0; line.size() < frames::kMaxHeader; line += c) {
    const Result<std::size_t> got = source_(&c, 1);
    if (!got.ok()) return Fail(got.failure);
    if (got.value == 0) return line.empty() ? Failure() : Fail("ends within a header");
    if (c == '\n') return line.empty() ? Fail("has a damaged header") : Failure();
  }
  return Fail(line.starts_with(kMark) ? "has a damaged header" : "is not framed as the filter does it");
}

Result<std::optional<FrameHeader>> FrameReader::Next() {
  std::vector<char> rest(inDocument_ ? frames::kMaxChunk : 0);
  while (inDocument_) {
    if (const auto skipped = Read(rest.data(), rest.size()); !skipped.ok()) return skipped.failure;
  }
  if (failure_) return failure_;
  std::string line;
  if (Failure failure = ReadLine(line)) return failure;
  if (line.empty()) return std::optional<FrameHeader>();
  FrameHeader header;
  if (const std::string problem = ParseHeader(line, header); !problem.empty()) return Fail(problem);
  inDocument_ = true;
  left_ = 0;
  return std::optional<FrameHeader>(std::move(header));
}

/// Goes to the next chunk, or to the end of the document.
Failure FrameReader::ReadLength() {
  char bytes[kLengthBytes];
  for (std::size_t filled = 0; filled < kLengthBytes;) {
    const Result<std::size_t> got = source_(bytes + filled, kLengthBytes - filled);
    if (!got.ok()) return Fail(got.failure);
    if (got.value == 0) return Fail("is cut off");
    filled += got.value;
  }
  left_ = 0;
  for (const char byte : bytes) left_ = left_ << 8 | static_cast<unsigned char>(byte);
  if (left_ > frames::kMaxChunk) return Fail("is damaged on its way");
  inDocument_ = left_ > 0;
  return {};
}

Result<std::size_t> FrameReader::Read(char* buffer, std::size_t size) {
  if (failure_) return failure_;
  if (!inDocument_ || size == 0) return 0;
  if (left_ == 0) {
    if (Failure failure = ReadLength()) return failure;
    if (!inDocument_) return 0;
  }
  const Result<std::size_t> got = source_(buffer, std::min(size, left_));
  if (!got.ok()) return Fail(got.failure);
  if (got.value == 0) return Fail("is cut off");
  left_ -= got.value;
  return got;
}

}  // namespace tessary
