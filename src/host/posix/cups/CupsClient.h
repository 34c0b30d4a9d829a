// Questions to the print server.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/Failure.h"
#include "host/posix/cups/Cups.h"

namespace tessary {

/// What an attribute holds: texts (keywords, names, addresses), or a number (an enumeration, 0 and 1 for false
/// and true). Of several numbers it is the first.
struct CupsValue {
  std::vector<std::string> texts;
  std::int32_t number = 0;
};

/// A printer, or a job, as the server tells of it: attribute names to values.
using CupsAttributes = std::map<std::string, CupsValue>;

struct CupsQuestion {
  ipp_op_t operation;
  std::string queue = {};  ///< of the printer that it is about; empty: about none
  std::int32_t job = 0;    ///< 0: about none
  /// Attributes that the answer is to hold; none: those that the operation gives.
  std::vector<const char*> wanted = {};
  const char* resource = "/";  ///< what the server guards the operation as
};

class CupsClient {
 public:
  /// How long a question waits for a server that says nothing.
  static constexpr std::chrono::milliseconds kPatience{3000};
  /// How long a server that said nothing is not asked again.
  static constexpr std::chrono::seconds kSilence{30};

  /// The printers or jobs of the answer. A failure has a number of errno: ETIMEDOUT for a server that does not
  /// answer, ENOENT for a printer or job that is gone, EACCES for what the user may not. Nobody is asked for a
  /// password.
  Result<std::vector<CupsAttributes>> Ask(const CupsQuestion& question);

  /// True if the server lets this user see its configuration, which is how it treats its administrators.
  bool MayAdminister();

 private:
  class Connection;

  const Cups& Library();

  std::optional<Cups> library_;  ///< nothing: not needed yet
  std::chrono::steady_clock::time_point silentUntil_;
};

}  // namespace tessary
