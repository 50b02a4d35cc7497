#pragma once

#include "files/ReadTask.h"
#include "files/SceneReaders.h"
#include "standalone/reading/ChildReading.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

/// Reads of meshes in a session, which goes without a trace in the folder of the session.
class ReadingTest : public SessionTest
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(readFolders(), QStringList());
        SessionTest::TearDown();
    }

    /// By the readers of the session.
    files::ReadResult read(const QString& file, const files::ReadOptions& options = {})
    {
        return m_session.state<files::SceneReaders>().read(file, options);
    }

    /// An OBJ file of so many triangles that have nothing in common.
    QString writeLargeObj(int triangles) const
    {
        QByteArray text;
        for (int i = 0; i < triangles; ++i) {
            const QByteArray number = QByteArray::number(i);
            text += "v " + number + " 0 0\nv " + number + ".5 1 0\nv " + number + ".25 0 1.125\nf -1 -2 -3\n";
        }
        return write(QStringLiteral("large.obj"), text);
    }

    /// What reads have left in the folder of the session.
    QStringList readFolders() const
    {
        return QDir(m_session.temporaryFolder()).entryList({QStringLiteral("reading-*")}, QDir::AllEntries);
    }
};
