// What is taken of a file that decides which code runs: only what nobody else can have made.

#include "vetlo/registry/trusted_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <ostream>

#include "tests/support/child_process.h"
#include "tests/support/program.h"

namespace vetlo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

constexpr std::int64_t kMostBytes = 1000;
constexpr uid_t kNobody = 65534;
constexpr uid_t kSomebodyElse = 65533;

// A file two folders deep, and a way to it by a link and by a link to its folder.
class TrustedFile : public ::testing::Test {
 protected:
  TrustedFile() {
    EXPECT_EQ(chmod(data_.path().c_str(), 0755), 0);
    fs::create_directories(data_ / "home/share");
    fs::create_directory(data_ / "links");
    WriteFile(file_, "mine");
    fs::create_symlink("../home/share/file", data_ / "links/file");
    fs::create_symlink(data_ / "home", data_ / "links/home");
    for (const auto& entry : fs::recursive_directory_iterator(data_.path())) {
      if (!entry.is_symlink()) {
        EXPECT_EQ(chmod(entry.path().c_str(), entry.is_directory() ? 0755 : 0644), 0);
      }
    }
  }

  // What is read of it; empty where there is none.
  static std::string TextOf(const std::string& path) {
    const Descriptor file = OpenTrusted(path, kMostBytes);
    std::array<char, kMostBytes> text;
    const ssize_t size = file.IsOpen() ? read(file.number(), text.data(), text.size()) : 0;
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
  }
  static std::string RefusalOf(const std::string& path) {
    try {
      return "it was taken: " + TextOf(path);
    } catch (const NotTrusted& refused) {
      return refused.what();
    }
  }
  static int ErrorOf(const std::string& path) {
    try {
      TextOf(path);
      return 0;
    } catch (const std::system_error& error) {
      return error.code().value();
    }
  }

  TestFolder data_;
  std::string file_ = data_ / "home/share/file";
  // Three ways to the same file.
  std::array<std::string, 3> ways_ = {file_, data_ / "links/file", data_ / "links/home/share/file"};
};

TEST_F(TrustedFile, IsTakenWhereNobodyElseHasAHandInIt) {
  for (const std::string& way : ways_) {
    EXPECT_EQ(TextOf(way), "mine") << way;
  }
  EXPECT_EQ(TextOf(data_ / "home/../links/./home//share/file"), "mine");
}

TEST_F(TrustedFile, ThatIsNotThereIsNone) {
  for (const char* const name : {"home/none", "none/file", "home/share/file/none", "links/none"}) {
    EXPECT_EQ(TextOf(data_ / name), "") << name;
    EXPECT_NO_THROW(RequireTrustedPlace(data_ / name, kMostBytes)) << name;
  }
}

TEST_F(TrustedFile, InALoopOfLinksIsAnError) {
  fs::create_symlink("loop", data_ / "loop");
  EXPECT_EQ(ErrorOf(data_ / "loop"), ELOOP);
  EXPECT_EQ(ErrorOf(data_ / "loop/file"), ELOOP);
}

TEST_F(TrustedFile, IsTheOneThatWasJudgedWhateverBecomesOfItsName) {
  const Descriptor file = OpenTrusted(file_, kMostBytes);
  fs::remove(file_);
  WriteFile(file_, "another's");
  std::array<char, 4> text = {};
  EXPECT_EQ(read(file.number(), text.data(), text.size()), 4);
  EXPECT_EQ(std::string(text.data(), 4), "mine");
}

// ---- other users

// Another user's hand in something on the way to the file.
struct OthersHand {
  const char* name;
  const char* in;  // below the test's folder; of links themselves only the owner counts
  std::size_t way;
  std::function<bool(const std::string& path)> lay;
  const char* told;
};
void PrintTo(const OthersHand& hand, std::ostream* out) { *out << hand.name; }

bool GiveAway(const std::string& path) {
  return lchown(path.c_str(), kSomebodyElse, kSomebodyElse) == 0;
}

bool AddMode(const std::string& path, mode_t mode) {
  struct stat facts = {};
  return stat(path.c_str(), &facts) == 0 &&
         chmod(path.c_str(), (facts.st_mode & 07777) | mode) == 0;
}
bool LetGroupWrite(const std::string& path) { return AddMode(path, S_IWGRP); }
bool LetOthersWrite(const std::string& path) { return AddMode(path, S_IWOTH); }

constexpr const char* kBelongs = " belongs to another user (number 65533)";
constexpr const char* kWritable = " can be written by other users; 'chmod go-w'";

class OthersHands : public TrustedFile, public ::testing::WithParamInterface<OthersHand> {
 protected:
  void SetUp() override {
    if (geteuid() != 0 && GetParam().told == kBelongs) {
      GTEST_SKIP() << "only root can give a file away";
    }
    ASSERT_EQ(TextOf(Way()), "mine");
    ASSERT_TRUE(GetParam().lay(data_ / GetParam().in));
  }
  [[nodiscard]] const std::string& Way() const { return ways_.at(GetParam().way); }
  [[nodiscard]] std::string Reason() const { return data_ / GetParam().in + GetParam().told; }
};

TEST_P(OthersHands, KeepItFromBeingTaken) { EXPECT_THAT(RefusalOf(Way()), StartsWith(Reason())); }

TEST_P(OthersHands, KeepItFromAUserWithoutRights) {
  EXPECT_EQ(InChild([&] {
              DropPrivileges();
              return RefusalOf(Way()).starts_with(Reason()) ? 0 : 1;
            }),
            0);
}

TEST_P(OthersHands, KeepTheRightPermissionsError) { EXPECT_EQ(ErrorOf(Way()), EPERM); }

INSTANTIATE_TEST_SUITE_P(
    All, OthersHands,
    ::testing::Values(
        OthersHand{"OwnerOfTheFile", "home/share/file", 0, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheFolder", "home/share", 0, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheFolderAbove", "home", 0, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheLink", "links/file", 1, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheFolderOfTheLink", "links", 1, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheTarget", "home/share/file", 1, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheFolderOfTheTarget", "home/share", 1, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheLinkToAFolder", "links/home", 2, GiveAway, kBelongs},
        OthersHand{"OwnerOfTheLinkedFolder", "home", 2, GiveAway, kBelongs},
        OthersHand{"GroupOnTheFile", "home/share/file", 0, LetGroupWrite, kWritable},
        OthersHand{"GroupOnTheFolder", "home/share", 0, LetGroupWrite, kWritable},
        OthersHand{"OthersOnTheFile", "home/share/file", 0, LetOthersWrite, kWritable},
        OthersHand{"OthersOnTheFolder", "home/share", 0, LetOthersWrite, kWritable},
        OthersHand{"OthersOnTheFolderAbove", "home", 0, LetOthersWrite, kWritable},
        OthersHand{"OthersOnTheFolderOfTheLink", "links", 1, LetOthersWrite, kWritable},
        OthersHand{"OthersOnTheTarget", "home/share/file", 1, LetOthersWrite, kWritable},
        OthersHand{"OthersOnTheFolderOfTheTarget", "home/share", 2, LetOthersWrite, kWritable}),
    [](const auto& hand) { return hand.param.name; });

TEST_F(TrustedFile, MayLieWhereEachKeepsWhatIsHis) {
  ASSERT_EQ(chmod((data_ / "home").c_str(), 01777), 0);
  for (const std::string& way : ways_) {
    EXPECT_EQ(TextOf(way), "mine") << way;
  }
}

TEST_F(TrustedFile, OfRootIsTakenByAnybody) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root has files of root";
  }
  EXPECT_EQ(InChild([&] {
              DropPrivileges();
              return TextOf(ways_[1]) == "mine" ? 0 : 1;
            }),
            0);
}

TEST_F(TrustedFile, OfAnUnprivilegedUserIsTakenByHimAndNotByRoot) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can give a file away";
  }
  ASSERT_EQ(chown(file_.c_str(), kNobody, kNobody), 0);
  EXPECT_EQ(InChild([&] {
              DropPrivileges();
              return TextOf(file_) == "mine" ? 0 : 1;
            }),
            0);
  EXPECT_THAT(RefusalOf(file_), HasSubstr("belongs to another user (number 65534)"));
}

// Whoever owns them: there is nothing to be taken.
TEST_F(TrustedFile, ThatIsNotThereIsNoneAlsoInFoldersOfOthers) {
  ASSERT_TRUE(LetOthersWrite(data_ / "home"));
  EXPECT_EQ(TextOf(data_ / "home/none"), "");
  EXPECT_THROW(RequireTrustedPlace(data_ / "home/none", kMostBytes), NotTrusted);
}

// ---- what is no file

struct Oddity {
  const char* name;
  std::function<void(const std::string& path)> make;
};
void PrintTo(const Oddity& oddity, std::ostream* out) { *out << oddity.name; }

void MakeSocket(const std::string& path) {
  const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  EXPECT_EQ(bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

class OddFile : public TrustedFile, public ::testing::WithParamInterface<Oddity> {};

TEST_P(OddFile, IsRefusedAtOnce) {
  fs::remove(file_);
  GetParam().make(file_);
  for (const std::string& way : ways_) {
    EXPECT_THAT(RefusalOf(way), HasSubstr("no regular file")) << way;
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, OddFile,
    ::testing::Values(
        Oddity{"Fifo", [](const auto& path) { mkfifo(path.c_str(), 0600); }},
        Oddity{"Folder", [](const auto& path) { fs::create_directory(path); }},
        Oddity{"Socket", [](const auto& path) { MakeSocket(path); }},
        Oddity{"Zeros", [](const auto& path) { fs::create_symlink("/dev/zero", path); }},
        Oddity{"Nothing", [](const auto& path) { fs::create_symlink("/dev/null", path); }}),
    [](const auto& oddity) { return oddity.param.name; });

TEST_F(TrustedFile, OfTheMostBytesIsTakenAndALargerOneIsNot) {
  fs::resize_file(file_, kMostBytes);
  EXPECT_EQ(TextOf(file_).size(), kMostBytes);
  fs::resize_file(file_, kMostBytes + 1);
  EXPECT_THAT(RefusalOf(file_), HasSubstr("is larger than 1000 bytes"));
  EXPECT_EQ(ErrorOf(file_), EFBIG);
}

}  // namespace
}  // namespace vetlo::testing
