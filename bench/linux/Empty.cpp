// An empty window: what the toolkit alone takes.
#include <QApplication>
#include <QWidget>

int main(int count, char** words) {
  const QApplication application(count, words);
  QWidget window;
  window.resize(480, 270);
  window.show();
  return QApplication::exec();
}
