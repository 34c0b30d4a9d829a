// A control on the screen: a widget that shows a Control and tells what its user does to it.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/Messages.h"

namespace tessary {

/// Takes what the user did; `control` is filled in by its receiver.
using Report = std::function<void(UserEvent)>;

/// The widget belongs to its parent. It changes by Show alone as far as the form knows: a change of the user's
/// is reported, and what Show sets is not.
class ControlView {
 public:
  /// The view of one control; `parent` is the Container of the view above it.
  static std::unique_ptr<ControlView> Make(const Control& control, QWidget* parent, Report report);

  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  void Show(const Control& control);
  [[nodiscard]] QWidget* Widget() const { return widget_; }
  /// What takes the keys.
  [[nodiscard]] virtual QWidget* KeyWidget() const { return widget_; }
  /// Where the views of its children go; the same for all of them but the pages of a tab strip.
  [[nodiscard]] virtual QWidget* Container(const Control&) { return widget_; }
  /// True if the children stand where their boxes say.
  [[nodiscard]] virtual bool PlacesByBox() const { return false; }
  /// Takes over the selection of a field that has the focus.
  virtual void Select(const Control&) {}

 protected:
  ControlView(QWidget* widget, Report report) : widget_(widget), report_(std::move(report)) {}
  /// Shows what the kind alone has.
  virtual void Fill(const Control& control) = 0;
  void Tell(UserEvent::What what, const QString& text = {}, int index = -1) const;

 private:
  QWidget* widget_;
  Report report_;
};

// One for each group of kinds.
std::unique_ptr<ControlView> MakeButtonView(const Control& control, QWidget* parent, Report report);
std::unique_ptr<ControlView> MakeFieldView(const Control& control, QWidget* parent, Report report);
std::unique_ptr<ControlView> MakeListView(const Control& control, QWidget* parent, Report report);
std::unique_ptr<ControlView> MakePanelView(const Control& control, QWidget* parent, Report report);
std::unique_ptr<ControlView> MakePictureView(const Control& control, QWidget* parent);

}  // namespace tessary
