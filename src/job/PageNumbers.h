// Page numbers in the names of images.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tessary {

/// Where the first page tag of `text` begins, npos if there is none: "<pageno" or "<pagenumber", in any case of
/// letters, whatever follows.
std::size_t FindPageTag(const std::string& text);

/// `text` with the number of a page in the place of its page tags, `<pageno>`, `<pageno,width>` and
/// `<pageno,width,pad>`. Everything from the beginning of a tag (FindPageTag) to the next ">" belongs to it.
/// The number is filled up to `width` characters on the left with `pad`, "0" if there is none and a blank if it
/// is empty, and never cut. At most 100 tags are replaced; one without its ">" stays. Raises kPageTag for a
/// width beyond all names.
std::string SubstitutePageNo(const std::string& text, std::int32_t page);

}  // namespace tessary
