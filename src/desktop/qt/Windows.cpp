#include "desktop/qt/Windows.h"

#include <QWidget>

namespace tessary {

void ServeWindowOrder(Server& server) {
  server.Handle(MessageKind::RaiseWindow, [](const std::string& content) {
    QWidget* widget = QWidget::find(static_cast<WId>(wire::Decode<std::int64_t>(content)));
    if (widget == nullptr) return;
    QWidget* window = widget->window();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
  });
}

}  // namespace tessary
