// What the archive survives: kills at any moment, limits, full disks, folders that cannot be
// written. Each fault runs in a child process; the parent looks at what is on the disk afterwards.

#include "common/file/zip.h"

#include "tests/file/archive_files.h"
#include "tests/support/property_random.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>

namespace {

using namespace lmw::test;
using sys::file::Zip;
using sys::file::zip::CompactMode;
namespace fs = std::filesystem;

// What a child reports.
constexpr int kAsExpected = 0;
constexpr int kWrong = 1;
constexpr int kNotPossibleHere = 2;

int RunChild(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// An archive of two entries, both of which tell its generation, and a comment that does.
std::string Generation(int number) {
    return std::to_string(number) + ' ' + Noise(300'000, static_cast<unsigned>(number));
}

gtl::status WriteGeneration(Zip& zip, const std::wstring& source, int number) {
    gtl::status result = zip.SetComment(std::to_wstring(number));
    for (const wchar_t* name : {L"a", L"b"}) {
        Zip::Ids ids;
        if (result.Succeeded()) {
            result = zip.Find(ids, name);
        }
        if (result.Succeeded()) {
            result = ids.empty() ? zip.Add(source, name) : zip.ReplaceAt(ids[0], source, name);
        }
    }
    return result.Succeeded() ? zip.Flush() : result;
}

// The generation of a whole archive; -1 where it is not whole.
int WholeGeneration(const std::wstring& path) {
    Zip zip;
    if (zip.OpenReadOnly(sys::file::MakeFileInputStream(path)).Failed() || zip.Count() != 2 ||
        zip.Test(zip.GetAllFileIDs()).Failed()) {
        return -1;
    }
    const int number = std::stoi(zip.GetComment());
    const std::string wanted = Generation(number);
    return Content(zip, L"a") == wanted && Content(zip, L"b") == wanted ? number : -1;
}

TEST(ZipFaults, KillDuringFlushLeavesOneWholeArchive) {
    PropertyRandom random;
    const ScratchFolder folder;
    const std::wstring path = folder / "p.lwz";
    int generation = 0;
    {
        Zip zip;
        ASSERT_OK(zip.Open(path, CompactMode::OnFlush));
        ASSERT_OK(WriteGeneration(zip, folder.Write("source", Generation(0)), 0));
    }
    int advanced = 0;
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        const pid_t child = fork();
        if (child == 0) {
            Zip zip;
            bool good = zip.Open(path, CompactMode::OnFlush).Succeeded();
            for (int next = generation + 1; good; ++next) {
                const std::wstring source = folder.Write("source", Generation(next));
                good = WriteGeneration(zip, source, next).Succeeded();
            }
            _exit(kWrong);
        }
        usleep(static_cast<useconds_t>(random.Uniform(1000.0, 400'000.0)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child gave up before it was killed";
        const int now = WholeGeneration(path);
        ASSERT_GE(now, generation);
        advanced += now > generation ? 1 : 0;
        generation = now;
    }
    EXPECT_GT(advanced, 0) << "most kills came before anything was written";
}

// Adds something small and then, under a fault, something large; again when the fault is gone. The
// archive must stay as it was in between, and nothing else may lie in its folder.
int AddUnderFault(const fs::path& folder, const std::wstring& source,
                  const std::function<void()>& begin_fault,
                  const std::function<void()>& end_fault) {
    const fs::path path = folder / "p.lwz";
    const auto files = [&] {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    };
    Zip zip;
    if (zip.Open(WidePath(path), CompactMode::OnClose).Failed() ||
        zip.Add(WidePath(folder / "small"), L"small").Failed() || zip.Flush().Failed()) {
        return kWrong;
    }
    const std::string before = ReadFile(path);
    const auto files_before = files();
    begin_fault();
    gtl::status result = zip.Add(source, L"large");
    const bool taken = result.Succeeded();
    if (taken) {
        result = zip.Flush();
    }
    if (result.Succeeded() || ReadFile(path) != before || files() != files_before ||
        zip.Count() != (taken ? 2U : 1U) || Content(zip, L"small") != "small") {
        return kWrong;
    }
    end_fault();
    if ((!taken && zip.Add(source, L"large").Failed()) || zip.Close().Failed()) {
        return kWrong;
    }
    return zip.Open(WidePath(path), CompactMode::OnClose).Succeeded() && zip.Count() == 2 &&
                   zip.Test(zip.GetAllFileIDs()).Succeeded()
               ? kAsExpected
               : kWrong;
}

void DoNothing() {}

void SetFileSizeLimit(rlim_t limit) {
    rlimit limits{};
    getrlimit(RLIMIT_FSIZE, &limits);
    limits.rlim_cur = limit == RLIM_INFINITY ? limits.rlim_max : limit;
    setrlimit(RLIMIT_FSIZE, &limits);
}

// Gives this process its own view of what is mounted.
bool HasOwnMounts() {
    return unshare(CLONE_NEWNS) == 0 &&
           mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

TEST(ZipFaults, FileSizeLimitFailsAndCanBeRepeated) {
    struct Row {
        std::size_t size;  // kept in memory, or in the scratch file
        rlim_t limit;
        bool names;  // without /proc a passing file has a name from the start
    };
    for (const Row& row :
         {Row{900'000, 100'000, false}, Row{900'000, 890'000, false}, Row{900'000, 500'000, true},
          Row{3'000'000, 100'000, false}, Row{3'000'000, 890'000, true}}) {
        SCOPED_TRACE(row.size);
        SCOPED_TRACE(row.limit);
        const ScratchFolder folder;
        folder.Write("small", "small");
        const std::wstring source = folder.Write("source", Noise(row.size));
        const int outcome = RunChild([&] {
            if (row.names && (!HasOwnMounts() || mount("none", "/proc", "tmpfs", 0, "") != 0)) {
                return kNotPossibleHere;
            }
            std::signal(SIGXFSZ, SIG_IGN);
            SetFileSizeLimit(row.limit);
            return AddUnderFault(folder.Path(), source, DoNothing,
                                 [] { SetFileSizeLimit(RLIM_INFINITY); });
        });
        EXPECT_TRUE(outcome == kAsExpected || (row.names && outcome == kNotPossibleHere));
    }
}

TEST(ZipFaults, FullDiskFailsAndCanBeRepeated) {
    for (const std::size_t size : {900'000U, 3'000'000U}) {
        SCOPED_TRACE(size);
        const ScratchFolder folder;
        const std::wstring source = folder.Write("source", Noise(size));
        fs::create_directory(folder.Path() / "disk");
        const fs::path disk = folder.Path() / "disk";
        const int outcome = RunChild([&] {
            // A disk of 512 kB, which nobody outside the child sees.
            if (!HasOwnMounts() || mount("disk", disk.c_str(), "tmpfs", 0, "size=512k") != 0) {
                return kNotPossibleHere;
            }
            folder.Write("disk/small", "small");
            return AddUnderFault(disk, source, DoNothing, [&] {
                mount("disk", disk.c_str(), "tmpfs", MS_REMOUNT, "size=16m");
            });
        });
        if (outcome == kNotPossibleHere) {
            GTEST_SKIP() << "only the superuser can make a disk";
        }
        EXPECT_EQ(outcome, kAsExpected);
    }
}

TEST(ZipFaults, FolderThatCannotBeWrittenFailsAndCanBeRepeated) {
    const ScratchFolder folder;
    fs::permissions(folder.Path(), fs::perms::all);
    fs::create_directory(folder.Path() / "project");
    const fs::path project = folder.Path() / "project";
    fs::permissions(project, fs::perms::all);
    const std::wstring source = folder.Write("source", Noise(3'000'000));
    const int outcome = RunChild([&] {
        if (geteuid() == 0 && seteuid(65534) != 0) {
            return kNotPossibleHere;
        }
        folder.Write("project/small", "small");
        const auto set_mode = [&](mode_t mode) {
            if (chmod(project.c_str(), mode) != 0) {  // the folder is the superuser's
                static_cast<void>(seteuid(0));
                static_cast<void>(chmod(project.c_str(), mode));
                static_cast<void>(seteuid(65534));
            }
        };
        return AddUnderFault(
            project, source, [&] { set_mode(0555); }, [&] { set_mode(0777); });
    });
    if (outcome == kNotPossibleHere) {
        GTEST_SKIP() << "the superuser cannot become somebody else here";
    }
    EXPECT_EQ(outcome, kAsExpected);
}

TEST(ZipFaults, RightsAndLinksOfTheArchiveAreKept) {
    const ScratchFolder folder;
    Zip zip;
    ASSERT_OK(zip.Open(folder / "real.lwz", CompactMode::Never));
    ASSERT_OK(zip.Close());
    ASSERT_EQ(chmod((folder.Path() / "real.lwz").c_str(), 0640), 0);
    fs::create_symlink("real.lwz", folder.Path() / "link.lwz");
    ASSERT_OK(zip.Open(folder / "link.lwz", CompactMode::Never));
    EXPECT_OK(zip.Add(folder.Write("source", "1"), L"a"));
    ASSERT_OK(zip.Close());
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.lwz"));
    struct stat info {};
    ASSERT_EQ(stat((folder.Path() / "real.lwz").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, 0640U);
    ASSERT_OK(zip.Open(folder / "real.lwz", CompactMode::Never));
    EXPECT_EQ(Content(zip, L"a"), "1");
}

TEST(ZipFaults, LeftoversOfAKilledProcessAreNoObstacle) {
    // A process in a container often has the number that the one before it had.
    const ScratchFolder folder;
    for (int k = 0; k < 500; ++k) {
        folder.Write(".lmw-" + std::to_string(getpid()) + '-' + std::to_string(k) + ".tmp", "left");
    }
    Zip zip;
    ASSERT_OK(zip.Open(folder / "p.lwz", CompactMode::Never));
    EXPECT_OK(zip.Add(folder.Write("source", "1"), L"a"));
    EXPECT_OK(zip.Flush());
    EXPECT_OK(zip.Extract({0}, WidePath(folder.Path()), sys::file::zip::ExtractNameSame()));
    EXPECT_EQ(folder.Read("a"), "1");
    EXPECT_EQ(folder.Files().size(), 503U);
}

TEST(ZipFaults, PipesAreNotWaitedFor) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    Zip zip;
    EXPECT_TRUE(zip.Open(folder / "pipe", CompactMode::Never).Failed());
    ASSERT_OK(zip.Open(folder / "p.lwz", CompactMode::Never));
    EXPECT_TRUE(zip.Add(folder / "pipe", L"pipe").Failed());
}

}  // namespace
