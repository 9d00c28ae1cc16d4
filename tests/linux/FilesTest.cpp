#include <sys/stat.h>

#include "Children.h"
#include "desktop/modFiles.h"

namespace {

class LinuxFiles : public InFolder {
 protected:
  LinuxFiles() {
    ::chmod(folder.Path().c_str(), 0777);
    WriteBytes(list, "old");
  }
  std::ptrdiff_t FilesInFolder() const {
    return std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator());
  }
  struct stat Facts() const {
    struct stat facts {};
    ::stat(list.c_str(), &facts);
    return facts;
  }
  const std::string list = folder / "list.txt";
};

TEST_F(LinuxFiles, ASaveKeepsLinksOwnerAndRights) {
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
  EXPECT_TRUE(fs::is_symlink(list));
  EXPECT_EQ(std::tuple(Facts().st_mode, Facts().st_uid, Facts().st_gid),
            std::tuple(before.st_mode, before.st_uid, before.st_gid));
  EXPECT_NE(Facts().st_ino, before.st_ino) << "the new file was put in the old one's place";
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
  const auto longName = folder / std::string(250, 'n');
  WriteBytes(longName, "old");
  for (const auto& path : {list, longName}) SaveTextFile(path, "new", 0);
  EXPECT_EQ(ReadBytes(list), "old");
  EXPECT_EQ(ReadBytes(longName), "new") << "no name is left for a second file, but the file itself can be written";
  EXPECT_EQ(FilesInFolder(), 2);
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
    EXPECT_EQ(FilesInFolder(), 1);
    WriteBytes(list, "old");
  }
}

}  // namespace
