#include "ghostscript/modEncryption.h"

#include "ghostscript/ParameterLines.h"
#include "system/Conversions.h"
#include "system/modLog.h"

namespace tessary {

bool IsEncrypted(Dictionary& settings) { return !settings.Text("ownerpassword").empty(); }

std::string GetEncryptionParameters(Dictionary& settings) {
  std::vector<std::string> tokens{"-sOwnerPassword#" + settings.Text("ownerpassword")};
  const auto add = [&](const char* start, const std::string& value) {
    if (!value.empty()) tokens.push_back(start + value);
  };
  add("-sUserPassword#", settings.Text("userpassword"));
  tokens.emplace_back("-dEncryptionR#3");
  add("-dKeyLength#", settings.Text("keylength"));
  add("-dPermissions#", settings.Text("permissions"));
  return ParameterLines(tokens);
}

std::string GetOpeningPassword(Dictionary& settings) {
  const std::string userPassword = settings.Text("userpassword");
  return IsEncrypted(settings) && !userPassword.empty() ? userPassword : settings.Text("ownerpassword");
}

void LogLostEncryption(Run& run, Dictionary& settings) {
  if (IsEncrypted(settings))
    WriteLog(run, "The document is not encrypted, because the file to merge it with does not exist: " +
                      TrimBlanks(settings.Text("mergefile")));
}

}  // namespace tessary
