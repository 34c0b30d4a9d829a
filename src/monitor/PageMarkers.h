// What tells of each page of a spooled job.
#pragma once

#include <string_view>

namespace tessary {

/// Runs before everything else of the job. The page count stands in global memory, where the job's save and
/// restore do not reach it, and the operators are bound, so that the job's own names do not matter. An EndPage
/// that is there already stays in force and decides whether the page goes out; a job that puts one of its own
/// in its place goes on without markers.
inline constexpr std::string_view kPageMarkers =
    "% Each page that goes out is announced on standard output.\r\n"
    "<< /EndPage [\r\n"
    "  currentpagedevice /EndPage get /exec load /dup load\r\n"
    "  [ currentglobal true setglobal [ 0 ] exch setglobal\r\n"
    "    { dup 0 2 copy get 1 add put 0 get\r\n"
    "      (%%[Page: ) print 12 string cvs print (]%%\\n) print flush } bind /exec load ] cvx /if load\r\n"
    "] cvx >> setpagedevice\r\n";

}  // namespace tessary
