// Every label that a language file may hold, once: its key, the text that the program shows without a label,
// and where it is seen. The texts themselves stand, with their tags, where they are used; tests hold them and
// the language files against these tables.
#pragma once

#include <span>
#include <string_view>

namespace tessary {

enum class LabelUse {
  Dialog,   ///< seen in a dialog: on a control, in a list, as a title or in a box that the dialog shows
  Message,  ///< seen without a dialog: in a box, the log, the macro list or the tray
  Unused,   ///< a key of older language files
};

struct Label {
  std::string_view key;
  std::string_view text;  ///< the default; %1 stands for a value that the program puts in
  LabelUse use;
  std::string_view place;
};

/// All labels, by number. A key that two dialogs show with different defaults has a row for each.
std::span<const Label> Labels();

/// The topics of the quick help. A language file holds each under "QH_" and its name: the heading, a line end
/// and the help. There are no default texts.
std::span<const std::string_view> QuickHelpTopics();

/// The key of the Windows abbreviation of the file's language, such as "JPN". It is never shown.
inline constexpr std::string_view kLanguageKey = "WindowsLanguage";

}  // namespace tessary
