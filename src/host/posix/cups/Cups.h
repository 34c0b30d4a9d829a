// The functions of libcups that are used here.
//
// Loading the library costs more than the rest of the program's start and few runs ask for printers, so that it
// is loaded when they do, and stays. A function has its own name without the prefix that its family shares.
#pragma once

#include <cups/adminutil.h>
#include <cups/cups.h>
#include <cups/http.h>
#include <cups/ipp.h>

namespace tessary {

/// The table of functions, filled by the constructor. Making a second one costs next to nothing.
class Cups {
 private:
  /// The address of a function, for whatever type of pointer wants it.
  struct Symbol {
    void* address;
    template <class Function>
    operator Function*() const {  // NOLINT(google-explicit-constructor)
      return reinterpret_cast<Function*>(address);
    }
  };

  [[nodiscard]] Symbol Find(const char* name);

  void* library_;  // these two stand before the pointers because their initialisers use them
  bool complete_;

 public:
  Cups();
  /// False where libcups is missing or lacks one of the functions; nothing here may be called then.
  explicit operator bool() const { return complete_; }

  // The connection, and where it leads.
  decltype(&::cupsServer) server = Find("cupsServer");
  decltype(&::ippPort) port = Find("ippPort");
  decltype(&::cupsEncryption) encryption = Find("cupsEncryption");
  decltype(&::cupsUser) user = Find("cupsUser");
  decltype(&::httpConnect2) connect = Find("httpConnect2");
  decltype(&::httpClose) close = Find("httpClose");
  decltype(&::httpSetTimeout) setTimeout = Find("httpSetTimeout");
  decltype(&::httpAssembleURIf) assembleUri = Find("httpAssembleURIf");
  decltype(&::cupsSetPasswordCB2) setPasswordCallback = Find("cupsSetPasswordCB2");

  // Questions and their answers.
  decltype(&::cupsDoRequest) doRequest = Find("cupsDoRequest");
  decltype(&::cupsDoIORequest) doIoRequest = Find("cupsDoIORequest");
  decltype(&::cupsLastError) lastError = Find("cupsLastError");
  decltype(&::cupsLastErrorString) lastErrorText = Find("cupsLastErrorString");
  decltype(&::cupsGetFd) getFile = Find("cupsGetFd");
  decltype(&::cupsPutFd) putFile = Find("cupsPutFd");
  decltype(&::cupsAdminGetServerSettings) getServerSettings = Find("cupsAdminGetServerSettings");
  decltype(&::cupsGetOption) getOption = Find("cupsGetOption");
  decltype(&::cupsFreeOptions) freeOptions = Find("cupsFreeOptions");

  // The attributes of a question or an answer.
  decltype(&::ippNewRequest) newRequest = Find("ippNewRequest");
  decltype(&::ippDelete) deleteMessage = Find("ippDelete");
  decltype(&::ippAddString) addString = Find("ippAddString");
  decltype(&::ippAddStrings) addStrings = Find("ippAddStrings");
  decltype(&::ippAddInteger) addInteger = Find("ippAddInteger");
  decltype(&::ippAddBoolean) addBoolean = Find("ippAddBoolean");
  decltype(&::ippGetStatusCode) statusCode = Find("ippGetStatusCode");
  decltype(&::ippFirstAttribute) firstAttribute = Find("ippFirstAttribute");
  decltype(&::ippNextAttribute) nextAttribute = Find("ippNextAttribute");
  decltype(&::ippGetName) attributeName = Find("ippGetName");
  decltype(&::ippGetGroupTag) attributeGroup = Find("ippGetGroupTag");
  decltype(&::ippGetValueTag) attributeType = Find("ippGetValueTag");
  decltype(&::ippGetCount) attributeCount = Find("ippGetCount");
  decltype(&::ippGetString) getString = Find("ippGetString");
  decltype(&::ippGetInteger) getInteger = Find("ippGetInteger");
  decltype(&::ippGetBoolean) getBoolean = Find("ippGetBoolean");
};

}  // namespace tessary
