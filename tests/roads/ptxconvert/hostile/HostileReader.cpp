// A reader that reads nothing: it tries what a converter may not do, when it is loaded and when it is called, and ends
// with the list of what came of it as the reason. Preloaded into ptxtessellate it takes the place of what reads exact
// surfaces, and prints the list.
//
// PTX_HOSTILE names a folder with "input", "other" and "out" in it, a file "secret" in each and "first" and "second" in
// "input", PTX_HOSTILE_PROCESS a process that is none of its own.

#include "ptx/readers/Module.h"
#include "tools/ptxconvert/documents/DocumentModule.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>

namespace
{

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::string file(const char* name)
{
    return variable("PTX_HOSTILE") + '/' + name;
}

int errorOf(long result)
{
    return result < 0 ? errno : 0;
}

int opened(const std::string& path, int flags)
{
    const int descriptor = ::open(path.c_str(), flags, 0600);
    const int error = errorOf(descriptor);
    if (descriptor >= 0)
        ::close(descriptor);
    return error;
}

/// Whatever comes of it stays in a process of its own.
int inACopy(const std::function<int()>& work)
{
    const pid_t copy = ::fork();
    if (copy == 0)
        ::_exit(work());
    int status = 0;
    ::waitpid(copy, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int executed(const std::string& program)
{
    return inACopy([&program] {
        ::execl(program.c_str(), "program", "-c", "exit 0", nullptr);
        return errno;
    });
}

/// A program of its own making, where it may write.
int executedOwn()
{
    const std::string program = file("out/program");
    std::ofstream(program) << "#!/bin/sh\nexit 0\n";
    const int descriptor = ::open(program.c_str(), O_RDONLY);
    ::fchmod(descriptor, 0700);
    ::close(descriptor);
    const int error = executed(program);
    ::unlink(program.c_str());
    return error;
}

int connected(int family)
{
    return inACopy([family] { return errorOf(::socket(family, SOCK_STREAM, 0)); });
}

const std::string AtLoad = "at load:";

/// Each file of "input" goes but once.
std::string tried(const std::string& when)
{
    const auto process = static_cast<pid_t>(std::atol(variable("PTX_HOSTILE_PROCESS").c_str()));
    const std::string environment = "/proc/" + variable("PTX_HOSTILE_PROCESS") + "/environ";
    std::string list;
    const auto tell = [&list](const char* what, int error) {
        list += std::string(" ") + what + '=' + (error == 0 ? "done" : std::strerror(error)) + ';';
    };
    tell("read", opened(file("other/secret"), O_RDONLY));
    tell("read-list", opened(file("other"), O_RDONLY | O_DIRECTORY));
    tell("read-process", opened(environment, O_RDONLY));
    tell("write", opened(file("other/secret"), O_WRONLY));
    tell("write-input", opened(file("input/secret"), O_WRONLY));
    tell("make", opened(file("input/made"), O_WRONLY | O_CREAT));
    tell("remove", errorOf(::unlink(file(when == AtLoad ? "input/first" : "input/second").c_str())));
    tell("rights", errorOf(::chmod(file("other/secret").c_str(), 0640)));
    tell("link", errorOf(::symlink("secret", file("out/link").c_str())));
    tell("connect", connected(AF_INET));
    tell("connect-local", connected(AF_UNIX));
    tell("execute", executed("/bin/sh"));
    tell("execute-own", executedOwn());
    tell("signal", errorOf(::kill(process, 0)));
    tell("copy-signals", inACopy([process] { return errorOf(::kill(process, 0)); }));
    tell("trace", inACopy([process] {
             const int error = errorOf(::ptrace(PTRACE_SEIZE, process, nullptr, nullptr));
             return error;
         }));
    ::unlink(file("out/link").c_str());
    return when + list;
}

bool isConverter()
{
    return std::strcmp(program_invocation_short_name, "ptxconvert") == 0;
}

const std::string atLoad = isConverter() ? tried(AtLoad) : std::string();

ptx::core::Outcome<ptx::model::Model> read(const ptx::model::Job& job)
{
    (void)job;
    return ptx::core::Failure{ptx::core::ExitCode::Damaged, atLoad + tried(" when called:")};
}

const ptx::readers::Module module = ptx::readers::moduleOf("none", &read);

[[noreturn]] void endWithWords()
{
    const std::string list = tried("when called:") + '\n';
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, list.data(), list.size());
    ::_exit(7);
}

const ptxconvert::DocumentModule documents{
    ZN_VERSION, sizeof(ptx::conversion::ReadDocument),
    [](const QString&, const QStringList&) -> ptx::conversion::ReadDocument { endWithWords(); }};

} // namespace

/// BinTools::Read(TopoDS_Shape&, std::istream&, const Message_ProgressRange&).
[[noreturn]] void readSurfaces() asm("_ZN8BinTools4ReadER12TopoDS_ShapeRSiRK21Message_ProgressRange");

void readSurfaces()
{
    endWithWords();
}

extern "C" const ptx::readers::Module* ptxbrep()
{
    return &module;
}

const ptxconvert::DocumentModule* ptxplmxml()
{
    return &documents;
}
