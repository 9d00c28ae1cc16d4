#include <sys/stat.h>
#include <sys/xattr.h>

#include "Children.h"
#include "desktop/modFiles.h"
#include "platform/machine.h"
#include "process/KillLists.h"

namespace {

using namespace std::string_literals;

class LinuxFiles : public InFolder {
 protected:
  LinuxFiles() {
    ::chmod(folder.Path().c_str(), 0777);
    WriteBytes(list, "old");
  }
  static struct stat FactsOf(const std::string& path) {
    struct stat facts {};
    ::stat(path.c_str(), &facts);
    return facts;
  }
  struct stat Facts() const {
    return FactsOf(list);
  }
  const std::string list = folder / "list.txt";
};

TEST_F(LinuxFiles, ASaveKeepsLinksOwnerAndRights) {
  ::chmod(folder.Path().c_str(), 0755);
  fs::create_directory(folder / "real");
  const auto real = folder / "real/list.txt";
  fs::rename(list, real);
  fs::create_symlink("real/list.txt", list);
  // Links under the names of temporary files lead to a file that nobody means.
  WriteBytes(folder / "other", "other");
  for (const auto* name : {"list.txt.tmp", "real/list.txt.tmp", "real/list.txt.0.tmp"})
    fs::create_symlink(folder / "other", folder / name);
  ::chmod(real.c_str(), 0640);
  ASSERT_TRUE(::geteuid() != 0 || ::chown(real.c_str(), 65534, 65534) == 0);
  const auto before = Facts();
  SaveTextFile(list, "new", 0);
  EXPECT_EQ(ReadBytes(real) + ReadBytes(folder / "other"), "newother");
  const auto after = Facts();
  EXPECT_TRUE(fs::is_symlink(list) && after.st_mode == before.st_mode);
  EXPECT_TRUE(after.st_uid == before.st_uid && after.st_gid == before.st_gid);
  EXPECT_NE(after.st_ino, before.st_ino) << "the new file was put in the old one's place";
  // A second name stays one, and a link to a file that is not there yet makes it.
  fs::create_hard_link(real, folder / "second");
  SaveTextFile(list, "n", 0);
  EXPECT_EQ(ReadBytes(folder / "second"), "n");
  fs::remove(real);
  SaveTextFile(list, "again", 0);
  EXPECT_EQ(ReadBytes(real), "again");
  EXPECT_EQ(fs::status(real).permissions(), fs::status(folder / "other").permissions()) << "new files are alike";
}

TEST_F(LinuxFiles, WhatIsMarkedReadOnlyStays) {
  ::chmod(list.c_str(), 0444);
  const auto longName = folder / std::string(250, 'n');  // no name is left for a second file
  WriteBytes(longName, "old");
  for (const auto& path : {list, longName}) SaveTextFile(path, "new", 0);
  EXPECT_TRUE(ReadBytes(list) + ReadBytes(longName) == "oldnew" && FilesIn(folder.Path()) == 2);
}

TEST_F(LinuxFiles, AnotherOwnersListInAStickyFolderIsWrittenOver) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator can give a file to another user";
  ::chmod(folder.Path().c_str(), 01777);
  ::chmod(list.c_str(), 0666);
  for (const auto room : {rlim_t{100}, rlim_t{2}}) {
    Alone([&] {
      ::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{room, room};
      ASSERT_TRUE(BecomeNobody() && ::setrlimit(RLIMIT_FSIZE, &limit) == 0);
      SaveTextFile(list, "newer", 0);
    });
    EXPECT_EQ(ReadBytes(list), room == 100 ? "newer" : "old") << "a full disk costs nothing";
    EXPECT_EQ(FilesIn(folder.Path()), 1);
    WriteBytes(list, "old");
  }
}

// Does what another user does who owns the folder.
template <class Deed>
void Meanwhile(Deed deed) {
  Alone([&] { EXPECT_TRUE(BecomeNobody() && deed()); });
}

TEST_F(LinuxFiles, ASaveByAnAdministratorIsNotLedAstrayByTheOwnerOfTheFolder) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator saves in another user's folder";
  const TestFolder own;
  const auto secret = own / "secret";
  WriteBytes(secret, "secret");
  ::chmod(secret.c_str(), 0600);
  for (const auto& path : {folder.Path(), list}) ASSERT_EQ(::chown(path.c_str(), 65534, 65533), 0);
  // A link in the place of the new file, between its making and its taking the place.
  auto replacement = platform::CreateReplacement(list);
  const auto made = folder / fs::path(replacement.name).filename().string();
  Meanwhile([&] { return ::unlink(made.c_str()) == 0 && ::symlink(secret.c_str(), made.c_str()) == 0; });
  platform::TakePlace(replacement);
  // One in the place of the list, and one in that of a folder above it.
  for (const auto& name : {list, folder / "sub"}) {
    Meanwhile([&] {
      ::unlink(list.c_str());
      return ::symlink((name == list ? secret : own.Path()).c_str(), name.c_str()) == 0;
    });
    for (const int mode : {0, 1}) SaveTextFile(name == list ? list : name + "/secret", "new", mode);
  }
  ::setenv("XDG_CONFIG_HOME", (folder / "sub").c_str(), 1);
  EXPECT_FALSE(platform::WriteSetting("Velmaro", "Settings", "LastRun", "new"));
  EXPECT_TRUE(FilesIn(own.Path()) == 1 && ReadBytes(secret) == "secret");
  EXPECT_TRUE(FactsOf(secret).st_uid == 0 && (FactsOf(secret).st_mode & 0777) == 0600);
  // His own file is saved as his own.
  Meanwhile([&] {
    ::unlink(list.c_str());
    WriteBytes(list, "old");
    return ::chmod(list.c_str(), 0640) == 0;
  });
  SaveTextFile(list, "new", 0);
  EXPECT_EQ(std::tuple(ReadBytes(list), Facts().st_uid, Facts().st_mode & 0777), std::tuple("new", 65534U, 0640U));
}

TEST_F(LinuxFiles, ASaveKeepsWhatAFileWasGiven) {
  // A second user may read, and a folder gives all new files to a third one.
  const auto rights = [](char user) {
    return "\2\0\0\0\1\0\6\0\xFF\xFF\xFF\xFF\2\0\4\0"s + user +
           "\0\0\0\4\0\0\0\xFF\xFF\xFF\xFF\x10\0\4\0\xFF\xFF\xFF\xFF\x20\0\0\0\xFF\xFF\xFF\xFF"s;
  };
  const auto give = [](const std::string& path, const char* name, const std::string& value) {
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
  };
  const auto given = [&](const char* name) {
    std::string value(100, '\0');
    const auto size = ::getxattr(list.c_str(), name, value.data(), value.size());
    return size < 0 ? "none" : value.substr(0, static_cast<std::size_t>(size));
  };
  constexpr auto acl = "system.posix_acl_access";
  const bool gave = give(list, "user.note", "mine") && give(folder.Path(), "system.posix_acl_default", rights(3));
  if (!gave) GTEST_SKIP() << "this disk keeps no attributes";
  for (const auto& wanted : {"none"s, rights(2)}) {
    const auto before = Facts();  // a second file after it may have its number again
    ASSERT_TRUE(wanted == "none" || give(list, acl, wanted));
    SaveTextFile(list, wanted, 0);
    EXPECT_TRUE(ReadBytes(list) == wanted && given("user.note") == "mine" && given(acl) == wanted) << wanted;
    EXPECT_NE(Facts().st_ino, before.st_ino);
  }
}

TEST_F(LinuxFiles, ANoKillListThatIsNoFileOrHasNoEndProtectsEverything) {
  const auto pipe = folder / "pipe";
  ::mkfifo(pipe.c_str(), 0666);
  for (const auto& [name, to] : {std::pair("zero", "/dev/zero"), {"none", "/dev/null"}, {"nowhere", "missing"}})
    fs::create_symlink(to, folder / name);
  WriteBytes(folder / "empty", "");
  ::chmod(list.c_str(), 0);
  std::ofstream(folder / "endless").seekp(std::streamoff{1} << 40).put('x');
  Alone([&] {
    ASSERT_TRUE(BecomeNobody());
    std::vector<std::string> names = {"list.txt", "zero", "none", "pipe", ""};
    if (!UnderSanitizer) {  // which ends a program that gets no memory
      const rlimit room{1 << 28, 1 << 28};
      ASSERT_EQ(::setrlimit(RLIMIT_AS, &room), 0);
      names.push_back("endless");
    }
    for (const auto& name : names) {
      NoKillListPath = folder / name;
      EXPECT_TRUE(!CanKillProcess("any") && ReadTextFile(NoKillListPath).empty()) << name;
    }
    for (const auto* name : {"missing", "nowhere", "empty", "empty/list.txt"}) {
      NoKillListPath = folder / name;
      EXPECT_TRUE(CanKillProcess("any")) << name;
    }
  });
}

}  // namespace
