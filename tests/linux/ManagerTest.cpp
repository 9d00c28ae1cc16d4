#include <QCoreApplication>
#include <QtDBus>

#include "Children.h"
#include "platform/linux/processes/ServiceManager.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/processes/UnitClass.h"
#include "platform/linux/starts/Agent.h"

namespace {

constexpr const char* Services[] = {"org.freedesktop.systemd1", "org.freedesktop.PolicyKit1"};

// In the place of the user's service manager: notes what it is asked for. With a refusal it knows no descriptors, as an
// old one, and where that is "gone" it has thrice missed one of the processes too. It stands for the authority as well,
// which takes no agent then.
class Manager : public QDBusVirtualObject {
 public:
  explicit Manager(const char* refusal) : refusal_(refusal) {}
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& line) override {
    QString text;
    QDebug(&text).nospace() << message;
    const auto call = (message.member() + text.section("contents=", 1)).toStdString();
    asked += call;
    const bool refuses = refusal_ && (call.find("PIDFDs") != call.npos || call.find("Agent") != call.npos ||
                                      (refusal_ == std::string("gone") && missed_++ < 3));
    return line.send(refuses ? message.createErrorReply("org.example.No", refusal_) : message.createReply("/job"));
  }
  std::string asked;

 private:
  const char* refusal_;
  int missed_ = 0;
};

class LinuxManager : public InFolder {
 protected:
  void SetUp() override {
    for (const auto* file : {"/usr/bin/dbus-daemon", "/lib/x86_64-linux-gnu/libsystemd.so.0"})
      if (!fs::exists(file)) GTEST_SKIP() << "there is no " << file;
    const auto address = "unix:path=" + (folder / "bus");
    for (const auto* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) ::setenv(bus, address.c_str(), 1);
    bus.emplace(std::vector<std::string>{"/usr/bin/dbus-daemon", "--session", "--nofork", "--address=" + address});
    ASSERT_TRUE(Eventually([&] { return fs::exists(folder / "bus"); }));
    line = QDBusConnection::connectToBus(QString::fromStdString(address), "manager");
  }
  void TearDown() override { QDBusConnection::disconnectFromBus("manager"); }

  // Asks a manager while it listens, and gives what it heard.
  template <class Ask>
  std::string Heard(const char* refusal, bool expected, Ask ask) {
    Manager manager(refusal);
    line.registerVirtualObject("/org/freedesktop", &manager, QDBusConnection::SubPath);
    for (const auto* service : Services) line.registerService(service);
    std::atomic<int> done = -1;
    std::thread asker([&] { done = ask(); });
    while (done < 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    asker.join();
    EXPECT_EQ(done != 0, expected);
    line.unregisterObject("/org/freedesktop", QDBusConnection::UnregisterTree);
    return manager.asked;
  }

  std::optional<Child> bus;
  QDBusConnection line{""};
};

TEST_F(LinuxManager, IsAskedForUnitsByProcessesThatCantBeMistaken) {
  const auto own = ::getpid();
  const auto start = [&] { return onlinux::StartScope("a.scope", {own}, 932); };
  const auto call = [](const std::string& processes) {
    return R"(StartTransientUnit("a.scope", "fail", [Argument: a(sv) {[Argument: (sv) ")" + processes +
           R"(}]]], [Argument: (sv) "CPUWeight", [Variant(qulonglong): 932]], [Argument: (sv) "CollectMode", )"
           R"([Variant(QString): "inactive-or-failed"]]}], [Argument: a(sa(sv)) {}]) ))";
  };
  const std::string held = R"(PIDFDs", [Variant: [Argument: ah {[Unix FD: valid])";
  EXPECT_EQ(Heard(nullptr, true, start), call(held));
  EXPECT_EQ(Heard("no", true, start),
            call(held) + call(R"(PIDs", [Variant: [Argument: au {)" + std::to_string(::getpid())));
  const Child chosen({"/bin/sh", "-c", "setpriv --pdeathsig KILL sleep 300 & wait"});
  const auto id = static_cast<std::uint32_t>(chosen.Id());
  ASSERT_TRUE(
      Eventually([&] { return !ReadBytes(ProcOf(chosen.Id(), "task/" + std::to_string(id) + "/children")).empty(); }));
  const auto refused = [&](std::uint32_t wanted) {
    return Heard(nullptr, false, [&] { return onlinux::SetUnitClass(id, wanted, true); });
  };
  EXPECT_TRUE(refused(platform::HIGH_PRIORITY_CLASS).find("{[Unix FD: valid], [Unix FD: valid]}]") != std::string::npos)
      << "what it started comes along";
  const auto tries =
      Heard("gone", false, [&] { return onlinux::SetUnitClass(id, platform::HIGH_PRIORITY_CLASS, true); });
  EXPECT_EQ(QString::fromStdString(tries).count("StartTransientUnit"), 8) << "one of a family ended at that moment";
  EXPECT_EQ(refused(platform::NORMAL_PRIORITY_CLASS), "") << "to be as everybody takes no unit";
  EXPECT_EQ(Heard("no", true, [] { return onlinux::SetUnitWeight("b.service", 1); }),
            R"(SetUnitProperties("b.service", true, [Argument: a(sv) {[Argument: (sv) "CPUWeight", )"
            R"([Variant(qulonglong): 1]]}]) ))");
  EXPECT_EQ(onlinux::OwnerOnBus("org.freedesktop.systemd1"), own);
  line.unregisterService("org.freedesktop.systemd1");
  EXPECT_EQ(onlinux::OwnerOnBus("org.freedesktop.systemd1"), 0);
  EXPECT_FALSE(start() || onlinux::SetUnitWeight("b.service", 1)) << "nobody starts a manager for it";
}

TEST_F(LinuxManager, TellsOfAnAgentWhereASecondOneIsRefused) {
  bool there = true;
  const auto heard = [&](const char* refusal, bool expected, const char* user) {
    return Heard(refusal, expected, [&] {
      there = ::unshare(CLONE_NEWNS) == 0 && ::mount("", "/", "", MS_PRIVATE | MS_REC, "") == 0 &&
              ::mount("none", "/run", "tmpfs", 0, "") == 0 && fs::create_directories("/run/systemd/users");
      if (!there) return expected;
      WriteBytes("/run/systemd/users/" + std::to_string(::getuid()), user);
      return onlinux::AgentRuns();
    });
  };
  const auto asked = heard("it already exists", true, "DISPLAY=c1\n");
  if (!there) GTEST_SKIP() << "nothing can be mounted";
  EXPECT_EQ(asked,
            R"(RegisterAuthenticationAgent([Argument: (sa{sv}) "unix-session", [Argument: a{sv} {"session-id" = )"
            R"([Variant(QString): "c1"]}]], "C", "/example/velmaro/NoAgent") ))");
  for (const auto* refusal : {static_cast<const char*>(nullptr), "sessions differ"})
    heard(refusal, false, "DISPLAY=c1\n");
  EXPECT_EQ(heard("it already exists", false, "STATE=active\n"), "") << "nobody asks in no session";
}

TEST(LinuxUnits, TheUnitOfAnAppIsFoundBelowItsUsersManager) {
  const auto manager = "0::/user.slice/user-7.slice/user@" + std::to_string(::getuid()) + ".service";
  for (const auto& [groups, name] :
       {std::pair(manager + "/app.slice/app-a.scope\n", "app-a.scope"),
        {manager + "/app.slice/app-b.slice/b@1.service/inner", "b@1.service"},
        {"1:name=systemd:/x.scope\n" + manager + "/session.slice/c.service", "c.service"}}) {
    const auto unit = onlinux::FindUnit(groups).value_or(onlinux::Unit{});
    EXPECT_EQ(unit.name, name);
    EXPECT_TRUE(unit.folder.starts_with("/sys/fs/cgroup/user.slice/") && unit.folder.ends_with(name)) << unit.folder;
  }
  for (const auto& groups : {manager + "\n", std::string("0::/user.slice/user-7.slice/session-2.scope"), std::string()})
    EXPECT_FALSE(onlinux::FindUnit(groups)) << groups;
  EXPECT_FALSE(onlinux::IsAppOf({"pipewire.service", "/no/such/group"}, 1));
  for (const auto* app : {"app-a@b.service", "run-u1.service", "velmaro-1.scope", "dbus-:1.2-a@0.service"})
    EXPECT_TRUE(onlinux::IsAppOf({app, "/no/such/group"}, 1)) << app;
}

}  // namespace

int main(int count, char** arguments) {
  const QCoreApplication application(count, arguments);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
