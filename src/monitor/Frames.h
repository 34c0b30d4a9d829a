// Documents on their way from the filters of a print server to its backend, one behind the other in one pipe.
//
// A document is a line "TESSARY 1 <content type> <copies>" that ends in LF, and chunks: four bytes that give
// the length of a chunk, the highest first, and so many bytes. A chunk of length 0 ends the document, so that
// one that was cut off is told from one that is whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/Failure.h"

namespace tessary {

/// Where the bytes of a stream come from and go to; they work as File::Read and File::Write do.
using ByteSource = std::function<Result<std::size_t>(char* buffer, std::size_t size)>;
using ByteSink = std::function<Failure(std::string_view bytes)>;

namespace frames {
inline constexpr std::size_t kMaxHeader = 256;  ///< bytes of the line, its end included
inline constexpr std::size_t kMaxChunk = 1024 * 1024;
inline constexpr int kMaxCopies = 9999;
}  // namespace frames

/// What a filter tells of a document. The bytes of the document know better what they are.
struct FrameHeader {
  std::string contentType;  ///< such as "application/pdf"
  int copies = 1;
};

/// Writes documents. Every call gives the failure of the sink, after which the stream is not fit for more.
class FrameWriter {
 public:
  explicit FrameWriter(ByteSink sink) : sink_(std::move(sink)) {}

  /// Begins a document. A content type that cannot stand in the line becomes "application/octet-stream", and a
  /// number of copies out of the limits the nearest one within.
  Failure Begin(const FrameHeader& header);
  Failure Append(std::string_view bytes);
  /// The document is whole. Without this call its reader takes it for cut off.
  Failure End();

 private:
  ByteSink sink_;
  std::string chunk_;
};

/// Reads documents that come from elsewhere. Memory is constant. After a failure, of the source or because the
/// stream is no stream of documents, every later call gives that failure again: nobody knows where the next
/// document begins.
class FrameReader {
 public:
  explicit FrameReader(ByteSource source) : source_(std::move(source)) {}

  /// Goes to the next document; what is left of the one before is passed over. Nothing at the end of the
  /// stream.
  Result<std::optional<FrameHeader>> Next();

  /// Reads up to `size` bytes of the document; 0 only at its end.
  Result<std::size_t> Read(char* buffer, std::size_t size);

 private:
  Failure Fail(Failure failure);
  Failure Fail(const std::string& problem);
  Failure ReadLine(std::string& line);
  Failure ReadLength();

  ByteSource source_;
  bool inDocument_ = false;
  std::size_t left_ = 0;  ///< bytes of the chunk
  Failure failure_;
};

}  // namespace tessary
