// A stream of documents taken to pieces and put together, for the tests of the reader and its fuzzer.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "monitor/Frames.h"

namespace tessary {

struct FramedDocument {
  std::string contentType;
  int copies = 1;
  std::string bytes;
  bool operator==(const FramedDocument&) const = default;
};

struct FramedDocuments {
  std::vector<FramedDocument> whole;  ///< those that came to their end
  std::string problem;                ///< why there are no more; empty: the stream has ended
};

/// A source that gives the bytes of `stream`, up to `most` at a time. `stream` must outlive it.
inline ByteSource SourceOf(std::string_view stream, std::size_t most) {
  return [stream, most](char* buffer, std::size_t size) mutable -> Result<std::size_t> {
    const std::size_t count = std::min({size, most, stream.size()});
    stream.copy(buffer, count);
    stream.remove_prefix(count);
    return count;
  };
}

/// Reads documents in pieces of up to `pieces` bytes.
inline FramedDocuments ReadFrames(std::string_view stream, std::size_t most, std::size_t pieces) {
  FrameReader reader(SourceOf(stream, most));
  FramedDocuments documents;
  std::string piece(pieces, '\0');
  for (;;) {
    const auto header = reader.Next();
    documents.problem = header.failure.text;
    if (!header.value) return documents;
    FramedDocument document{header.value->contentType, header.value->copies, ""};
    auto got = reader.Read(piece.data(), piece.size());
    for (; got.value > 0; got = reader.Read(piece.data(), piece.size()))
      document.bytes.append(piece, 0, got.value);
    if (got.ok()) documents.whole.push_back(std::move(document));
  }
}

inline std::string WriteFrames(const std::vector<FramedDocument>& documents) {
  std::string stream;
  FrameWriter writer([&](std::string_view bytes) {
    stream += bytes;
    return Failure();
  });
  for (const auto& [contentType, copies, bytes] : documents) {
    writer.Begin({contentType, copies});
    writer.Append(bytes);
    writer.End();
  }
  return stream;
}

}  // namespace tessary
