#include "desktop/qt/MessageBoxes.h"

#include <QMessageBox>

namespace tessary {

MessageBoxes::MessageBoxes(Server& server) {
  server.Handle(MessageKind::ShowBox, [&server](const std::string& content) {
    const auto request = wire::Decode<BoxRequest>(content);
    auto* window = new QMessageBox;
    window->setTextFormat(Qt::PlainText);
    window->setText(QString::fromStdString(request.text));
    window->setWindowTitle(QString::fromStdString(request.caption));
    QObject::connect(window, &QDialog::finished, [&server, window] {
      window->deleteLater();
      server.Say(MessageKind::BoxAnswered, wire::Encode(box::kAnswerOk));
    });
    window->show();
  });
}

}  // namespace tessary
