#include "host/posix/cups/CupsClient.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace tessary {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// libcups looks this often whether it has waited enough.
constexpr double kGlanceSeconds = 0.25;

const char* NoPassword(const char*, http_t*, const char*, const char*, void*) { return nullptr; }

int GoOn(http_t*, void* deadline) {
  return SteadyClock::now() < *static_cast<SteadyClock::time_point*>(deadline);
}

int NumberOf(ipp_status_t status) {
  switch (status) {
    case IPP_STATUS_ERROR_NOT_FOUND:
    case IPP_STATUS_ERROR_GONE:
      return ENOENT;
    case IPP_STATUS_ERROR_FORBIDDEN:
    case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
    case IPP_STATUS_ERROR_NOT_AUTHORIZED:
    case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
      return EACCES;
    case IPP_STATUS_ERROR_NOT_POSSIBLE:
      return EINVAL;
    case IPP_STATUS_ERROR_OPERATION_NOT_SUPPORTED:
      return EOPNOTSUPP;
    default:
      return EIO;
  }
}

CupsValue ValueOf(const Cups& cups, ipp_attribute_t* attribute) {
  CupsValue value;
  switch (cups.attributeType(attribute)) {
    case IPP_TAG_INTEGER:
    case IPP_TAG_ENUM:
      value.number = cups.getInteger(attribute, 0);
      break;
    case IPP_TAG_BOOLEAN:
      value.number = cups.getBoolean(attribute, 0);
      break;
    default:
      for (int i = 0; i < cups.attributeCount(attribute); ++i)
        if (const char* text = cups.getString(attribute, i, nullptr)) value.texts.emplace_back(text);
  }
  return value;
}

/// The printers and jobs of an answer; other groups are about the answer itself.
std::vector<CupsAttributes> ReadAnswer(const Cups& cups, ipp_t* answer) {
  std::vector<CupsAttributes> things;
  bool inside = false;
  for (auto* attribute = cups.firstAttribute(answer); attribute != nullptr;
       attribute = cups.nextAttribute(answer)) {
    const ipp_tag_t group = cups.attributeGroup(attribute);
    const char* name = cups.attributeName(attribute);
    // Things of one kind are parted by an attribute without a name.
    if (name == nullptr || (group != IPP_TAG_PRINTER && group != IPP_TAG_JOB)) {
      inside = false;
      continue;
    }
    if (!inside) things.emplace_back();
    inside = true;
    things.back()[name] = ValueOf(cups, attribute);
  }
  return things;
}

ipp_t* NewRequest(const Cups& cups, const CupsQuestion& question) {
  ipp_t* request = cups.newRequest(question.operation);
  if (!question.queue.empty()) {
    char address[HTTP_MAX_URI];
    cups.assembleUri(HTTP_URI_CODING_ALL, address, sizeof address, "ipp", nullptr, "localhost", 0,
                     "/printers/%s", question.queue.c_str());
    cups.addString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address);
  }
  if (question.job != 0) cups.addInteger(request, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", question.job);
  cups.addString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cups.user());
  if (!question.wanted.empty())
    cups.addStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                    static_cast<int>(question.wanted.size()), nullptr, question.wanted.data());
  return request;
}

}  // namespace

/// A conversation with a limit of time; the object stays where it is made.
class CupsClient::Connection {
 public:
  explicit Connection(CupsClient& client) : client_(client), cups_(client.Library()) {
    if (!cups_ || SteadyClock::now() < client_.silentUntil_) return;
    cups_.setPasswordCallback(NoPassword, nullptr);
    http_ = cups_.connect(cups_.server(), cups_.port(), nullptr, AF_UNSPEC, cups_.encryption(), 1,
                          static_cast<int>(kPatience.count()), nullptr);
    if (http_ != nullptr) cups_.setTimeout(http_, kGlanceSeconds, GoOn, &deadline_);
  }
  ~Connection() {
    if (http_ != nullptr) cups_.close(http_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] http_t* http() const { return http_; }
  /// Why there was no answer. A server that said nothing is left alone from now on.
  Failure GiveUp() {
    if (!cups_) return {ENOSYS, "There is no CUPS on this machine"};
    const auto now = SteadyClock::now();
    if (now >= deadline_) client_.silentUntil_ = now + kSilence;
    if (now < client_.silentUntil_) return {ETIMEDOUT, "The print server does not answer"};
    if (http_ == nullptr) return {ECONNREFUSED, "There is no print server"};
    return {NumberOf(cups_.lastError()), cups_.lastErrorText()};
  }

 private:
  CupsClient& client_;
  const Cups& cups_;
  SteadyClock::time_point deadline_ = SteadyClock::now() + kPatience;
  http_t* http_ = nullptr;
};

const Cups& CupsClient::Library() {
  if (!library_) library_.emplace();
  return *library_;
}

Result<std::vector<CupsAttributes>> CupsClient::Ask(const CupsQuestion& question) {
  Connection connection(*this);
  if (connection.http() == nullptr) return connection.GiveUp();
  const Cups& cups = Library();
  const std::unique_ptr<ipp_t, decltype(cups.deleteMessage)> answer(
      cups.doRequest(connection.http(), NewRequest(cups, question), question.resource), cups.deleteMessage);
  if (!answer || cups.statusCode(answer.get()) >= IPP_STATUS_REDIRECTION_OTHER_SITE) return connection.GiveUp();
  return ReadAnswer(cups, answer.get());
}

bool CupsClient::MayAdminister() {
  Connection connection(*this);
  if (connection.http() == nullptr) return false;
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const http_status_t status = Library().getFile(connection.http(), "/admin/conf/cupsd.conf", nowhere);
  close(nowhere);
  if (status == HTTP_STATUS_OK) return true;
  connection.GiveUp();
  return false;
}

}  // namespace tessary
