#include "tests/gltf-validator/GltfValidator.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>

using gltfvalidator::validate;
using gltfvalidator::Verdict;

namespace
{

void appendNumber(QByteArray& bytes, quint32 number)
{
    const quint32 little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

// A chunk of a GLB; both kinds of chunk are padded here with blanks, which text and numbers of whole words bear.
void appendChunk(QByteArray& bytes, const char* type, QByteArray content)
{
    while (content.size() % 4 != 0)
        content.append(' ');
    appendNumber(bytes, static_cast<quint32>(content.size()));
    bytes.append(type, 4);
    bytes.append(content);
}

QByteArray glb(const QByteArray& json, const QByteArray& binary)
{
    QByteArray chunks;
    appendChunk(chunks, "JSON", json);
    appendChunk(chunks, "BIN\0", binary);
    QByteArray bytes("glTF");
    appendNumber(bytes, 2);
    appendNumber(bytes, static_cast<quint32>(12 + chunks.size()));
    return bytes + chunks;
}

QByteArray trianglePoints()
{
    QByteArray bytes;
    for (const float coordinate : std::array{2.F, 0.F, 0.F, 0.F, 3.F, 0.F, 0.F, 0.F, 5.F})
        bytes.append(reinterpret_cast<const char*>(&coordinate), sizeof coordinate);
    return bytes;
}

// One triangle with corners on the axes; `max` is what the accessor says of its largest coordinates.
QByteArray triangle(const QByteArray& max)
{
    return glb(R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],)"
               R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],)"
               R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":)" +
                   max +
                   R"(}],"bufferViews":[{"buffer":0,"byteLength":36,"target":34962}],)"
                   R"("buffers":[{"byteLength":36}]})",
               trianglePoints());
}

class GltfValidator : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!gltfvalidator::isInstalled())
            GTEST_SKIP() << "the glTF validator is not installed";
        ASSERT_TRUE(m_folder.isValid());
    }

    QString write(const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(QString::fromUtf8("zwei W\xc3\xb6rter.glb")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(GltfValidator, HasNothingToSayAboutAValidFile)
{
    EXPECT_EQ(validate(write(triangle("[2,3,5]"))), Verdict());
}

TEST_F(GltfValidator, NamesCodeAndPointerOfAnError)
{
    const Verdict verdict = validate(write(triangle("[2,3,7]")));

    ASSERT_EQ(verdict.errors.size(), 1);
    EXPECT_TRUE(verdict.errors.first().startsWith(QStringLiteral("ACCESSOR_MAX_MISMATCH at /accessors/0/max/2: ")))
        << verdict.errors.first().toStdString();
    EXPECT_EQ(verdict.failure, QString());
}

TEST_F(GltfValidator, TellsWarningsFromErrors)
{
    const Verdict verdict = validate(write(glb(R"({"asset":{"version":"2.0"},"made_up":4})", "word")));

    EXPECT_EQ(verdict.errors, QStringList());
    ASSERT_FALSE(verdict.warnings.isEmpty());
    EXPECT_TRUE(verdict.warnings.first().startsWith(QStringLiteral("UNEXPECTED_PROPERTY at /made_up: ")))
        << verdict.warnings.first().toStdString();
}

TEST_F(GltfValidator, CountsWhatIsNoGltfAsAnError)
{
    EXPECT_EQ(validate(write("solid ascii")).errors.size(), 1);
}

TEST_F(GltfValidator, SaysWhyThereIsNoVerdict)
{
    const Verdict verdict = validate(QStringLiteral("/no such folder/a.glb"));

    EXPECT_EQ(verdict.errors, QStringList());
    EXPECT_TRUE(verdict.failure.contains(QStringLiteral("no such file"), Qt::CaseInsensitive))
        << verdict.failure.toStdString();
}
