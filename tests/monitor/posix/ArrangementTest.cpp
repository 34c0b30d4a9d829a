// When the filter leaves a document to the print server's filters for arranging pages.
#include <gtest/gtest.h>

#include "monitor/posix/Arrangement.h"

namespace tessary {
namespace {

TEST(Arrangement, IsLeftToTheServersFiltersOnlyWhenAskedFor) {
  const struct {
    std::string_view options, type, filter;
  } cases[] = {
      {"finishings=3 number-up=1 print-color-mode=color landscape media=A3", "application/pdf", ""},
      {"number-up=4", "application/pdf", "pdftopdf"},
      {"copies=2 page-ranges=2-3,7", "text/plain", "pdftopdf"},
      {"outputorder=reverse", "application/postscript", "pstops"},
      {"fit-to-page", "application/pdf", "pdftopdf"},
      {"fit-to-page=false page-set=all print-scaling=none", "application/pdf", ""},
      {"number-up=4", "image/png", ""},
      {"number-up=4", "application/vnd.cups-raw", ""},
      {"document-name-supplied=a\\ number-up=4 x='page-set=odd mirror'", "application/pdf", ""},
      {"", "application/pdf", ""},
  };
  for (const auto& each : cases)
    EXPECT_EQ(ArrangingFilter(each.options, each.type), each.filter) << each.options;
}

}  // namespace
}  // namespace tessary
