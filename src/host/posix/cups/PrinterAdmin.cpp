#include "host/posix/cups/PrinterAdmin.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/UniqueFd.h"

namespace tessary {

namespace {

constexpr int kConnectMilliseconds = 10000;
constexpr double kAnswerSeconds = 30;
constexpr const char* kAdminResource = "/admin/";
constexpr const char* kConfigurationResource = "/admin/conf/cupsd.conf";

// What becomes of a job whose backend fails: it goes, and the printer goes on.
constexpr const char* kErrorPolicy = "abort-job";

// How long a job may take: a dialog may wait for its user over the holidays, not only for the usual three
// hours. The server has no word for "for ever"; 0 ends a job at once.
constexpr int kJobSeconds = 30 * 24 * 3600;

const char* NoPassword(const char*, http_t*, const char*, const char*, void*) { return nullptr; }
int GiveUp(http_t*, void*) { return 0; }

/// A file in memory that holds `text`, read from its beginning; -1 if there can be none.
UniqueFd MemoryFile(const std::string& text) {
  UniqueFd file(memfd_create("printer", MFD_CLOEXEC));
  for (std::size_t done = 0; file && done < text.size();) {
    const ssize_t count = write(file.Get(), text.data() + done, text.size() - done);
    if (count <= 0) return {};
    done += static_cast<std::size_t>(count);
  }
  if (file) lseek(file.Get(), 0, SEEK_SET);
  return file;
}

std::string ReadAll(int file) {
  std::string text;
  std::array<char, 4096> block;
  lseek(file, 0, SEEK_SET);
  for (ssize_t count; (count = read(file, block.data(), block.size())) > 0;)
    text.append(block.data(), static_cast<std::size_t>(count));
  return text;
}

/// The printers of an answer, whose attributes stand in one row with a gap between two printers.
std::vector<ServerPrinter> ReadPrinters(const Cups& cups, ipp_t* answer) {
  std::vector<ServerPrinter> printers;
  bool inPrinter = false;
  for (ipp_attribute_t* attribute = cups.firstAttribute(answer); attribute;
       attribute = cups.nextAttribute(answer)) {
    const char* name = cups.attributeName(attribute);
    if (cups.attributeGroup(attribute) != IPP_TAG_PRINTER || !name) {
      inPrinter = false;
      continue;
    }
    if (!inPrinter) printers.emplace_back();
    inPrinter = true;
    ServerPrinter& printer = printers.back();
    const auto text = [&] {
      const char* value = cups.getString(attribute, 0, nullptr);
      return std::string(value ? value : "");
    };
    if (!std::strcmp(name, "printer-name")) printer.queue = text();
    if (!std::strcmp(name, "printer-info")) printer.description = text();
    if (!std::strcmp(name, "device-uri")) printer.device = text();
    if (!std::strcmp(name, "printer-is-shared")) printer.shared = cups.getBoolean(attribute, 0) != 0;
  }
  return printers;
}

}  // namespace

PrinterAdmin::~PrinterAdmin() { Disconnect(); }

void PrinterAdmin::Disconnect() {
  if (server_) cups_->close(server_);
  server_ = nullptr;
}

Failure PrinterAdmin::Connect() {
  if (!cups_) cups_.emplace();
  if (!*cups_) return {ENOSYS, "CUPS is not installed on this machine."};
  if (server_) return {};
  cups_->setPasswordCallback(NoPassword, nullptr);
  server_ = cups_->connect(cups_->server(), cups_->port(), nullptr, AF_UNSPEC, cups_->encryption(), 1,
                           kConnectMilliseconds, nullptr);
  if (!server_) return {kAway, "The print server does not answer: " + std::string(cups_->lastErrorText())};
  cups_->setTimeout(server_, kAnswerSeconds, GiveUp, nullptr);
  return {};
}

Failure PrinterAdmin::LastFailure() const {
  switch (const ipp_status_t status = cups_->lastError()) {
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
      return {status, "Only an administrator of the print server may do that. Try it with sudo."};
    default:
      return {status, "The print server says: " + std::string(cups_->lastErrorText())};
  }
}

Result<ipp_t*> PrinterAdmin::Send(ipp_t* request, const char* resource, int document) {
  ipp_t* answer = cups_->doIoRequest(server_, request, resource, document, -1);
  if (cups_->lastError() <= IPP_STATUS_OK_CONFLICTING) return answer;
  Failure failure = LastFailure();
  if (!answer && failure.number != IPP_STATUS_ERROR_FORBIDDEN) {
    // The connection broke, and libcups has no words for that.
    Disconnect();
    failure = {kAway, "The print server ended the connection."};
  }
  cups_->deleteMessage(answer);
  return failure;
}

Failure PrinterAdmin::SendAndForget(ipp_t* request, int document) {
  const Result<ipp_t*> answer = Send(request, kAdminResource, document);
  cups_->deleteMessage(answer.value);
  return answer.failure;
}

ipp_t* PrinterAdmin::NewRequest(ipp_op_t operation, const std::string& queue) {
  ipp_t* request = cups_->newRequest(operation);
  if (!queue.empty()) {
    std::array<char, HTTP_MAX_URI> uri{};
    cups_->assembleUri(HTTP_URI_CODING_ALL, uri.data(), uri.size(), "ipp", nullptr, "localhost", 0,
                       "/printers/%s", queue.c_str());
    cups_->addString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
  }
  cups_->addString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cups_->user());
  return request;
}

void PrinterAdmin::AddChange(ipp_t* request, const PrinterChange& change) {
  const struct {
    const char* name;
    ipp_tag_t type;
    const std::optional<std::string>& value;
  } texts[] = {{"printer-info", IPP_TAG_TEXT, change.description},
               {"printer-location", IPP_TAG_TEXT, change.location},
               {"device-uri", IPP_TAG_URI, change.device},
               {"printer-op-policy", IPP_TAG_NAME, change.policy}};
  for (const auto& text : texts)
    if (text.value)
      cups_->addString(request, IPP_TAG_PRINTER, text.type, text.name, nullptr, text.value->c_str());
  if (change.shared)
    cups_->addBoolean(request, IPP_TAG_PRINTER, "printer-is-shared", static_cast<char>(*change.shared));
  if (!change.open) return;
  cups_->addBoolean(request, IPP_TAG_PRINTER, "printer-is-accepting-jobs", static_cast<char>(*change.open));
  cups_->addInteger(request, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-state",
                    *change.open ? IPP_PSTATE_IDLE : IPP_PSTATE_STOPPED);
}

std::string PrinterAdmin::AskForDefault() {
  const Result<ipp_t*> answer = Send(NewRequest(IPP_OP_CUPS_GET_DEFAULT, ""), "/");
  if (!answer.ok()) return {};  // there is none
  const std::vector<ServerPrinter> printers = ReadPrinters(*cups_, answer.value);
  cups_->deleteMessage(answer.value);
  return printers.empty() ? "" : printers.front().queue;
}

Result<std::vector<ServerPrinter>> PrinterAdmin::Printers() {
  if (Failure failure = Connect()) return failure;
  static constexpr const char* kWanted[] = {"printer-name", "printer-info", "device-uri", "printer-is-shared"};
  // Without a user: the server leaves out the printers that the user may not print to.
  ipp_t* request = cups_->newRequest(IPP_OP_CUPS_GET_PRINTERS);
  cups_->addStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                    static_cast<int>(std::size(kWanted)), nullptr, kWanted);
  const Result<ipp_t*> answer = Send(request, "/");
  if (answer.failure.number == IPP_STATUS_ERROR_NOT_FOUND) return std::vector<ServerPrinter>();
  if (!answer.ok()) return answer.failure;
  std::vector<ServerPrinter> printers = ReadPrinters(*cups_, answer.value);
  cups_->deleteMessage(answer.value);
  const std::string usual = AskForDefault();
  for (ServerPrinter& printer : printers) printer.isDefault = !usual.empty() && printer.queue == usual;
  return printers;
}

Failure PrinterAdmin::EnsureFree(const std::string& queue) {
  if (Failure failure = Connect()) return failure;
  const Result<ipp_t*> answer = Send(NewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, queue), "/");
  cups_->deleteMessage(answer.value);
  if (answer.failure.number == IPP_STATUS_ERROR_NOT_FOUND) return {};
  if (!answer.ok()) return answer.failure;
  return {EEXIST, "The print server has a queue '" + queue + "' already."};
}

Failure PrinterAdmin::Add(const std::string& queue, const PrinterChange& printer,
                          const std::string& description) {
  if (Failure failure = Connect()) return failure;
  const UniqueFd document = MemoryFile(description);
  if (!document) return {errno, "There is no memory for the printer's description."};
  ipp_t* request = NewRequest(IPP_OP_CUPS_ADD_MODIFY_PRINTER, queue);
  AddChange(request, printer);
  cups_->addString(request, IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-error-policy", nullptr, kErrorPolicy);
  cups_->addInteger(request, IPP_TAG_PRINTER, IPP_TAG_INTEGER, "job-cancel-after-default", kJobSeconds);
  return SendAndForget(request, document.Get());
}

Failure PrinterAdmin::Change(const std::string& queue, const PrinterChange& change) {
  if (Failure failure = Connect()) return failure;
  ipp_t* request = NewRequest(IPP_OP_CUPS_ADD_MODIFY_PRINTER, queue);
  AddChange(request, change);
  return SendAndForget(request);
}

Failure PrinterAdmin::Remove(const std::string& queue) {
  if (Failure failure = Connect()) return failure;
  return SendAndForget(NewRequest(IPP_OP_CUPS_DELETE_PRINTER, queue));
}

Failure PrinterAdmin::MakeDefault(const std::string& queue) {
  if (Failure failure = Connect()) return failure;
  return SendAndForget(NewRequest(IPP_OP_CUPS_SET_DEFAULT, queue));
}

Failure PrinterAdmin::CancelJobs(const std::string& queue) {
  if (Failure failure = Connect()) return failure;
  return SendAndForget(NewRequest(IPP_OP_CANCEL_JOBS, queue));
}

Result<std::string> PrinterAdmin::ReadConfiguration() {
  if (Failure failure = Connect()) return failure;
  const UniqueFd file = MemoryFile("");
  if (cups_->getFile(server_, kConfigurationResource, file.Get()) != HTTP_STATUS_OK) return LastFailure();
  return ReadAll(file.Get());
}

Failure PrinterAdmin::WriteConfiguration(const std::string& text) {
  if (Failure failure = Connect()) return failure;
  const UniqueFd file = MemoryFile(text);
  if (!file) return {errno, "There is no memory for the server's configuration."};
  if (cups_->putFile(server_, kConfigurationResource, file.Get()) != HTTP_STATUS_CREATED) return LastFailure();
  // The server takes its new configuration when nobody is connected any more.
  Disconnect();
  return {};
}

bool PrinterAdmin::OffersSharedPrinters() {
  if (Connect()) return false;
  int count = 0;
  cups_option_t* settings = nullptr;
  if (!cups_->getServerSettings(server_, &count, &settings)) return false;
  const char* shares = cups_->getOption(CUPS_SERVER_SHARE_PRINTERS, count, settings);
  const bool offers = shares && !std::strcmp(shares, "1");
  cups_->freeOptions(count, settings);
  return offers;
}

}  // namespace tessary
