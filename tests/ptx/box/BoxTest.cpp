#include "ptx/box/Box.h"

#include "ptx/box/SystemCalls.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

namespace fs = std::filesystem;
using ptx::core::Sandbox;

namespace
{

constexpr int Truncates = 3; ///< the version of the rules for files that knows of cutting them short

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// An error number, or 0 for what went well.
int errorOf(long result)
{
    return result < 0 ? errno : 0;
}

int errorOfOpening(const std::string& path, int flags)
{
    const int descriptor = ::open(path.c_str(), flags, 0600);
    if (descriptor < 0)
        return errno;
    ::close(descriptor);
    return 0;
}

/// A process in the box, whose input is in "in" and whose output is in "out" of a folder.
class Box : public testing::Test
{
protected:
    void SetUp() override
    {
        if (ptx::box::fileRulesVersion() == 0)
            GTEST_SKIP() << "this kernel has no rules for files";
        std::string pattern = fs::temp_directory_path() / "box ü-XXXXXX";
        base = ::mkdtemp(pattern.data());
        for (const char* folder : {"/in", "/out", "/other", "/parts"})
            fs::create_directory(base + folder);
        for (const char* file : {"/in/input.stl", "/in/beside.txt", "/other/secret.txt", "/parts/part.stp"})
            std::ofstream(base + file) << "content";
        fs::create_symlink("../other/secret.txt", base + "/in/link.txt");
    }
    void TearDown() override
    {
        if (!base.empty())
            fs::remove_all(base);
    }

    /// What `work` gives in such a process; 200 when it was not locked in, 250 when it died.
    int within(const std::function<int()>& work) const
    {
        const pid_t child = ::fork();
        if (child == 0) {
            const auto locked = ptx::box::lock(Sandbox::Require,
                                               {{base + "/in/input.stl"}, {base + "/parts"}, base + "/out/a.osb", {}});
            ::_exit(locked ? work() : 200);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 250;
    }

    std::string base;
};

} // namespace

TEST_F(Box, InputAndOutputAreOpen)
{
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/in/input.stl", O_RDONLY); }), 0);
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/parts/part.stp", O_RDONLY); }), 0);
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/out/a.osb", O_WRONLY | O_CREAT | O_EXCL); }), 0);
    EXPECT_EQ(within([this] {
                  const std::string made = base + "/out/b";
                  return errorOfOpening(made, O_RDWR | O_CREAT) + errorOf(::truncate(made.c_str(), 3)) +
                         errorOf(::rename(made.c_str(), (made + "c").c_str())) +
                         errorOf(::unlink((made + "c").c_str()));
              }),
              0);
}

TEST_F(Box, NothingElseIsRead)
{
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/other/secret.txt", O_RDONLY); }), EACCES);
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/in/link.txt", O_RDONLY); }), EACCES);
    EXPECT_EQ(within([] { return errorOfOpening("/etc/passwd", O_RDONLY); }), EACCES);
    EXPECT_EQ(within([] { return errorOfOpening("/proc/1/environ", O_RDONLY); }), EACCES);
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/other", O_RDONLY | O_DIRECTORY); }), EACCES);
}

TEST_F(Box, NothingElseIsWrittenMadeLinkedCutOrRemoved)
{
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/in/input.stl", O_WRONLY); }), EACCES);
    EXPECT_EQ(within([this] { return errorOfOpening(base + "/in/new", O_WRONLY | O_CREAT); }), EACCES);
    EXPECT_EQ(within([this] { return errorOfOpening("/dev/shm/zn-box-test", O_WRONLY | O_CREAT); }), EACCES);
    EXPECT_EQ(within([this] { return errorOf(::unlink((base + "/in/beside.txt").c_str())); }), EACCES);
    EXPECT_EQ(within([this] { return errorOf(::mkdir((base + "/out/folder").c_str(), 0700)); }), EPERM);
    EXPECT_EQ(within([this] { return errorOf(::symlink("/etc", (base + "/out/link").c_str())); }), EPERM);
    EXPECT_EQ(within([this] { return errorOf(::mkfifo((base + "/out/pipe").c_str(), 0600)); }), EPERM);
    EXPECT_EQ(
        within([this] { return errorOf(::link((base + "/other/secret.txt").c_str(), (base + "/out/link").c_str())); }),
        EPERM);
    EXPECT_NE(
        within([this] { return errorOf(::rename((base + "/in/beside.txt").c_str(), (base + "/out/moved").c_str())); }),
        0);
    if (ptx::box::fileRulesVersion() >= Truncates) {
        EXPECT_EQ(within([this] { return errorOf(::truncate((base + "/in/beside.txt").c_str(), 0)); }), EACCES);
    }
    EXPECT_EQ(contentOf(base + "/in/beside.txt"), "content");
}

TEST_F(Box, NothingIsConnected)
{
    for (const int family : {AF_INET, AF_INET6, AF_UNIX, AF_NETLINK})
        EXPECT_EQ(within([family] { return errorOf(::socket(family, SOCK_STREAM, 0)); }), EPERM) << family;
    EXPECT_EQ(within([] {
                  int ends[2];
                  return errorOf(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends));
              }),
              EPERM);
}

TEST_F(Box, NoProgramIsExecuted)
{
    EXPECT_EQ(within([] {
                  ::execl("/bin/sh", "sh", "-c", "exit 77", nullptr);
                  return errno;
              }),
              EACCES);
    EXPECT_EQ(within([this] {
                  const std::string program = base + "/out/program";
                  std::ofstream(program) << "#!/bin/sh\nexit 77\n";
                  ::chmod(program.c_str(), 0700);
                  ::execl(program.c_str(), "program", nullptr);
                  return errno;
              }),
              EACCES)
        << "one that it has written itself";
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_memfd_create, "x", 0)); }), EPERM);
}

TEST_F(Box, NoOtherProcessIsReached)
{
    const pid_t outside = ::getpid();
    EXPECT_EQ(within([outside] { return errorOf(::kill(outside, 0)); }), EPERM);
    EXPECT_EQ(within([outside] { return errorOf(::syscall(SYS_tgkill, outside, outside, 0)); }), EPERM);
    EXPECT_EQ(within([outside] { return errorOf(::ptrace(PTRACE_ATTACH, outside, nullptr, nullptr)); }), EPERM);
    EXPECT_EQ(
        within([outside] { return errorOf(::syscall(SYS_process_vm_readv, outside, nullptr, 0, nullptr, 0, 0)); }),
        EPERM);
    EXPECT_EQ(within([] { return errorOf(::kill(-1, 0)); }), EPERM);
}

/// Rules for files refuse signals as well, in newer kernels alone.
TEST(BoxOfSystemCalls, ByItselfRefusesSignalsToOthers)
{
    const pid_t outside = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        const bool isHeld = !ptx::box::restrictSystemCalls();
        const int errors[] = {errorOf(::kill(outside, 0)), errorOf(::kill(::getpid(), 0)),
                              errorOf(::syscall(SYS_tgkill, outside, outside, 0)),
                              errorOf(::syscall(SYS_tgkill, ::getpid(), ::getpid(), 0))};
        ::_exit(isHeld && errors[0] == EPERM && errors[1] == 0 && errors[2] == EPERM && errors[3] == 0 ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

/// By way of a file that has something to read.
TEST_F(Box, NoOtherProcessIsSentSignalsForAFile)
{
    const pid_t outside = ::getpid();
    const auto ask = [this, outside](int command) {
        return within([command, outside] {
            int ends[2];
            if (::pipe(ends) != 0)
                return 201;
            return errorOf(::fcntl(ends[0], command, command == F_SETSIG ? SIGTERM : outside));
        });
    };
    EXPECT_EQ(ask(F_SETOWN), EPERM);
    EXPECT_EQ(ask(F_SETSIG), EPERM);
    EXPECT_EQ(ask(F_GETFL), 0);
}

TEST_F(Box, RightsAndTimesOfOtherFilesStay)
{
    const std::string secret = base + "/other/secret.txt";
    EXPECT_EQ(within([&] { return errorOf(::chmod(secret.c_str(), 0666)); }), EPERM);
    EXPECT_EQ(within([&] { return errorOf(::fchmodat(AT_FDCWD, secret.c_str(), 0666, 0)); }), EPERM);
    EXPECT_EQ(within([&] { return errorOf(::chown(secret.c_str(), 1, 1)); }), EPERM);
    EXPECT_EQ(within([&] { return errorOf(::utimensat(AT_FDCWD, secret.c_str(), nullptr, 0)); }), EPERM);
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_sched_setaffinity, ::getppid(), 0, nullptr)); }), EPERM);
}

TEST_F(Box, KeysRingsAndNameSpacesAreRefused)
{
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_keyctl, 0, 0, 0, 0, 0)); }), EPERM);
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_io_uring_setup, 1, nullptr)); }), EPERM);
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_unshare, CLONE_NEWUSER)); }), EPERM);
    EXPECT_EQ(within([] { return errorOf(::syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, 0, 0, 0, 0)); }), EPERM);
    EXPECT_EQ(within([] { return errorOf(::ioctl(0, TIOCSTI, "x")); }), EPERM);
}

TEST_F(Box, ThreadsAndCopiesWorkAndStayInside)
{
    EXPECT_EQ(within([] {
                  int result = -1;
                  std::thread([&result] { result = errorOfOpening("/etc/passwd", O_RDONLY); }).join();
                  return result;
              }),
              EACCES);
    EXPECT_EQ(within([] {
                  const pid_t copy = ::fork();
                  if (copy == 0)
                      ::_exit(errorOfOpening("/etc/passwd", O_RDONLY));
                  int status = 0;
                  ::waitpid(copy, &status, 0);
                  return WEXITSTATUS(status);
              }),
              EACCES);
    EXPECT_EQ(within([] {
                  std::signal(SIGABRT, [](int) { ::_exit(33); });
                  std::abort();
                  return 0;
              }),
              33)
        << "it may end itself";
}

TEST_F(Box, CoreFilesInheritedDescriptorsAndTheEnvironmentAreCut)
{
    ::setenv("SECRET_TOKEN", "x", 1);
    ::setenv("LC_TEST", "x", 1);
    const int open = ::open("/etc/passwd", O_RDONLY);
    EXPECT_EQ(within([] { return std::getenv("SECRET_TOKEN") ? 1 : 0; }), 0);
    EXPECT_EQ(within([] { return std::getenv("LC_TEST") ? 1 : 0; }), 1);
    EXPECT_EQ(within([open] { return errorOf(::fcntl(open, F_GETFD)); }), EBADF);
    EXPECT_EQ(within([] {
                  rlimit limits{};
                  ::getrlimit(RLIMIT_CORE, &limits);
                  const bool hasCore = limits.rlim_max != 0;
                  ::getrlimit(RLIMIT_NOFILE, &limits);
                  return hasCore || limits.rlim_max > 1024 ? 1 : 0;
              }),
              0);
    ::close(open);
    ::unsetenv("SECRET_TOKEN");
    ::unsetenv("LC_TEST");
}

TEST_F(Box, ABoxWithinTheBoxHoldsAsWell)
{
    EXPECT_EQ(within([this] {
                  const auto locked =
                      ptx::box::lock(Sandbox::Require, {{base + "/in/input.stl"}, {"/etc"}, base + "/out/a.osb", {}});
                  if (!locked)
                      return 201;
                  const bool isOpen = errorOfOpening("/etc/passwd", O_RDONLY) != EACCES;
                  return isOpen ? 1 : errorOfOpening(base + "/in/input.stl", O_RDONLY);
              }),
              0)
        << "the first one counts";
}

TEST(BoxWish, OffLeavesEverythingOpenAndSaysSo)
{
    const auto locked = ptx::box::lock(Sandbox::Off, {{"/nowhere/a.stl"}, {}, "/nowhere/a.osb", {}});
    ASSERT_TRUE(locked);
    EXPECT_EQ(locked.value(), "not locked in, as was asked for");
    EXPECT_EQ(errorOfOpening("/etc/passwd", O_RDONLY), 0);
}
