#include "desktop/qt/Text.h"

#include <QRegularExpression>

namespace tessary {

namespace {

constexpr qsizetype kToolTipCharacters = 1000;
constexpr QChar kBreak(0x200B);  // zero width space

}  // namespace

QString ToQt(const std::string& text) { return QString::fromStdString(text); }

std::string FromQt(const QString& text) { return text.toStdString(); }

QString Lines(const std::string& text) {
  static const QRegularExpression lineEnd(QStringLiteral("\r\n|\n\r|\r"));
  return ToQt(text).replace(lineEnd, QStringLiteral("\n"));
}

QString WithoutMnemonic(const QString& caption) {
  static const QRegularExpression mark(QStringLiteral("&(.?)"));
  return QString(caption).replace(mark, QStringLiteral("\\1"));
}

QString Breakable(QString text) {
  static const QRegularExpression longWord(QStringLiteral("(\\S{40})(?=\\S)"));
  return text.replace(longWord, QStringLiteral("\\1") + kBreak);
}

QString ToolTipOf(const QString& text) {
  if (text.isEmpty()) return {};
  const bool cut = text.size() > kToolTipCharacters;
  const QString shown = cut ? text.left(kToolTipCharacters) + QChar(0x2026) : text;
  return QStringLiteral("<qt>") + Breakable(shown).toHtmlEscaped() + QStringLiteral("</qt>");
}

}  // namespace tessary
