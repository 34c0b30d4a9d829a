// What holds other controls: panels, frames and tab strips.
#include <QGroupBox>
#include <QGuiApplication>
#include <QMap>
#include <QScreen>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/PageArea.h"
#include "desktop/qt/Text.h"

namespace tessary {

namespace {

class PanelView : public ControlView {
 public:
  explicit PanelView(QWidget* panel) : ControlView(panel, {}) {
    panel->setFocusPolicy(Qt::NoFocus);
    // A page that is not on display keeps its room, so that all pages of a strip get the same.
    QSizePolicy policy = panel->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    panel->setSizePolicy(policy);
  }

 protected:
  void Fill(const Control&) override {}
};

/// A panel of fixed height that stands out from what is around it, and scrolls.
class PaneView : public ControlView {
 public:
  PaneView(PageArea* pane, int height) : ControlView(pane, {}), pane_(pane) {
    pane->setFrameShape(QFrame::StyledPanel);
    pane->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pane->setFixedHeight(height);
    pane->setBackgroundRole(QPalette::Base);
    pane->viewport()->setAutoFillBackground(true);
  }

  [[nodiscard]] QWidget* Container(const Control&) override { return pane_->Content(); }

 protected:
  void Fill(const Control&) override {}

 private:
  PageArea* pane_;
};

class FrameView : public ControlView {
 public:
  explicit FrameView(QGroupBox* frame) : ControlView(frame, {}), frame_(frame) {}

 protected:
  void Fill(const Control& control) override { frame_->setTitle(ToQt(control.caption)); }

 private:
  QGroupBox* frame_;
};

/// Wide enough for all its tabs, as far as the screen is.
class WideTabWidget : public QTabWidget {
 public:
  using QTabWidget::QTabWidget;

  [[nodiscard]] QSize sizeHint() const override {
    const int widest = screen()->availableSize().width() * 2 / 3;
    const QSize tabs(std::min(tabBar()->sizeHint().width() + 2 * fontMetrics().averageCharWidth(), widest), 0);
    return QTabWidget::sizeHint().expandedTo(tabs);
  }
};

class TabStripView : public ControlView {
 public:
  TabStripView(QTabWidget* tabs, Report report) : ControlView(tabs, std::move(report)), tabs_(tabs) {
    tabs->setUsesScrollButtons(true);
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs,
                     [this](int index) { Tell(UserEvent::What::Chosen, {}, index); });
  }

  [[nodiscard]] QWidget* KeyWidget() const override { return tabs_->tabBar(); }

  /// Each page scrolls by itself.
  [[nodiscard]] QWidget* Container(const Control& page) override {
    auto* area = new PageArea(tabs_);
    area->hide();
    pages_[page.tag] = area;
    return area->Content();
  }

 protected:
  void Fill(const Control& control) override {
    const QSignalBlocker noTelling(tabs_);
    if (control.keys != keys_) Rebuild(control.keys);
    for (std::size_t i = 0; i < control.list.size() && i < keys_.size(); ++i) {
      const int index = static_cast<int>(i);
      if (tabs_->tabText(index) != ToQt(control.list[i])) tabs_->setTabText(index, ToQt(control.list[i]));
    }
    tabs_->setCurrentIndex(control.listIndex);
  }

 private:
  void Rebuild(const std::vector<std::string>& keys) {
    while (tabs_->count() > 0) {
      QWidget* page = tabs_->widget(0);
      tabs_->removeTab(0);
      page->setParent(tabs_);
    }
    keys_ = keys;
    for (const std::string& key : keys) {
      QWidget*& page = pages_[key];
      if (page == nullptr) page = new PageArea(tabs_);
      tabs_->addTab(page, QString());
    }
  }

  QTabWidget* tabs_;
  std::map<std::string, QWidget*> pages_;  // by their keys
  std::vector<std::string> keys_;
};

}  // namespace

std::unique_ptr<ControlView> MakePanelView(const Control& control, QWidget* parent, Report report) {
  if (control.kind == ControlKind::Frame) return std::make_unique<FrameView>(new QGroupBox(parent));
  if (control.kind == ControlKind::TabStrip)
    return std::make_unique<TabStripView>(new WideTabWidget(parent), std::move(report));
  if (control.box.height > 0) return std::make_unique<PaneView>(new PageArea(parent), control.box.height);
  return std::make_unique<PanelView>(new QWidget(parent));
}

}  // namespace tessary
