#include "importer/plmxml/Recognition.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace importer::plmxml;

namespace
{

class RecognitionTest : public testing::Test
{
protected:
    QString write(const char* name, const QByteArray& text)
    {
        QFile file(m_folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

TEST_F(RecognitionTest, TheExtensionSaysIt)
{
    EXPECT_TRUE(isDocument(QStringLiteral("/none/car.plmxml")));
    EXPECT_TRUE(isDocument(QStringLiteral("/none/CAR.PLMXML")));
    EXPECT_FALSE(isDocument(QStringLiteral("/none/car.stp")));
    EXPECT_FALSE(isDocument(QStringLiteral("/none/car.xml")));
}

TEST_F(RecognitionTest, AnXmlFileIsOneByItsFirstElement)
{
    EXPECT_TRUE(isDocument(write("a.xml", "<?xml version='1.0'?><!-- a --><PLMXML xmlns='x'><A/></PLMXML>")));
    EXPECT_TRUE(isDocument(write("b.XML", "<p:PLMXML xmlns:p='x'/>")));
    EXPECT_FALSE(isDocument(write("c.xml", "<Other><PLMXML/></Other>")));
    EXPECT_FALSE(isDocument(write("d.xml", "")));
    EXPECT_FALSE(isDocument(m_folder.path()));
}

} // namespace
