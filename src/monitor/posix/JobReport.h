// What a filter or backend tells its print server: lines on standard error that begin with a word of the
// server's. Other lines could be taken for such words, so all of them go through here.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tessary {

/// `text` cut to at most `size` bytes at the end of a character, in valid UTF-8.
std::string CutText(std::string_view text, std::size_t size);

/// `text` as lines that each begin with `prefix` and a blank: empty lines are left out, control characters
/// become blanks, and no line is longer than what a print server takes.
std::string ReportLines(std::string_view prefix, std::string_view text);

class JobReport {
 public:
  /// `output` is the standard error of the process, as a rule, and outlives this object.
  explicit JobReport(std::ostream& output) : output_(output) {}

  /// The message of the printer that people see, and a line of the server's log.
  void Info(std::string_view text) { Say("INFO:", text); }
  void Error(std::string_view text) { Say("ERROR:", text); }
  /// A line of the log alone.
  void Debug(std::string_view text) { Say("DEBUG:", text); }
  /// So many pages have been printed, for the server's accounts; 0: nobody knows.
  void Pages(std::int32_t pages) {
    if (pages > 0) Say("PAGE:", "total " + std::to_string(pages));
  }
  /// The document is where its user has the next word, or no longer. A reason of our own: with those of the
  /// server it would take the job for printed, and forget it at its next start.
  void WaitsForUser(bool waits) {
    Say("STATE:", waits ? "+tessary-waiting-for-user-report" : "-tessary-waiting-for-user-report");
  }

 private:
  void Say(std::string_view prefix, std::string_view text);

  std::ostream& output_;
};

}  // namespace tessary
