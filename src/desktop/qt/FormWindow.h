// A form on the screen.
#pragma once

#include <QDialog>
#include <QHash>
#include <map>
#include <memory>
#include <vector>

#include "desktop/qt/ControlView.h"
#include "desktop/qt/Grid.h"
#include "desktop/qt/PageArea.h"
#include "desktop/qt/Server.h"

namespace tessary {

/// Shows a form and tells gui what the user does to it. What gui answers comes through Update.
class FormWindow : public QDialog {
 public:
  /// `content` is that of MessageKind::ShowForm; the form comes up above `above`, if that is not null.
  FormWindow(Server& server, const std::string& content, QWidget* above);
  ~FormWindow() override;

  /// `content` is that of MessageKind::UpdateForm.
  void Update(const std::string& content);
  /// Whether gui swallowed the key that it was told of.
  void SetKeyAnswer(bool swallowed) { keySwallowed_ = swallowed; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void reject() override {}  // Escape has been told to gui; it closes nothing here

 private:
  /// The numbers of the controls that have changed.
  std::vector<std::size_t> Take(const std::string& content);
  void Build();
  void LayOutChildren(std::size_t container);
  [[nodiscard]] std::vector<Placed> ChildrenOf(std::int32_t parent) const;
  [[nodiscard]] bool Stretches(std::int32_t number) const;
  [[nodiscard]] QWidget* FirstKeyWidget(std::int32_t number) const;
  /// Gives the focus to the first control on display. A tab strip is passed over.
  void FocusFirst();
  [[nodiscard]] bool IsOnDisplay(std::int32_t number) const;
  void SetBuddies();
  void SetTabOrder();
  void SetFirstSize();
  void ShowState();
  [[nodiscard]] bool MayTell() const;
  void Tell(UserEvent event);
  void TellFocus(const QObject* widget);
  bool TellKey(const QKeyEvent& event);

  Server& server_;
  PageArea* page_;
  FormState state_;
  std::vector<ControlState> controls_;  // by their numbers
  std::vector<std::unique_ptr<ControlView>> views_;
  std::vector<std::int32_t> tabOrder_;
  QHash<const QObject*, std::int32_t> numbers_;  // of the controls whose keys a widget takes
  std::int32_t focused_ = -1;                    // as gui knows it
  bool updating_ = false;
  bool shown_ = false;
  bool keySwallowed_ = true;
};

/// Handles ShowForm, UpdateForm, CloseForm and Resume. The forms on the screen, the topmost one last.
class FormWindows {
 public:
  explicit FormWindows(Server& server);

 private:
  std::vector<FormWindow*> windows_;
};

}  // namespace tessary
