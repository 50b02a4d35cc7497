// Files that somebody made to take long or to take much: each is read in time that grows as the file, or refused.

#include "files/obj/ObjReader.h"

#include "tests/files/ReaderTest.h"

#include <cmath>
#include <ctime>

namespace
{

class ObjReaderLimitsTest : public ReaderTest
{
protected:
    /// Of the processor, for which it does not matter what else the machine does.
    double secondsOf(const QByteArray& content)
    {
        const QString path = write(QStringLiteral("t.obj"), content);
        const std::clock_t start = std::clock();
        EXPECT_EQ(errorOf(path), QStringLiteral("none"));
        return double(std::clock() - start) / CLOCKS_PER_SEC;
    }

    /// Four times as much takes no more than three times four times as long.
    template <class Make>
    void expectLinear(const Make& contentOf, int few)
    {
        secondsOf(contentOf(few / 10));
        const double less = secondsOf(contentOf(few));
        const double more = secondsOf(contentOf(4 * few));
        EXPECT_LT(more, 12 * less) << less << " s and " << more << " s";
    }
};

/// One face round a star, whose every other corner is a dent.
QByteArray starOf(int corners)
{
    QByteArray vertices, face = "f";
    for (int i = 0; i < corners; ++i) {
        const double angle = 6.283185307179586 * i / corners;
        const double radius = 100.0 + i % 2;
        vertices += "v " + QByteArray::number(radius * std::cos(angle), 'f', 6) + ' ' +
                    QByteArray::number(radius * std::sin(angle), 'f', 6) + " 0\n";
        face += ' ' + QByteArray::number(i + 1);
    }
    return vertices + face + '\n';
}

TEST_F(ObjReaderLimitsTest, AFaceOfManyCornersIsCutUpInTimeThatGrowsAsTheCorners)
{
    expectLinear(starOf, 15'000);
    EXPECT_EQ(mesh(root()->getChild(0)).triangles.size(), 3u * (60'000 - 2));
}

TEST_F(ObjReaderLimitsTest, ManyObjectsTakeTimeThatGrowsAsTheirNumber)
{
    expectLinear(
        [](int count) {
            QByteArray content = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
            for (int i = 0; i < count; ++i)
                content += "o o" + QByteArray::number(i) + "\nf 1 2 3\n";
            return content;
        },
        5'000);
    EXPECT_EQ(root()->getNChildren(), 20'000u);
}

TEST_F(ObjReaderLimitsTest, ALibraryThatIsNamedOftenIsReadOnce)
{
    const QByteArray library = "newmtl steel\nNs 300\nKd x\n";
    write(QStringLiteral("m.mtl"), library);
    QByteArray content = "v 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl steel\nf 1 2 3\n";
    for (int i = 0; i < 1000; ++i)
        content += "mtllib m.mtl\n";
    files::ReadOptions options;
    options.limits.maxFileBytes = std::uint64_t(content.size() + library.size());
    const files::ReadResult result = read(write(QStringLiteral("often.obj"), content), options);
    ASSERT_TRUE(result) << result.error().toString().toStdString();
    EXPECT_EQ(material(root()->getChild(0))->getShininess(), 300);
    EXPECT_EQ(texts(result.warnings), QStringList{QStringLiteral("a value of 'Kd' is no number @ line 3")});
}

TEST_F(ObjReaderLimitsTest, VerticesCornersSectionsAndMaterialsCountAsMemory)
{
    files::ReadOptions options;
    options.limits.maxMemory = 1 << 20;
    const auto fails = [&](const QByteArray& content) {
        return errorOf(write(QStringLiteral("m.obj"), content), options) ==
               QStringLiteral("LimitExceeded m.obj: it would take more memory than the 1 MB that it may (read.memory)");
    };
    const QByteArray triangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    EXPECT_FALSE(fails(triangle));
    EXPECT_TRUE(fails(QByteArray("v 0 0 0\n").repeated(16'400) + triangle));
    EXPECT_TRUE(fails(QByteArray("vt 0 0\n").repeated(16'400) + triangle));
    EXPECT_TRUE(fails(QByteArray("vn 0 0 1\n").repeated(16'400) + triangle));
    EXPECT_TRUE(fails(triangle + "f" + QByteArray(" 1").repeated(8'200) + '\n'));
    QByteArray objects, library;
    for (int i = 0; i < 1000; ++i) {
        objects += "o " + QByteArray::number(i) + "\nf 1 2 3\n";
        library += "newmtl " + QByteArray::number(i) + '\n';
    }
    EXPECT_TRUE(fails(triangle + objects));
    write(QStringLiteral("m.mtl"), library + "newmtl m\nnewmtl n\n");
    EXPECT_TRUE(fails("mtllib m.mtl\n" + triangle + QByteArray("v 0 0 0\n").repeated(1000)));
}

} // namespace
