#include "monitor/DocumentRange.h"

#include <algorithm>
#include <string_view>

namespace tessary {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kHeadSize = 64 * 1024, kTailSize = 4096;
constexpr auto kFiller = " \t\r\n\f\0\4"sv;     ///< passed over around a document; \4 marks the end of a file
constexpr std::size_t kPdfHeaderWithin = 1024;  ///< readers look for it this far
constexpr auto kPdfHeader = "%PDF-"sv, kPostScriptHeader = "%!"sv;
constexpr auto kExitLanguage = "\x1b%-12345X"sv, kPjl = "@PJL"sv, kEpsMagic = "\xC5\xD0\xD3\xC6"sv;

struct Kind {
  std::string_view magic, name;
};
constexpr Kind kOtherKinds[] = {
    {"\x89PNG", "a PNG image"},
    {"\xFF\xD8\xFF", "a JPEG image"},
    {"GIF8", "a GIF image"},
    {"II*\0"sv, "a TIFF image"},
    {"MM\0*"sv, "a TIFF image"},
    {"\x1F\x8B", "a gzip-packed file"},
    {"PK\3\4", "a ZIP archive or an office document"},
    {"\x1B", "a PCL or other printer-language job"},
};

Result<std::string> ReadPart(File& file, std::uint64_t position, std::size_t size) {
  if (Failure failure = file.Seek(position)) return failure;
  std::string bytes(size, '\0');
  std::size_t have = 0;
  while (have < size) {
    const Result<std::size_t> got = file.Read(bytes.data() + have, size - have);
    if (!got.ok()) return got.failure;
    if (got.value == 0) break;
    have += got.value;
  }
  bytes.resize(have);
  return bytes;
}

/// How many bytes at the start of `head` come before the document.
std::size_t LeadingSize(std::string_view head) {
  std::string_view rest = head;
  while (true) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kFiller), rest.size()));
    if (rest.starts_with(kExitLanguage))
      rest.remove_prefix(kExitLanguage.size());
    else if (rest.starts_with(kPjl))
      rest.remove_prefix(std::min(rest.find('\n'), rest.size()));
    else
      return head.size() - rest.size();
  }
}

/// How many bytes at the start of `tail` belong to the document: all up to the first end-of-file mark, or PJL,
/// behind which nothing but such things follows.
std::size_t DocumentSizeIn(std::string_view tail) {
  while (true) {
    const std::size_t filler = tail.find_last_not_of(kFiller) + 1;
    tail = tail.substr(0, tail.find('\4', filler));
    const std::size_t escape = tail.rfind(kExitLanguage);
    if (escape == std::string_view::npos) return tail.size();
    std::string_view behind = tail.substr(escape + kExitLanguage.size());
    behind.remove_prefix(std::min(behind.find_first_not_of(kFiller), behind.size()));
    if (!behind.empty() && !behind.starts_with(kPjl)) return tail.size();
    tail = tail.substr(0, escape);
  }
}

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

/// Narrows `range`, which begins with `header`, to the PostScript section of a binary EPS file.
bool FollowEpsHeader(std::string_view header, DocumentRange& range) {
  if (header.size() < 12) return false;
  const std::uint64_t begin = range.begin + LittleEndian(header.substr(4, 4));
  const std::uint64_t end = begin + LittleEndian(header.substr(8, 4));
  const bool inside = end <= range.end && begin < end;
  range.begin = begin;
  range.end = end;
  return inside;
}

std::string Unreadable(const Failure& failure) { return "cannot be read: " + failure.text; }

/// Leaves out what stands before and behind the document in `range`.
std::string Trim(File& file, DocumentRange& range, std::string& head) {
  const Result<std::string> first =
      ReadPart(file, range.begin, std::min<std::uint64_t>(kHeadSize, range.end - range.begin));
  if (!first.ok()) return Unreadable(first.failure);
  const std::size_t leading = LeadingSize(first.value);
  head = first.value.substr(leading);
  range.begin += leading;
  const std::uint64_t tailBegin = range.end - std::min<std::uint64_t>(kTailSize, range.end - range.begin);
  const Result<std::string> last = ReadPart(file, tailBegin, range.end - tailBegin);
  if (!last.ok()) return Unreadable(last.failure);
  range.end = tailBegin + DocumentSizeIn(last.value);
  return {};
}

}  // namespace

DocumentRange FindDocument(File& file) {
  DocumentRange range;
  const Result<std::uint64_t> size = file.Size();
  if (!size.ok()) return {0, 0, Unreadable(size.failure), false};
  range.end = size.value;
  std::string head;
  range.problem = Trim(file, range, head);
  if (range.problem.empty() && head.starts_with(kEpsMagic)) {
    if (!FollowEpsHeader(head, range))
      return {0, 0, "is damaged: its EPS header points outside the file", false};
    range.problem = Trim(file, range, head);
  }
  if (!range.problem.empty()) return range;
  if (head.empty()) range.problem = size.value == 0 ? "is empty" : "holds no document";
  for (const Kind& kind : kOtherKinds)
    if (head.starts_with(kind.magic))
      range.problem = "is " + std::string(kind.name) + ", not PostScript or PDF";
  range.isPdf = range.problem.empty() && !head.starts_with(kPostScriptHeader) &&
                std::string_view(head).substr(0, kPdfHeaderWithin).find(kPdfHeader) != std::string_view::npos;
  return range;
}

}  // namespace tessary
