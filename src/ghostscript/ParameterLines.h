// The two forms that all parameter files are made of.
#pragma once

#include <string>
#include <vector>

namespace tessary {

/// The switch `-sName#"value"`. Nothing inside the quotes is escaped.
std::string QuotedSwitch(const std::string& name, const std::string& value);

/// One token a line, each line ended by CR LF.
std::string ParameterLines(const std::vector<std::string>& tokens);

}  // namespace tessary
