// The file in which a desktop notes where the user's well-known folders are.
#pragma once

#include <string>
#include <string_view>

namespace tessary {

/// The folder that `text`, the content of a user-dirs.dirs file, names as `key` ("XDG_DESKTOP_DIR"); empty when
/// it names none. A folder is an absolute path or begins with "$HOME/"; "$HOME/" alone says that the user has
/// no such folder and gives the home folder itself.
std::string FindUserDir(std::string_view text, std::string_view key, const std::string& home);

}  // namespace tessary
