#include <algorithm>

#include "Desktop.h"

struct Paints : QObject {
  int times = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    times += event->type() == QEvent::Paint;
    return false;
  }
};

TEST_F(LinuxDesktop, ARefreshInTheBackgroundKeepsTheRowAndThePlaceOfTheList) {
  std::deque<Child> children;
  for (int i = 0; i < 30; ++i) children.emplace_back(folder.Sleeper("zz" + std::to_string(i)));
  const auto picked = folder / "zz29";
  Click(*main, "Refresh");
  auto& bar = *List().verticalScrollBar();
  Pick(RowOf(picked));
  bar.setValue(RowOf(folder / "zz5"));
  const auto row = RowOf(picked);
  for (const auto ended : {0, 5}) children[static_cast<std::size_t>(ended)].End();
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(QTest::qWaitFor([&] { return RowOf(picked) < row; }, 12000)) << "every 4 seconds";
  EXPECT_EQ(List().currentIndex().row(), RowOf(picked));
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex()));
  EXPECT_EQ(bar.value(), RowOf(folder / "zz6")) << "the next row takes the place of one that is gone";
  Paints paints;
  List().viewport()->installEventFilter(&paints);
  const auto refresh = [&] {
    paints.times = 0;
    app.Default<formVelmaro>().Timer1_Timer();
    QTest::qWait(50);
    return paints.times;
  };
  EXPECT_TRUE(Eventually([&] { return refresh() == 0; })) << "a list that has not changed is not painted anew";
  children.pop_back();
  EXPECT_GT(refresh(), 0);
  EXPECT_FALSE(List().currentIndex().isValid()) << "no other row is picked in its place";
  EXPECT_EQ(bar.value(), RowOf(folder / "zz6"));
}

TEST_F(LinuxDesktop, RowsArePaintedInColumnsAndTheSelectedOneInItsColours) {
  auto& form = app.Default<formVelmaro>();
  const std::string many(99, 'n');
  form.List1.Clear();
  for (const auto* tag : {"[Normal]\t", "[Idle]\t", ""}) form.List1.AddItem(tag + many);
  for (const std::string ends : {"aaa", "aba", "bba", "abb"})
    form.List1.AddItem(ends[0] + many + ends[1] + many + ends[2]);
  const auto row = [&](int at, int from = 0) {
    const auto place = List().visualRect(List().model()->index(at, 0));
    return List().viewport()->grab(place.adjusted(from, 0, 0, 0)).toImage();
  };
  const int tag = 3 + List().fontMetrics().horizontalAdvance("[Normal]");
  EXPECT_TRUE(row(0, tag) == row(1, tag) && row(0) != row(1) && row(2, tag) != row(1, tag)) << "names have a column";
  EXPECT_TRUE(row(3) == row(4) && row(4) != row(5) && row(4) != row(6)) << "of a long path both ends are told";
  EXPECT_EQ(row(0).height(), List().fontMetrics().height() + 1);
  auto theme = List().palette();
  for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) theme.setColor(role, Qt::darkGreen);
  List().setPalette(theme);
  List().clearFocus();
  form.List1.SetListIndex(1);
  auto ground = row(1);
  ground.fill(Qt::darkGreen);
  EXPECT_TRUE(row(1) == ground) << "the selected row has the theme's colours";
  while (form.List1.ListCount() < 99) form.List1.AddItem("");
  form.List1.SetListIndex(90);
  EXPECT_TRUE(List().viewport()->rect().contains(List().visualRect(List().currentIndex()))) << "it is brought in sight";
}
