#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Runs of the tool in a folder of their own.
class ToolRun : public testing::Test
{
protected:
    struct Ending {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    static QString text(const char* utf8) { return QString::fromUtf8(utf8); }
    QString path(const char* name) const { return m_folder.filePath(text(name)); }

    QString write(const char* name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    static Ending znimport(const QStringList& arguments)
    {
        QProcess process;
        process.start(text(ZNIMPORT), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

    /// A CAD file whose conversion by the scripted child gives the scene file `made`.
    QString writeCad(const char* name, const QString& made) const
    {
        return write(name, "output-from \"" + made.toUtf8() + "\"\n");
    }
    static QStringList withScriptedChild(const QStringList& arguments)
    {
        return arguments + QStringList{text("--set"), text("converter.program=") + text(ZN_SCRIPTED_CHILD)};
    }

private:
    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/znimport run äö XXXXXX")};
};
