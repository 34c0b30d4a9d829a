// From source text to tokens.
#pragma once

#include <string_view>
#include <vector>

#include "script/Token.h"

namespace tessary::script {

/// All tokens of a text, the last one End. Never fails: what cannot be read becomes a Bad token, and the reader
/// of the tokens reports it when it gets there. The tokens' texts point into `source`.
std::vector<Token> Tokenize(std::string_view source);

/// The longest identifier, the language's own limit.
inline constexpr std::size_t kMaxNameLength = 255;

}  // namespace tessary::script
