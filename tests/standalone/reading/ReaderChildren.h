#pragma once

#include <QFile>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <sys/resource.h>
#include <sys/wait.h>

/// For tests of reads by children.
namespace readerchildren
{

/// Whether this process has a child, at work or ended and not waited for.
inline bool hasChildren()
{
    return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD;
}

/// Makes `path` a program of the shell that runs `script`, in place of the reader, which is called with the paths of
/// input and output as $2 and $3.
inline QString writeReader(const QString& path, const QByteArray& script)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write("#!/bin/sh\n" + script + "\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

/// Of this process and of those that it has waited for, in ms.
inline double processorTime()
{
    const auto milliseconds = [](int who) {
        rusage used{};
        ::getrusage(who, &used);
        return double(used.ru_utime.tv_sec + used.ru_stime.tv_sec) * 1e3 +
               double(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e3;
    };
    return milliseconds(RUSAGE_SELF) + milliseconds(RUSAGE_CHILDREN);
}

/// The least processor time of several calls of `read`: others who work on the machine make each dearer.
template <class Read>
double leastTime(const Read& read)
{
    double least = 1e9;
    for (int i = 0; i < 15; ++i) {
        const double before = processorTime();
        read();
        least = std::min(least, processorTime() - before);
    }
    return least;
}

} // namespace readerchildren
