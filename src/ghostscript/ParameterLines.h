// What all parameter files are made of.
#pragma once

#include <string>
#include <vector>

namespace tessary {

/// The switch `-sName#"value"`. Nothing inside the quotes is escaped.
std::string QuotedSwitch(const std::string& name, const std::string& value);

/// The tokens that every one begins with.
std::vector<std::string> HeadTokens(const std::string& stdoutFile);

/// One token a line, each line ended by CR LF.
std::string ParameterLines(const std::vector<std::string>& tokens);

}  // namespace tessary
