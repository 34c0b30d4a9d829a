// Texts that a user sees. In the program they are tagged, `[<key>]<default text>`, and a label of that key
// stands in for the default. The labels are those of the file "labels.txt" in the program folder; without the
// file everything is shown in its default text. ui/Labels.h lists the keys.
#pragma once

#include <string>
#include <string_view>

#include "system/Run.h"
#include "ui/Form.h"

namespace tessary {

/// Reads the labels into `run.labels`; to be called once, before anything is shown. A line of the file is
/// `key=value`, both unescaped and neither trimmed; a line without "=" is skipped and a later line wins over an
/// earlier one of its key. The label "WindowsLanguage" chooses the character set. No file means no labels;
/// a file that cannot be read raises the platform's error.
void LoadLabels(Run& run);

/// `text` as it is meant in a language file: "\n" and "\t" both stand for CR LF, and a backslash before
/// anything else for that character. A backslash at the end is dropped.
std::string UnescapeLabelText(std::string_view text);

/// The label of a tagged text, or its default text where there is no label or an empty one. A text without a
/// tag is given back as it is. In a debug run a text without a label keeps its tag, to show what a language
/// lacks.
std::string Translate(Run& run, const std::string& text);

/// Translates caption and tool tip of a control and of everything in it, and sets the character set of their
/// fonts where one is forced. Texts of fields and entries of lists are not touched.
void LocalizeControl(Run& run, Control& control);

/// True when the marker file `debug.txt` lies in the program folder.
bool IsDebugRun(Run& run);

}  // namespace tessary
