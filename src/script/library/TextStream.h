// TextStream objects: text files that scripts read from or write to.
//
// A file is read at once: UTF-16 with its byte-order mark, UTF-8, or Windows-1252 where the bytes are no UTF-8.
// It is written as UTF-8, or as UTF-16 when Unicode is asked for; lines end with CR LF. What is written reaches
// the file in larger pieces, and all of it at Close or when the object ends.
#pragma once

#include <string>

#include "script/Object.h"
#include "script/Services.h"

namespace tessary::script {

enum class StreamMode { Read = 1, Write = 2, Append = 8 };

/// Opens a stream on a full path. Read raises the service's error for a missing file; Write and Append make it.
/// `files` outlives the stream.
Ref<Object> OpenTextStream(FileSystem& files, const std::string& path, StreamMode mode, bool unicode);

}  // namespace tessary::script
