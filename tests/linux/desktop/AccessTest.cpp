#include <QAccessible>

#include "Desktop.h"

QAccessibleInterface& ToldOf(QWidget& widget) { return *QAccessible::queryAccessibleInterface(&widget); }

// Acts as a screen reader does, and waits until the toolkit, which shows a button pressed for a moment, has acted too.
template <class Test>
void Act(QAccessibleInterface& told, Test done) {
  auto& actions = *told.actionInterface();
  actions.doAction(actions.actionNames().front());
  EXPECT_TRUE(QTest::qWaitFor(done)) << told.text(QAccessible::Name).toStdString();
}

TEST_F(LinuxDesktop, WhatAssistiveTechnologiesPressActsAsTheMouseDoes) {
  const auto program = folder.Sleeper("zz-told");
  const Child child(program);
  Act(ToldOf(Find(*main, "Refresh")), [&] { return RowOf(program) >= 0; });
  const int row = RowOf(program);
  ASSERT_GE(row, 0);
  Act(*ToldOf(List()).child(row), [&] { return app.Default<formVelmaro>().List1.ListIndex() == row; });
  Then([&](QWidget& launcher) {
    auto& under = Find(*main, "Free Mem");
    Act(ToldOf(under), [&] { return !under.isDown(); });
    Act(ToldOf(Find(launcher, "High")), [&] { return Find(launcher, "High").isChecked(); });
    EXPECT_EQ(app.Forms().size(), 2U) << "its button stands under a dialog";
    Press(launcher, Qt::Key_Escape);
  });
  Act(ToldOf(Find(*main, "Launch...")), [&] { return actions.empty() && app.Forms().size() == 1; });
  Act(ToldOf(Find(*main, "Free Mem")), [&] { return app.Forms().size() == 2; });
  auto& meter = app.Default<formFreeMem>();
  auto& bar = ToldOf(WidgetOf(meter.Picture1));
  EXPECT_EQ(bar.role(), QAccessible::ProgressBar);
  EXPECT_NEAR(bar.valueInterface()->currentValue().toDouble(), 100 * meter.Picture2.Width() / 4605, 1);
}
