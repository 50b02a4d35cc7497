#pragma once

#include "importer/DocumentReading.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

/// Reads of product structures in a session, which leave no trace in the folder of the session.
class DocumentReadingFixture : public SessionTest
{
protected:
    using Reading = zn::FileSettings::Reading;
    using Outcome = files::Expected<importer::ReadDocument>;

    void TearDown() override
    {
        EXPECT_EQ(readFolders(), QStringList());
        SessionTest::TearDown();
    }

    /// Where the setting says.
    Outcome read(const QString& file, const importer::plmxml::NormaliserOptions& options = {})
    {
        return importer::readDocument(m_session, file, QStringLiteral("text.plmxml"), options);
    }

    /// A document of occurrences that it has to be rewritten for, so many and one.
    QString writeLarge(int occurrences) const
    {
        QByteArray ids, elements;
        for (int i = 0; i < occurrences; ++i) {
            const QByteArray id = "o" + QByteArray::number(i);
            ids += ' ' + id;
            elements += "<Occurrence id='" + id + "' name='" + id + "' partRef='#p'/>\n";
        }
        return write(QStringLiteral("large.plmxml"),
                     "<PLMXML><ProductView rootRefs='top'><Occurrence id='top' name='Top' occurrenceRefs='" + ids +
                         "'/>" + elements +
                         "</ProductView><Part id='p' name='P'><Representation format='JT' location='a.jt'/></Part>"
                         "</PLMXML>");
    }

    /// What reads have left in the folder of the session.
    QStringList readFolders() const
    {
        return QDir(m_session.temporaryFolder())
            .entryList({QStringLiteral("reading-*"), QStringLiteral("document-*")}, QDir::AllEntries);
    }
};
