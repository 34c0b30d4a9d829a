// The library under everything: names of the machine and the user, stamps, GUIDs, components, child programs,
// sorting. Conversions are in Conversions.h, paths in Paths.h, whole files in FileHelpers.h, the registry in
// RegistryHelpers.h.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The machine's name, and the user's; each read once a run.
std::string ComputerName(Run& run);
std::string UserName(Run& run);

/// `YYYY-MM-DD HH:MM:SS`.
std::string DateTimeStamp(const DateTime& date);

/// Seconds since 1970-01-01 UTC as local date and time, by the offset that holds now.
DateTime LocalDateTime(Host& host, std::int64_t unixTime);

/// A new GUID in the form `XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX`, upper case, no braces. Any failure is raised
/// with its number and "Error generating guid: " in front.
std::string NewGuid(Run& run);

/// The platform's text for one of its codes, with its line end.
std::string ApiErrorText(Run& run, std::int32_t code);

/// Opens a file, folder or address with its default program. False if that failed or `target` is empty.
bool ShellOpen(Run& run, const std::string& target);

/// Tests that the platform's component `progId` can be created. Raises kComponentMissing with
/// "Error creating object: " + progId, or another failure with its number and text behind that.
void CreateObjectChecked(Run& run, const std::string& progId);

/// The shared description of the operating system, made at first use.
const COpSysInfo& GetOpSysInfo(Run& run);

/// Lets the message queue run, for long work that comes by often. Costs a look at the clock and no more when
/// the queue ran less than 10 ms ago.
void DoEvents(Run& run);

struct LaunchResult {
  std::int64_t processId = 0;
  bool stillRunning = false;
  std::int32_t exitCode = 0;  ///< 0 while it runs
};

/// Starts a child, hidden, and waits until it ends or more than `timeoutSeconds` have passed on a clock of
/// one-second grain, with the message queue running in between; 0 starts it and does not wait. A child that
/// still runs is left to run. Raises kCommon "Error launching the command [" + line + "]" if it cannot be
/// started.
LaunchResult LaunchProcess(Run& run, const Command& command, std::int32_t timeoutSeconds,
                           const std::string& workingFolder);

/// Brings the entries of `collection` into the order of their keys (no `sortBy`), of their values (`sortBy`
/// empty), or of the value that a path of keys, parted by ".", leads to in each. Strings compare as bytes.
void SortCollection(Dictionary& collection, const std::optional<std::string>& sortBy);

/// True if one of the array's texts is `value`, case and blanks counted.
bool IsInArray(std::string_view value, const std::vector<std::string>& array);

/// What a path of keys leads to below `root`; empty as soon as a step fails.
Value GetNestedValue(const Value& root, const std::vector<std::string>& keys);

}  // namespace tessary
