#include "desktop/qt/Pickers.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr int kLongestName = 255;  // bytes, on all file systems that matter

/// "All Files|*.*" as the toolkit has it: "All Files (*)".
QStringList FiltersOf(const std::string& filter) {
  const QStringList parts = ToQt(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (patterns == QLatin1String("*.*")) patterns = QStringLiteral("*");
    // The patterns in the caption would be read as the filter's own.
    const QString caption = parts[i].section(QLatin1String(" ("), 0, 0);
    filters.append(caption + QLatin1String(" (") + patterns + QLatin1Char(')'));
  }
  return filters;
}

bool IsPattern(const QString& name) {
  return name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
}

bool IsPossibleName(const QString& path) {
  const QString name = path.section(QLatin1Char('/'), -1);
  return !path.contains(QChar(0)) && name.toUtf8().size() <= kLongestName;
}

class FilePickerWindow : public QFileDialog {
 public:
  explicit FilePickerWindow(const FilePicker& picker) : QFileDialog(QApplication::activeModalWidget()) {
    setWindowTitle(ToQt(picker.title));
    setAcceptMode(picker.saves ? AcceptSave : AcceptOpen);
    setFileMode(picker.mustExist ? ExistingFile : AnyFile);
    setOption(DontConfirmOverwrite);  // whoever asked for the name asks about it too
    setNameFilters(FiltersOf(picker.filter));
    const QFileInfo suggestion(ToQt(picker.fileName));
    const QString folder = !picker.folder.empty()    ? ToQt(picker.folder)
                           : suggestion.isAbsolute() ? suggestion.absolutePath()
                                                     : QString();
    if (!folder.isEmpty() && QFileInfo(folder).isDir()) setDirectory(folder);
    if (!IsPattern(suggestion.fileName())) selectFile(suggestion.fileName());
  }
};

FileAnswer AnswerOf(const QFileDialog& window, int result) {
  const QStringList files = window.selectedFiles();
  if (result != QDialog::Accepted || files.isEmpty()) return {failures::kCancelled, {}};
  return {0, FromQt(files.front())};
}

/// Opens a picker ahead of the program that printed.
void OpenInFront(QDialog& window) {
  window.open();
  window.raise();
  window.activateWindow();
}

void PickFile(Server& server, const FilePicker& picker) {
  if (!IsPossibleName(ToQt(picker.fileName)))
    return server.Say(MessageKind::FilePicked, wire::Encode(FileAnswer{failures::kInvalidFileName, {}}));
  auto* window = new FilePickerWindow(picker);
  QObject::connect(window, &QDialog::finished, window, [&server, window](int result) {
    window->deleteLater();
    server.Say(MessageKind::FilePicked, wire::Encode(AnswerOf(*window, result)));
  });
  OpenInFront(*window);
}

void PickColor(Server& server, const ColorRequest& request) {
  const QColor color(request.color & 255, request.color >> 8 & 255, request.color >> 16 & 255);
  auto* window = new QColorDialog(color, QApplication::activeModalWidget());
  window->setWindowTitle(ToQt(request.title));
  QObject::connect(window, &QDialog::finished, window, [&server, window, before = request.color](int result) {
    window->deleteLater();
    const QColor chosen = window->selectedColor();
    const std::int32_t picked = chosen.red() + 256 * chosen.green() + 65536 * chosen.blue();
    server.Say(MessageKind::ColorPicked, wire::Encode(result == QDialog::Accepted ? picked : before));
  });
  OpenInFront(*window);
}

}  // namespace

Pickers::Pickers(Server& server) {
  server.Handle(MessageKind::PickFile,
                [&server](const std::string& content) { PickFile(server, wire::Decode<FilePicker>(content)); });
  server.Handle(MessageKind::PickColor, [&server](const std::string& content) {
    PickColor(server, wire::Decode<ColorRequest>(content));
  });
}

}  // namespace tessary
