// The administration of the print server: its printers, its default, its configuration.
//
// All of it speaks as the user of this process, who proves it over the server's local socket; nobody is asked
// for a password. A failure has a text for people, and leaves the server as it was, where nothing else is said.
#pragma once

#include <cerrno>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/Failure.h"
#include "host/posix/cups/Cups.h"

namespace tessary {

struct ServerPrinter {
  std::string queue;        ///< its name on the server
  std::string description;  ///< its name for people; may be empty
  std::string device;       ///< the address of the device: "tessary:/own"
  bool shared = false;      ///< offered to other machines
  bool isDefault = false;   ///< the server's default printer
};

/// What a printer becomes; nothing means that it stays.
struct PrinterChange {
  std::optional<std::string> description, location, device, policy;
  std::optional<bool> shared;
  std::optional<bool> open;  ///< takes jobs and prints them
};

class PrinterAdmin {
 public:
  PrinterAdmin() = default;
  ~PrinterAdmin();
  PrinterAdmin(const PrinterAdmin&) = delete;
  PrinterAdmin& operator=(const PrinterAdmin&) = delete;

  // Numbers of failures that can pass while the server takes over a new configuration.
  static constexpr std::int32_t kAway = ECONNREFUSED;                      ///< it does not answer
  static constexpr std::int32_t kUnknown = IPP_STATUS_ERROR_NOT_POSSIBLE;  ///< a policy, or the device

  Result<std::vector<ServerPrinter>> Printers();
  /// Nothing when there is no queue of that name, whatever it is.
  Failure EnsureFree(const std::string& queue);
  /// Makes the printer `queue`; `description` is its PPD. On a failure the server may have half of it.
  Failure Add(const std::string& queue, const PrinterChange& printer, const std::string& description);
  Failure Change(const std::string& queue, const PrinterChange& change);
  /// Its jobs are gone with it.
  Failure Remove(const std::string& queue);
  Failure MakeDefault(const std::string& queue);
  /// Ends the jobs that wait and that which is printed, of all users.
  Failure CancelJobs(const std::string& queue);

  /// The text of the server's configuration, cupsd.conf.
  Result<std::string> ReadConfiguration();
  /// Replaces it: the server writes a new file and takes it over, or nothing happens.
  Failure WriteConfiguration(const std::string& text);
  /// True if the server offers its shared printers to other machines.
  bool OffersSharedPrinters();

 private:
  /// Empty when the server can be asked: then `server_` is its connection.
  Failure Connect();
  void Disconnect();
  /// Sends `request`, which is deleted, with the bytes of the file `document` behind it (-1: none). The answer
  /// is the caller's to delete; null on a failure.
  Result<ipp_t*> Send(ipp_t* request, const char* resource, int document = -1);
  ipp_t* NewRequest(ipp_op_t operation, const std::string& queue);
  Failure SendAndForget(ipp_t* request, int document = -1);
  void AddChange(ipp_t* request, const PrinterChange& change);
  [[nodiscard]] Failure LastFailure() const;
  std::string AskForDefault();

  std::optional<Cups> cups_;  // nothing: not needed yet
  http_t* server_ = nullptr;  // null: not connected
};

}  // namespace tessary
