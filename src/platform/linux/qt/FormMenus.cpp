#include "platform/linux/qt/FormMenus.h"

#include <QMouseEvent>

#include "platform/linux/qt/FormWindow.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

// The text of an entry, with its shortcut in a column of its own. The form handles the shortcut itself.
QString EntryText(const velmaro::Menu& model) {
  const auto shortcut = velmaro::ShortcutText(model.Shortcut());
  return ToQtLine(shortcut.empty() ? model.Caption() : model.Caption() + '\t' + shortcut);
}

QAction* AddEntry(QMenu& menu, velmaro::Menu& model) {
  if (model.IsSeparator()) return menu.addSeparator();
  auto* action = menu.addAction(EntryText(model));
  QObject::connect(action, &QAction::triggered, &menu, [action, &menu, &model] {
    // Choosing an entry moves no mark by itself.
    UpdateEntry(*action, model);
    if (!IsUnderModal(&menu)) model.RaiseClick();
  });
  return action;
}

}  // namespace

void ChoiceMenu::mousePressEvent(QMouseEvent* event) {
  // Newer toolkits close a menu at the press of any other button in it.
  if (event->button() == Qt::LeftButton || !rect().contains(event->position().toPoint())) QMenu::mousePressEvent(event);
}

void ChoiceMenu::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) QMenu::mouseReleaseEvent(event);
}

void UpdateEntry(QAction& action, const velmaro::Menu& model) {
  if (!model.IsSeparator()) {
    action.setCheckable(model.Checked());
    action.setChecked(model.Checked());
  }
  action.setVisible(model.Visible());
}

void FillMenu(QMenu& menu, const velmaro::Menu& model, std::map<const velmaro::Menu*, QAction*>& actions) {
  menu.setAccessibleName(ToQtLine(model.Caption()).remove('&'));
  for (auto* entry : model.Entries()) {
    auto* action = AddEntry(menu, *entry);
    if (!entry->Entries().empty()) {
      auto* inner = new ChoiceMenu(&menu);
      FillMenu(*inner, *entry, actions);
      action->setMenu(inner);
    }
    UpdateEntry(*action, *entry);
    actions[entry] = action;
  }
}

FormMenus::FormMenus(const std::vector<velmaro::Menu*>& menus, QWidget& window) {
  if (menus.empty()) return;
  bar_ = new QMenuBar(&window);
  // The bar belongs to the window's own area, or the form would be a menu bar lower than it was told.
  bar_->setNativeMenuBar(false);
  for (auto* model : menus) {
    auto* menu = new ChoiceMenu(ToQtLine(model->Caption()), bar_);
    bar_->addMenu(menu);
    FillMenu(*menu, *model, actions_);
    actions_[model] = menu->menuAction();
    menu->menuAction()->setVisible(model->Visible());
  }
}

void FormMenus::Update(const velmaro::Menu& model) {
  if (const auto at = actions_.find(&model); at != actions_.end()) UpdateEntry(*at->second, model);
}

}  // namespace onlinux
