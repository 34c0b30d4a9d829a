#include "desktop/qt/MessageBoxes.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextEdit>

#include "desktop/qt/BoxIcons.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

constexpr std::int32_t kButtonsMask = 15;
constexpr std::int32_t kIconMask = 0xF0;
constexpr std::int32_t kDefaultShift = 8;  // the bits above: 0 for the first button, 1 for the second ...
constexpr std::int32_t kDefaultMask = 3;
constexpr qsizetype kLongestText = 100'000;
constexpr int kWidestInLetters = 75;

struct Answer {
  QDialogButtonBox::StandardButton button;
  std::int32_t answer;
};

/// The buttons of a box, from left to right. The last one is the harmless one.
std::vector<Answer> AnswersOf(std::int32_t buttons) {
  constexpr Answer kOk{QDialogButtonBox::Ok, box::kAnswerOk};
  constexpr Answer kCancel{QDialogButtonBox::Cancel, box::kAnswerCancel};
  constexpr Answer kRetry{QDialogButtonBox::Retry, box::kAnswerRetry};
  constexpr Answer kYes{QDialogButtonBox::Yes, box::kAnswerYes};
  constexpr Answer kNo{QDialogButtonBox::No, box::kAnswerNo};
  switch (buttons) {
    case box::kYesNoCancel:
      return {kYes, kNo, kCancel};
    case box::kYesNo:
      return {kYes, kNo};
    case box::kRetryCancel:
      return {kRetry, kCancel};
    default:
      return {kOk};
  }
}

/// Text to read, and to copy: as wide as its lines up to a limit, then wrapped wherever it must be, and with a
/// scroll bar where the screen is too small for it.
class BoxText : public QTextEdit {
 public:
  explicit BoxText(const QString& text) {
    setReadOnly(true);
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setPlainText(text.left(kLongestText));
    document()->setDocumentMargin(0);
    setFixedSize(FittingSize());
  }

 private:
  QSize FittingSize() {
    document()->setTextWidth(-1);
    const int natural = static_cast<int>(document()->idealWidth()) + 2;
    const int width = std::min(natural, kWidestInLetters * fontMetrics().averageCharWidth());
    document()->setTextWidth(width);
    const int tallest = screen()->availableSize().height() * 3 / 5;
    const int height = static_cast<int>(document()->size().height()) + 2;
    if (height <= tallest) return {width, height};
    return {width + verticalScrollBar()->sizeHint().width(), tallest};
  }
};

class BoxWindow : public QDialog {
 public:
  explicit BoxWindow(const BoxRequest& request)
      : QDialog(QApplication::activeModalWidget()),
        answers_(AnswersOf(request.flags & kButtonsMask)),
        answer_(answers_.back().answer),
        text_(new BoxText(Lines(request.text))) {
    setWindowTitle(ToQt(request.caption));
    setWindowModality(Qt::ApplicationModal);
    const int space = style()->pixelMetric(QStyle::PM_LayoutLeftMargin) + fontMetrics().height() / 3;
    auto* message = new QHBoxLayout;
    message->setSpacing(space);
    if ((request.flags & kIconMask) != 0) message->addWidget(MakeIcon(request.flags), 0, Qt::AlignTop);
    const bool isLow = text_->height() < style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    message->addWidget(text_, 0, isLow ? Qt::AlignVCenter : Qt::AlignTop);
    message->addStretch(1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(space, space, space, space);
    rows->setSpacing(space);
    rows->addLayout(message);
    rows->addWidget(MakeButtons(request.flags));
    layout()->setSizeConstraint(QLayout::SetFixedSize);
  }

  [[nodiscard]] std::int32_t Answered() const { return answer_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    const bool scrolls =
        key == Qt::Key_PageUp || key == Qt::Key_PageDown || key == Qt::Key_Up || key == Qt::Key_Down;
    if (scrolls || event->matches(QKeySequence::Copy))
      QApplication::sendEvent(text_, event);
    else
      QDialog::keyPressEvent(event);
  }

 private:
  QLabel* MakeIcon(std::int32_t flags) {
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    auto* icon = new QLabel(this);
    icon->setPixmap(BoxIcon(flags & kIconMask, size, devicePixelRatio()));
    return icon;
  }

  QDialogButtonBox* MakeButtons(std::int32_t flags) {
    auto* buttons = new QDialogButtonBox(this);
    const auto first = static_cast<std::size_t>(flags >> kDefaultShift & kDefaultMask);
    for (std::size_t i = 0; i < answers_.size(); ++i) {
      QPushButton* button = buttons->addButton(answers_[i].button);
      connect(button, &QPushButton::clicked, this, [this, answer = answers_[i].answer] {
        answer_ = answer;
        accept();
      });
      if (i != std::min(first, answers_.size() - 1)) continue;
      button->setDefault(true);
      button->setFocus();
    }
    return buttons;
  }

  std::vector<Answer> answers_;
  std::int32_t answer_;
  BoxText* text_;
};

}  // namespace

MessageBoxes::MessageBoxes(Server& server) {
  server.Handle(MessageKind::ShowBox, [&server](const std::string& content) {
    const auto request = wire::Decode<BoxRequest>(content);
    auto* window = new BoxWindow(request);
    QObject::connect(window, &QDialog::finished, window, [&server, window] {
      window->deleteLater();
      server.Say(MessageKind::BoxAnswered, wire::Encode(window->Answered()));
    });
    window->show();
    window->raise();
    window->activateWindow();
  });
}

}  // namespace tessary
