#include "ghostscript/ParameterLines.h"

namespace tessary {

std::string QuotedSwitch(const std::string& name, const std::string& value) {
  return "-s" + name + "#\"" + value + "\"";
}

std::vector<std::string> HeadTokens(const std::string& stdoutFile) {
  return {"-q", "-dSAFER", "-dNOPAUSE", "-dBATCH", QuotedSwitch("stdout", stdoutFile)};
}

std::string ParameterLines(const std::vector<std::string>& tokens) {
  std::string text;
  for (const std::string& token : tokens) text.append(token).append("\r\n");
  return text;
}

}  // namespace tessary
