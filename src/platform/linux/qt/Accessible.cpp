#include "platform/linux/qt/Accessible.h"

#include <QAccessibleWidget>
#include <QFrame>

#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/FormWidget.h"
#include "platform/linux/qt/QtText.h"
#include "runtime/Application.h"

namespace onlinux {
namespace {

// A window of its own, or a dialog above another. One that shows no title has the program's name.
class AccessibleForm : public QAccessibleWidget {
 public:
  using QAccessibleWidget::QAccessibleWidget;
  QAccessible::Role role() const override {
    return widget()->windowModality() == Qt::NonModal ? QAccessible::Window : QAccessible::Dialog;
  }
  QString text(QAccessible::Text kind) const override {
    const auto text = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && text.isEmpty() ? ToQt(velmaro::Application::Title) : text;
  }
};

// A panel that is filled from its left as far as the panel in it is wide.
class AccessibleMeter : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleMeter(QWidget* panel) : QAccessibleWidget(panel, QAccessible::ProgressBar) {}
  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override {
    const auto* filled = widget()->findChild<QFrame*>({}, Qt::FindDirectChildrenOnly);
    const int room = widget()->width();
    return filled && room > 0 ? 100.0 * filled->width() / room : 0.0;
  }
  void setCurrentValue(const QVariant&) override {}
  QVariant minimumValue() const override { return 0.0; }
  QVariant maximumValue() const override { return 100.0; }
  QVariant minimumStepSize() const override { return 0.0; }
};

}  // namespace

QAccessibleInterface* NewAccessible(const QString&, QObject* object) {
  if (auto* form = dynamic_cast<FormWidget*>(object)) return new AccessibleForm(form);
  auto* panel = dynamic_cast<Heard<QFrame>*>(object);
  return panel && !panel->accessibleName().isEmpty() ? new AccessibleMeter(panel) : nullptr;
}

}  // namespace onlinux
