#include "desktop/qt/Program.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <fcntl.h>
#include <unistd.h>

#include "desktop/qt/FormWindow.h"
#include "desktop/qt/MessageBoxes.h"
#include "desktop/qt/Pickers.h"
#include "desktop/qt/Pictures.h"
#include "desktop/qt/Server.h"
#include "desktop/qt/Style.h"
#include "desktop/qt/Tray.h"
#include "desktop/qt/Windows.h"

namespace tessary {

namespace {

/// What a toolkit has to say is of no use to somebody who prints; without a display it would end with a core
/// dump.
void HandleToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type == QtFatalMsg) _exit(1);
}

/// Takes the line off the standard output, so that nothing printed by a library gets into it.
UniqueFd TakeLine() {
  UniqueFd line(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  dup2(STDERR_FILENO, STDOUT_FILENO);
  return line;
}

/// False for platforms of the toolkit that paint where nobody can look: a dialog there would wait for ever.
bool CanBeSeen() {
  const QString platform = QGuiApplication::platformName();
  return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

}  // namespace

int RunDesktopProgram(int argc, char** argv) {
  qInstallMessageHandler(HandleToolkitMessage);
  UniqueFd line = TakeLine();
  if (!line) return 1;
  const QApplication application(argc, argv);
  if (!CanBeSeen()) return 1;
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new Style);
  QTranslator words;  // of the toolkit's own buttons and pickers
  if (words.load(QLocale::system(), QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QApplication::installTranslator(&words);
  QApplication::setWindowIcon(PictureIcon("tessary"));
  Server server(Channel(std::move(line)));
  const MessageBoxes boxes(server);
  const FormWindows forms(server);
  const Pickers pickers(server);
  const Tray tray(server);
  ServeWindowOrder(server);
  server.Notify(MessageKind::Ready, {});
  return QApplication::exec();
}

}  // namespace tessary
