#include "monitor/posix/PrinterCommand.h"

#include <algorithm>
#include <ostream>

#include "config/modFolders.h"
#include "host/posix/cups/PrinterAdmin.h"
#include "host/posix/cups/PrinterDescription.h"
#include "host/posix/cups/ServerPolicies.h"
#include "monitor/posix/Devices.h"
#include "monitor/posix/PrinterArguments.h"
#include "monitor/posix/QueueName.h"
#include "system/Conversions.h"
#include "system/modCustom.h"
#include "system/modInstances.h"

namespace tessary {

namespace {

constexpr const char* kUsage =
    "usage: tessary-printer add NAME [--location TEXT] [--paper SIZE] [--default]\n"
    "       tessary-printer remove NAME\n"
    "       tessary-printer list\n"
    "       tessary-printer default NAME\n"
    "       tessary-printer share NAME on [--from NETWORK]... | off\n";

constexpr const char* kHelp =
    "\n"
    "Adds PDF printers to the print dialogs of all applications, lists them and removes them. Changes want\n"
    "an administrator of the print server: sudo.\n"
    "\n"
    "  NAME             \"PDF Printer [Sales]\": what stands in brackets has settings of its own\n"
    "  --location TEXT  where people think that the printer stands\n"
    "  --paper SIZE     the usual page size: A4, Letter (default: that of your language)\n"
    "  --default        make it the default printer of this machine\n"
    "  share NAME on    offer it to other machines. Who prints from there gives a name and a password of\n"
    "                   this machine, and the document is theirs\n"
    "  --from NETWORK   let everybody in this network print without one: 192.168.1.0/24, @LOCAL. All\n"
    "                   documents of the printer then go to one folder; RemoteUser and RemoteFolder in\n"
    "                   /etc/tessary/machine.ini name it. The networks count for all such printers\n"
    "  share NAME off   keep it to this machine. Without a proof of whose they are, waiting jobs of a printer\n"
    "                   that was shared with --from are cancelled\n"
    "  --help           this text\n"
    "\n"
    "Exit code: 0 when it is done, 1 when it could not be, 2 for a wrong call.\n";

// The server takes a new configuration over within a second; behind a slow client it can take half a minute.
constexpr std::int32_t kPatience = 40000, kPause = 100;  // milliseconds

bool IsOurs(const ServerPrinter& printer) { return printer.device.starts_with(kDeviceScheme); }

const std::string& NameOf(const ServerPrinter& printer) {
  return printer.description.empty() ? printer.queue : printer.description;
}

bool IsCalled(const ServerPrinter& printer, const std::string& name) {
  return ToLower(printer.queue) == ToLower(name) || ToLower(printer.description) == ToLower(name);
}

/// One command under way. The commands return why it could not be done; empty when it is.
class Administration {
 public:
  Administration(Run& run, const PrinterArguments& arguments, std::ostream& output, std::ostream& errors)
      : run_(run), arguments_(arguments), output_(output), errors_(errors) {}

  std::string Do() {
    const Result<std::vector<ServerPrinter>> printers = server_.Printers();
    if (!printers.ok()) return printers.failure.text;
    printers_ = printers.value;
    if (arguments_.command == "list") return List();
    if (arguments_.command == "add") return Add();
    const Result<ServerPrinter> printer = Find();
    if (!printer.ok()) return printer.failure.text;
    if (arguments_.command == "remove") return server_.Remove(printer.value.queue).text;
    if (arguments_.command == "default") return server_.MakeDefault(printer.value.queue).text;
    return arguments_.on ? Share(printer.value) : Unshare(printer.value);
  }

 private:
  [[nodiscard]] Result<ServerPrinter> Find() const;
  std::string List();
  std::string Add();
  std::string Share(const ServerPrinter& printer);
  Failure StopJobs(const ServerPrinter& printer);
  std::string Unshare(const ServerPrinter& printer);
  std::string EnsurePolicy(std::string_view name, const std::string& section, bool replace);
  template <class Try>
  Failure WhenReady(Try change, std::int32_t passing);

  Run& run_;
  const PrinterArguments& arguments_;
  std::ostream& output_;
  std::ostream& errors_;
  PrinterAdmin server_;
  bool configured_ = false;  // a new configuration was written
  std::vector<ServerPrinter> printers_;
};

Result<ServerPrinter> Administration::Find() const {
  const ServerPrinter* stranger = nullptr;
  for (const ServerPrinter& printer : printers_) {
    if (!IsCalled(printer, arguments_.name)) continue;
    if (IsOurs(printer)) return printer;
    stranger = &printer;
  }
  if (stranger) return Failure{1, "'" + NameOf(*stranger) + "' is not a printer of " + GetProductName() + "."};
  return Failure{
      1, "There is no printer '" + arguments_.name + "'; tessary-printer list shows those that there are."};
}

std::string Administration::List() {
  std::vector<std::vector<std::string>> rows = {{"NAME", "QUEUE", "INSTANCE", "DEFAULT", "SHARED"}};
  for (const ServerPrinter& printer : printers_) {
    if (!IsOurs(printer)) continue;
    const std::string instance = GetInstanceFromPrinterName(NameOf(printer));
    const bool common = printer.device == kCommonDevice;
    rows.push_back({NameOf(printer), printer.queue, instance.empty() ? "-" : instance,
                    printer.isDefault ? "yes" : "no",
                    !printer.shared ? "no"
                    : common        ? "with all"
                                    : "yes"});
  }
  if (rows.size() == 1) {
    errors_ << "There is no printer yet; tessary-printer add makes one.\n";
    return {};
  }
  for (const std::vector<std::string>& row : rows) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
      std::size_t width = 0;
      for (const std::vector<std::string>& each : rows) width = std::max(width, ToUtf16(each[column]).size());
      line += row[column] + std::string(width + 2 - ToUtf16(row[column]).size(), ' ');
    }
    output_ << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
  }
  return {};
}

/// Puts the policy into the server's configuration. One that is there stays unless `replace`: an administrator
/// may have made it stricter.
std::string Administration::EnsurePolicy(std::string_view name, const std::string& section, bool replace) {
  const Result<std::string> configuration = server_.ReadConfiguration();
  if (!configuration.ok()) return configuration.failure.text;
  if (!replace && HasPolicy(configuration.value, name)) return {};
  const std::optional<std::string> changed = WithPolicy(configuration.value, name, section);
  if (!changed) return "The policy " + std::string(name) + " in the server's configuration has no end.";
  if (*changed == configuration.value) return {};
  configured_ = true;
  return server_.WriteConfiguration(*changed).text;
}

/// Makes a change to the server; while it takes over a new configuration, again as long as it is away or fails
/// with `passing`.
template <class Try>
Failure Administration::WhenReady(Try change, std::int32_t passing) {
  Failure failure = change();
  for (std::int32_t waited = 0; configured_ && waited < kPatience; waited += kPause) {
    if (failure.number != PrinterAdmin::kAway && failure.number != passing) break;
    run_.host.clock.SleepFor(kPause);
    failure = change();
  }
  return failure;
}

std::string Administration::Add() {
  std::vector<std::string> queues;
  for (const ServerPrinter& printer : printers_) {
    if (IsCalled(printer, arguments_.name)) return "There is a printer '" + NameOf(printer) + "' already.";
    queues.push_back(printer.queue);
  }
  if (const std::string problem = EnsurePolicy(kOwnPolicy, OwnPolicyText(), false); !problem.empty())
    return problem;

  // It takes jobs only when the policy protects it; what else may be wrong with it is known before that.
  const std::string queue = QueueName(arguments_.name, queues);
  PrinterChange printer, opening;
  printer.description = arguments_.name;
  printer.location = arguments_.location;
  printer.device = kOwnDevice;
  printer.shared = printer.open = false;
  opening.policy = kOwnPolicy;
  opening.open = true;
  const std::string paper = arguments_.paper.empty() ? UsualPageSize() : arguments_.paper;
  const std::string description = PrinterDescription(GetProductName(), paper);
  if (const Failure taken = WhenReady([&] { return server_.EnsureFree(queue); }, PrinterAdmin::kAway))
    return taken.text;
  Failure failure = WhenReady([&] { return server_.Add(queue, printer, description); }, PrinterAdmin::kAway);
  if (failure.number == PrinterAdmin::kUnknown)
    failure.text =
        std::string("The print server has no backend for ") + kOwnDevice + "; please install it first.";
  if (!failure) failure = WhenReady([&] { return server_.Change(queue, opening); }, PrinterAdmin::kUnknown);
  if (failure) {
    server_.Remove(queue);
    return failure.text;
  }
  return arguments_.makeDefault ? server_.MakeDefault(queue).text : "";
}

/// Takes no jobs any more, and ends those that are there.
Failure Administration::StopJobs(const ServerPrinter& printer) {
  PrinterChange closed;
  closed.open = false;
  const Failure failure =
      WhenReady([&] { return server_.Change(printer.queue, closed); }, PrinterAdmin::kUnknown);
  return failure ? failure : server_.CancelJobs(printer.queue);
}

std::string Administration::Share(const ServerPrinter& printer) {
  PrinterChange change;
  change.shared = true;
  if (arguments_.networks.empty()) {
    if (printer.device == kCommonDevice)
      if (const std::string problem = Unshare(printer); !problem.empty()) return problem;
  } else {
    for (const char* setting : {"RemoteUser", "RemoteFolder"})
      if (GetMachineSetting(run_, setting).empty())
        return std::string("The machine's settings have no ") + setting +
               ", so nothing would be printed. /etc/tessary/machine.ini is where it belongs.";
    const std::string section = SharedPolicyText(arguments_.networks);
    if (const std::string problem = EnsurePolicy(kSharedPolicy, section, true); !problem.empty())
      return problem;
    // The users of the waiting jobs have proven who they are, and those jobs would become everybody's.
    if (printer.device != kCommonDevice)
      if (const Failure failure = StopJobs(printer)) return failure.text;
    change.device = kCommonDevice;
    change.policy = kSharedPolicy;
    change.open = true;
  }
  if (const Failure failure =
          WhenReady([&] { return server_.Change(printer.queue, change); }, PrinterAdmin::kUnknown))
    return failure.text;
  if (!server_.OffersSharedPrinters())
    errors_ << "The print server itself is closed to other machines; cupsctl --share-printers opens it.\n";
  return {};
}

std::string Administration::Unshare(const ServerPrinter& printer) {
  PrinterChange change;
  change.shared = false;
  change.policy = kOwnPolicy;
  const std::string problem = EnsurePolicy(kOwnPolicy, OwnPolicyText(), false);
  if (!problem.empty()) return problem;
  if (const Failure failure =
          WhenReady([&] { return server_.Change(printer.queue, change); }, PrinterAdmin::kUnknown))
    return failure.text;
  if (printer.device != kCommonDevice) return {};
  // Nobody has proven whose the waiting jobs are, and on the printer's own device they would run as those.
  if (const Failure failure = server_.CancelJobs(printer.queue)) return failure.text;
  PrinterChange device;
  device.device = kOwnDevice;
  return server_.Change(printer.queue, device).text;
}

}  // namespace

std::int32_t PrinterCommand(Run& run, const std::vector<std::string>& arguments, std::ostream& output,
                            std::ostream& errors) {
  const PrinterArguments parsed = ParsePrinterArguments(arguments);
  if (!parsed.problem.empty()) {
    errors << "tessary-printer: " << parsed.problem << "\n" << kUsage;
    return 2;
  }
  if (parsed.help) {
    output << kUsage << kHelp;
    return 0;
  }
  const std::string problem = Administration(run, parsed, output, errors).Do();
  if (problem.empty()) return 0;
  errors << "tessary-printer: " << problem << "\n";
  return 1;
}

}  // namespace tessary
