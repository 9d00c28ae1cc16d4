#include <QCoreApplication>
#include <QtDBus>

#include "Children.h"
#include "platform/kernel32.h"

namespace {

// Something that can be told of, by its place on the bus of the assistive technologies.
struct Node {
  QString service;
  QString path;
};
const QDBusArgument& operator>>(const QDBusArgument& told, Node& node) {
  QDBusObjectPath path;
  told.beginStructure();
  told >> node.service >> path;
  told.endStructure();
  node.path = path.path();
  return told;
}
const Node everything{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
constexpr uint checked = 4, focusable = 11, showing = 25;

// A bus of the test's own, and the real program on a screen that nobody sees, as a screen reader knows it.
class Access : public InFolder {
 protected:
  void SetUp() override {
    if (!UseDisplay()) GTEST_SKIP() << "there is no Xvfb";
    for (const auto* file : {"/usr/bin/dbus-daemon", "/usr/share/dbus-1/services/org.a11y.Bus.service"})
      if (!fs::exists(file)) GTEST_SKIP() << "there is no " << file;
    ::setenv("XDG_RUNTIME_DIR", folder.Path().c_str(), 1);
    for (const auto* ofOneBefore : {"session", "access"}) QDBusConnection::disconnectFromBus(ofOneBefore);
    const auto address = "unix:path=" + (folder / "bus");
    ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    bus.emplace(std::vector<std::string>{"/usr/bin/dbus-daemon", "--session", "--nofork", "--address=" + address});
    ASSERT_TRUE(Eventually([&] { return fs::exists(folder / "bus"); }));
    line = QDBusConnection::connectToBus(QString::fromStdString(address), "session");
    // A screen reader announces itself like this.
    QDBusInterface("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Status", line).setProperty("IsEnabled", true);
    const auto told = Call({"org.a11y.Bus", "/org/a11y/bus"}, "org.a11y.Bus", "GetAddress").arguments().value(0);
    line = QDBusConnection::connectToBus(told.toString(), "access");
    ASSERT_TRUE(line.isConnected());
    program.emplace(std::vector<std::string>{VELMARO_PROGRAM});
  }

  QDBusMessage Call(const Node& node, const QString& kind, const QString& method, QVariantList arguments = {}) {
    auto call = QDBusMessage::createMethodCall(node.service, node.path, kind, method);
    call.setArguments(arguments);
    // What opens a dialog answers when it is closed.
    if (method == "DoAction") return line.send(call), QDBusMessage();
    return line.call(call, QDBus::Block, 5000);
  }
  QVariant Ask(const Node& node, const QString& method) {
    return Call(node, "org.a11y.atspi.Accessible", method).arguments().value(0);
  }
  QVariant Get(const Node& node, const QString& kind, const QString& property) {
    return QDBusInterface(node.service, node.path, "org.a11y.atspi." + kind, line).property(property.toUtf8());
  }
  bool Is(const Node& node, uint state) { return qdbus_cast<QList<uint>>(Ask(node, "GetState")).value(0) >> state & 1; }
  QList<Node> Parts(const Node& node) { return qdbus_cast<QList<Node>>(Ask(node, "GetChildren")); }
  // Goes through all that stands in a node; a list tells of its first rows.
  void Walk(const Node& node, const std::function<void(const Node&, const QString&)>& look) {
    const auto name = Get(node, "Accessible", "Name").toString().section('\t', 0, 0);
    const auto told = Ask(node, "GetRoleName").toString() + ':' + name;
    look(node, told);
    auto parts = Parts(node);
    if (told.startsWith("list:")) parts = parts.mid(0, 3);
    for (const auto& part : parts) Walk(part, look);
  }
  // What shows in the program and is told so, the uppermost of them; it has no service where nothing is.
  Node Find(const QString& wanted) {
    Node found;
    Walk(everything, [&](const Node& node, const QString& told) {
      if (told.endsWith(wanted) && (Is(node, showing) || told.startsWith("menu item"))) found = node;
    });
    return found;
  }
  Node Await(const QString& wanted) {
    Node found;
    if (!Eventually([&] { return !(found = Find(wanted)).service.isEmpty(); }))
      throw std::runtime_error("nothing is told as " + wanted.toStdString());
    return found;
  }
  void Press(const QString& wanted) { Call(Await(wanted), "org.a11y.atspi.Action", "DoAction", {0}); }
  void ExpectChecked(const QString& wanted) {
    EXPECT_TRUE(Eventually([&] { return Is(Await(wanted), checked); })) << wanted.toStdString();
  }
  // Looks at an open window, which must hold this, and nothing that takes the keyboard and has no name.
  void LookAt(const QString& window, const QString& wanted) {
    QStringList all;
    Walk(Await(window), [&](const Node& node, const QString& told) {
      all << told;
      EXPECT_FALSE(told.indexOf(':') == told.size() - 1 && Is(node, focusable)) << (told + window).toStdString();
    });
    EXPECT_TRUE(all.contains(wanted)) << wanted.toStdString() << " of " << all.join('\n').toStdString();
  }
  void Close(const QString& button, const QString& window) {
    Press("push button:" + button);
    EXPECT_TRUE(Eventually([&] { return Find(window).service.isEmpty(); })) << window.toStdString();
  }

  std::optional<Child> bus;
  std::optional<Child> program;
  QDBusConnection line{""};
};

TEST_F(Access, EveryWindowIsToldAndAPressActsAsTheMouseDoes) {
  LookAt("frame:Zeld's Velmaro Process", "popup menu:Options");
  ExpectChecked("radio button:All");
  ExpectChecked("menu item:Real Time");
  EXPECT_GT(Parts(Await("list:Processes and windows")).size(), 3);
  Press("menu item:Idle");
  ExpectChecked("menu item:Idle");
  // Where programs are nice from the start, they have the class already.
  if (::getpriority(PRIO_PROCESS, 0) == 0) {
    Press("menu item:Auto Refresh");  // a refresh takes the rows away that are looked at
    const Child child(folder.Sleeper("zz-told"));
    Press("push button:Refresh");
    Node row;
    EXPECT_TRUE(Eventually([&] {
      const auto rows = Parts(Await("list:Processes and windows"));
      const auto is = [&](const Node& one) { return Get(one, "Accessible", "Name").toString().endsWith("zz-told"); };
      const auto at = std::find_if(rows.rbegin(), rows.rend(), is);
      return at != rows.rend() && (row = *at, true);
    }));
    Call(row, "org.a11y.atspi.Action", "DoAction", {0});
    Press("push button:Velmaro!");
    EXPECT_TRUE(Eventually([&] { return child.Nice() == 19; })) << child.Nice();
    Close("OK", "alert message:Velmaro");
  }
  Press("radio button:Idle");
  ExpectChecked("radio button:Idle");
  EXPECT_FALSE(Is(Await("radio button:All"), checked));
  Press("push button:Launch...");
  LookAt("dialog:Velmaro Launcher", "combo box:Type the name of the program that you want to run");
  Press("push button:Free Mem");
  Press("radio button:High");
  ExpectChecked("radio button:High");
  EXPECT_TRUE(Find("KB Free Memory").service.isEmpty()) << "its button stands under a dialog";
  Close("Cancel", "dialog:Velmaro Launcher");
  Press("menu item:Edit Kill List Here...");
  LookAt("dialog:Settings", "text:Programs on the list, one in each line");
  Press("push button:Help");
  LookAt("alert message:Velmaro", "push button:OK");
  Close("OK", "alert message:Velmaro");
  Close("Cancel", "dialog:Settings");
  Press("menu item:Find...");
  LookAt("dialog:Zeld's Velmaro Process", "text:Enter text to find:");
  Close("Cancel", "dialog:Zeld's Velmaro Process");
  Press("menu item:About");
  LookAt("dialog:Velmaro", "push button:OK");
  Close("OK", "dialog:Velmaro");
  Press("push button:Free Mem");
  LookAt("KB Free Memory", "scroll bar:Megabytes to free");
  const auto free = Get(Await("progress bar:Free memory"), "Value", "CurrentValue").toDouble();
  platform::MEMORYSTATUS status;
  platform::GlobalMemoryStatus(status);
  EXPECT_NEAR(free, 100.0 * static_cast<double>(status.dwAvailPhys) / static_cast<double>(status.dwTotalPhys), 10);
}

}  // namespace

int main(int count, char** arguments) {
  const QCoreApplication application(count, arguments);
  ::setpriority(PRIO_PROCESS, 0, 0);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
