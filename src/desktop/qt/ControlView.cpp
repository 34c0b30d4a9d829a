#include "desktop/qt/ControlView.h"

#include "desktop/qt/Text.h"

namespace tessary {

std::unique_ptr<ControlView> ControlView::Make(const Control& control, QWidget* parent, Report report) {
  switch (control.kind) {
    case ControlKind::Button:
    case ControlKind::CheckBox:
    case ControlKind::Option:
      return MakeButtonView(control, parent, std::move(report));
    case ControlKind::TextField:
    case ControlKind::DropDown:
    case ControlKind::EntryList:
      return MakeFieldView(control, parent, std::move(report));
    case ControlKind::ListBox:
    case ControlKind::ListView:
      return MakeListView(control, parent, std::move(report));
    case ControlKind::Label:
    case ControlKind::Shape:
      return MakePictureView(control, parent);
    case ControlKind::Picture:
      if (control.box.width > 0 || !control.picture.empty()) return MakePictureView(control, parent);
      [[fallthrough]];
    default:
      return MakePanelView(control, parent, std::move(report));
  }
}

void ControlView::Show(const Control& control) {
  QFont font = widget_->font();
  if (!control.font.name.empty()) font.setFamily(ToQt(control.font.name));
  if (control.font.bold) font.setBold(true);
  if (font != widget_->font()) widget_->setFont(font);
  Fill(control);
  if (!control.toolTip.empty()) widget_->setToolTip(ToolTipOf(ToQt(control.toolTip)));
  if (widget_->isHidden() == control.visible) widget_->setHidden(!control.visible);
  widget_->setEnabled(control.enabled);
  if (KeyWidget()->focusPolicy() != Qt::NoFocus)
    KeyWidget()->setFocusPolicy(control.tabStop ? Qt::StrongFocus : Qt::ClickFocus);
}

void ControlView::Tell(UserEvent::What what, const QString& text, int index) const {
  UserEvent event;
  event.what = what;
  event.text = FromQt(text);
  event.index = index;
  report_(std::move(event));
}

}  // namespace tessary
