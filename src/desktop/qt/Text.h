// Texts on the screen. All of them are data, never markup.
#pragma once

#include <QString>
#include <string>

namespace tessary {

QString ToQt(const std::string& text);
std::string FromQt(const QString& text);

/// With line feeds for line ends of all kinds.
QString Lines(const std::string& text);

/// The caption without the "&" before its letter; "&&" is a "&".
QString WithoutMnemonic(const QString& caption);

/// With places to break a line at in each word that is longer than a line could be.
QString Breakable(QString text);

/// Text that shows as it is where markup would be read, and wraps even where it has no blanks. One that is
/// longer than people read is cut.
QString ToolTipOf(const QString& text);

}  // namespace tessary
