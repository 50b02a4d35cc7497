#include "importer/DocumentFault.h"

#include "tests/support/QtPrinters.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

struct FaultRow {
    const char* name;
    QByteArray text;
    const char* fault;
};

QByteArray manyAttributes(int count)
{
    QByteArray text;
    for (int number = 0; number < count; ++number)
        text += " a" + QByteArray::number(number) + "=''";
    return text;
}

class DocumentFaultTest : public testing::TestWithParam<FaultRow>
{
protected:
    QString write(const QByteArray& text) const
    {
        QFile file(m_folder.filePath(QStringLiteral("car.plmxml")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

TEST_P(DocumentFaultTest, IsToldWithItsPlace)
{
    const QString file = write(GetParam().text);
    const auto fault = importer::findDocumentFault(file);
    ASSERT_TRUE(fault);
    EXPECT_EQ(describe(file, *fault), file + QString::fromUtf8(GetParam().fault));
}

INSTANTIATE_TEST_SUITE_P(
    All, DocumentFaultTest,
    testing::Values(
        FaultRow{"OtherRoot", "<?xml version='1.0'?>\n  <Other/>\n",
                 ":2:3: the document begins with the element Other, not with PLMXML"},
        FaultRow{"CutOff", "<PLMXML>\n<ProductDef id='a", ":2:1: the document is cut off"},
        FaultRow{"Number",
                 "<PLMXML><ProductDef><InstanceGraph>\n<Transform>1 0 x 1</Transform></InstanceGraph>"
                 "</ProductDef></PLMXML>",
                 ":2:12: value 3 of a Transform is not a number that fits"},
        FaultRow{"Material", "<PLMXML><ProductDef>\n <Material diffuse='1 0 0' alpha='full'/></ProductDef></PLMXML>",
                 ":2:2: the attribute alpha of a Material has a word among its numbers"},
        FaultRow{"Depth", QByteArray("<a>").repeated(2001),
                 ":1:6001: elements stand more than 2000 inside one another"},
        FaultRow{"Attributes", "<PLMXML>\n<a" + manyAttributes(1001) + "/></PLMXML>",
                 ":2:1: an element has more than 1000 attributes"},
        FaultRow{"NoElement", "<?xml version='1.0'?>\n", ":1:1: the document is empty"},
        FaultRow{"Empty", "", ":1:1: Error document empty."},
        FaultRow{"Letters", "<?xml encoding='utf-8'?>\n<PLMXML n='\xc3'/>", ":2:12: a character is not valid UTF-8"},
        FaultRow{"EndTag", "<PLMXML></PLMXML>\n</X>", ":2:1: an end tag has no element"}),
    [](const auto& row) { return row.param.name; });

class SoundDocumentTest : public DocumentFaultTest
{
};

TEST_P(SoundDocumentTest, HasNoFault)
{
    EXPECT_FALSE(importer::findDocumentFault(write(GetParam().text)));
}

INSTANTIATE_TEST_SUITE_P(
    All, SoundDocumentTest,
    testing::Values(
        FaultRow{"Transform", "<PLMXML><ProductDef><Transform>1 0 0 1</Transform></ProductDef></PLMXML>", ""},
        FaultRow{"TransformThatIsSkipped",
                 "<PLMXML><ProductDef><Transform>x</Transform><Part><Transform>x</Transform></Part>"
                 "<Other><Material alpha='x'/></Other></ProductDef></PLMXML>",
                 ""},
        FaultRow{"SecondProduct", "<PLMXML><ProductDef/><ProductDef><Material alpha='x'/></ProductDef></PLMXML>", ""},
        FaultRow{"Empty", "<?xml version='1.0'?>\n<PLMXML/>\n", ""}),
    [](const auto& row) { return row.param.name; });

} // namespace
