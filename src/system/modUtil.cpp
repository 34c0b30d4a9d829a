#include "system/modUtil.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include "system/Conversions.h"
#include "system/Error.h"

namespace tessary {

namespace {

/// One look at the child for every pass of the message queue.
constexpr int kWaitMilliseconds = 50;
/// Nobody sees an answer that comes so much later.
constexpr std::int64_t kQueueRestMilliseconds = 10;
/// Codes of Shell::Open up to this one are failures.
constexpr std::int32_t kLastShellFailure = 32;

std::int64_t SecondsOf(const DateTime& time) {
  const std::chrono::sys_days day{std::chrono::year(time.year) / time.month / time.day};
  const std::int64_t hours = std::int64_t{day.time_since_epoch().count()} * 24 + time.hour;
  return (hours * 60 + time.minute) * 60 + time.second;
}

}  // namespace

std::string ComputerName(Run& run) {
  if (run.util.computerName.empty()) run.util.computerName = CutAtNul(run.host.system.ComputerName());
  return run.util.computerName;
}

std::string UserName(Run& run) {
  if (run.util.userName.empty()) run.util.userName = CutAtNul(run.host.system.UserName());
  return run.util.userName;
}

std::string DateTimeStamp(const DateTime& date) {
  char text[80];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year, date.month, date.day, date.hour,
                date.minute, date.second);
  return text;
}

DateTime LocalDateTime(Host& host, std::int64_t unixTime) {
  const std::int64_t offset = SecondsOf(host.clock.LocalTime()) - host.clock.UnixTime();
  const std::chrono::sys_seconds moment{std::chrono::seconds(unixTime + offset)};
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

std::string NewGuid(Run& run) {
  const auto made = run.host.system.NewGuid();
  if (!made.ok())
    throw Error(errors::kCommon, "Error generating guid: Error generating guid. Function did not return S_OK");
  const Guid& guid = made.value;
  char text[40];
  std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", guid.data1, guid.data2,
                guid.data3, guid.data4[0], guid.data4[1], guid.data4[2], guid.data4[3], guid.data4[4],
                guid.data4[5], guid.data4[6], guid.data4[7]);
  return text;
}

std::string ApiErrorText(Run& run, std::int32_t code) { return run.host.system.ErrorText(code); }

bool ShellOpen(Run& run, const std::string& target) {
  return !target.empty() && run.host.shell.Open(target) > kLastShellFailure;
}

void CreateObjectChecked(Run& run, const std::string& progId) {
  const Failure failure = run.host.components.Create(progId);
  if (!failure) return;
  std::string description = "Error creating object: " + progId;
  if (failure.number != failures::kComponentMissing) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "%X", static_cast<std::uint32_t>(failure.number));
    description += ". Error " + std::to_string(failure.number) + " (0x" + hex + "): " + failure.text;
  }
  throw Error(failure.number, description);
}

const COpSysInfo& GetOpSysInfo(Run& run) {
  if (!run.util.opSysInfo) run.util.opSysInfo = std::make_unique<COpSysInfo>(run.host.system);
  return *run.util.opSysInfo;
}

void DoEvents(Run& run) {
  std::optional<std::int64_t>& queueRan = run.util.queueRan;
  if (queueRan && run.host.clock.Ticks() - *queueRan < kQueueRestMilliseconds) return;
  run.host.desktop.PumpMessages();
  queueRan = run.host.clock.Ticks();
}

LaunchResult LaunchProcess(Run& run, const Command& command, std::int32_t timeoutSeconds,
                           const std::string& workingFolder) {
  const auto started = run.host.processes.Start(command, workingFolder, Streams::Hidden);
  if (!started.ok()) throw Error(errors::kCommon, "Error launching the command [" + command.line + "]");
  Process& child = *started.value;

  if (timeoutSeconds != 0) {
    const auto seconds = [&run] { return run.host.clock.Ticks() / 1000; };
    const std::int64_t start = seconds();
    bool ended = false;
    do {
      ended = child.Wait(kWaitMilliseconds);
      run.host.desktop.PumpMessages();
    } while (!ended && seconds() - start <= timeoutSeconds);
  }

  LaunchResult result;
  result.processId = child.Id();
  result.stillRunning = !child.Wait(0);
  if (!result.stillRunning) result.exitCode = child.ExitCode();
  return result;
}

void SortCollection(Dictionary& collection, const std::optional<std::string>& sortBy) {
  if (collection.size() < 2) return;
  std::vector<std::pair<std::string, std::string>> order;  // sort value, key
  for (const auto& [key, item] : collection) {
    if (!sortBy)
      order.emplace_back(key, key);
    else
      order.emplace_back(SafeString(sortBy->empty() ? item : GetNestedValue(item, Split(*sortBy, '.'))), key);
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const auto& one, const auto& other) { return one.first < other.first; });
  for (const auto& [sortValue, key] : order) {
    Value item = collection[key];
    collection.Remove(key);
    collection.Add(key, std::move(item));
  }
}

bool IsInArray(std::string_view value, const std::vector<std::string>& array) {
  return std::find(array.begin(), array.end(), value) != array.end();
}

Value GetNestedValue(const Value& root, const std::vector<std::string>& keys) {
  Value current = root;
  for (const std::string& key : keys) {
    const auto tree = current.AsDictionary();
    if (!tree || !tree->Exists(key)) return {};
    current = (*tree)[key];
  }
  return current;
}

}  // namespace tessary
