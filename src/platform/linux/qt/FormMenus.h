#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <map>
#include <memory>
#include <vector>

#include "runtime/Menu.h"

namespace onlinux {

// A menu that only the left button chooses from. The others do nothing in it, and close it from elsewhere.
class ChoiceMenu : public QMenu {
 public:
  using QMenu::QMenu;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
};

// Fills a menu with the entries of a model; the entries tell the model when they are chosen.
void FillMenu(QMenu& menu, const velmaro::Menu& model, std::map<const velmaro::Menu*, QAction*>& actions);
// Shows the model's check mark and whether it is offered at all.
void UpdateEntry(QAction& action, const velmaro::Menu& model);

// The menu bar of a form.
class FormMenus {
 public:
  // Builds the bar of a form inside its window; a form without menus has none.
  FormMenus(const std::vector<velmaro::Menu*>& menus, QWidget& window);

  // The bar, null where the form has none.
  QMenuBar* Bar() const { return bar_; }
  // Shows what changed in an entry or menu.
  void Update(const velmaro::Menu& model);

 private:
  QMenuBar* bar_ = nullptr;  // the window's, as all menus on it
  std::map<const velmaro::Menu*, QAction*> actions_;
};

}  // namespace onlinux
