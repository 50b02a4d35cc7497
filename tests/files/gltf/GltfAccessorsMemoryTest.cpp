// Documents whose counts stand for more than their bytes: each is refused before memory is taken.

#include "files/gltf/GltfAccessors.h"

#include "tests/files/gltf/GltfSquare.h"

#include <QElapsedTimer>

namespace
{

class GltfAccessorsMemoryTest : public GltfReaderTest
{
protected:
    /// A document with one primitive for each of `count` accessors that are written as `accessor`.
    static QByteArray documentOf(int count, const QByteArray& accessor)
    {
        QByteArray accessors, primitives;
        for (int i = 0; i < count; ++i) {
            accessors += (i ? "," : "") + accessor;
            primitives += (i ? "," : "") + QByteArray("{\"attributes\":{\"POSITION\":") + QByteArray::number(i) + "}}";
        }
        return R"({"asset":{"version":"2.0"},"buffers":[)" + squareBytes().embedded() +
               R"(],"bufferViews":[{"buffer":0,"byteLength":48}],"nodes":[{"mesh":0}],"meshes":[{"primitives":[)" +
               primitives + R"(]}],"accessors":[)" + accessors + "]}";
    }

    static files::ReadOptions oneMegabyte()
    {
        files::ReadOptions options;
        options.limits.maxMemory = 1 << 20;
        return options;
    }

    QString errorOfAccessors(int count, const QByteArray& accessor, const files::ReadOptions& options = {})
    {
        return errorOf(write(QStringLiteral("m.gltf"), documentOf(count, accessor)), options);
    }
};

TEST_F(GltfAccessorsMemoryTest, CountsThatNoByteBacksHaveALimit)
{
    EXPECT_EQ(errorOfAccessors(1, R"({"componentType":5126,"count":4194305,"type":"VEC3"})"),
              QStringLiteral("LimitExceeded m.gltf: more than 4194304 elements have no bytes in the file "
                             "(/accessors/0)"));
    EXPECT_EQ(errorOfAccessors(1, R"({"componentType":5126,"count":30000,"type":"VEC3"})"), QStringLiteral("none"));
}

TEST_F(GltfAccessorsMemoryTest, AccessorsWithoutBytesShareTheLimit)
{
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorOfAccessors(4000, R"({"componentType":5126,"count":600000,"type":"VEC3"})"),
              QStringLiteral("LimitExceeded m.gltf: more than 4194304 elements have no bytes in the file "
                             "(/accessors/6)"));
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(GltfAccessorsMemoryTest, ArraysThatAreCopiedCountAsMemory)
{
    EXPECT_EQ(errorOfAccessors(1, R"({"componentType":5126,"count":90000,"type":"VEC3"})", oneMegabyte()),
              QStringLiteral("LimitExceeded m.gltf: it would take more memory than the 1 MB that it may (read.memory) "
                             "(/accessors/0)"));
}

TEST_F(GltfAccessorsMemoryTest, IndicesThatAreMadeCountAsMemory)
{
    EXPECT_EQ(errorOfAccessors(1, R"({"componentType":5126,"count":66000,"type":"VEC3"})", oneMegabyte()),
              QStringLiteral("LimitExceeded m.gltf: it would take more memory than the 1 MB that it may (read.memory) "
                             "(/meshes/0/primitives/0)"));
}

TEST_F(GltfAccessorsMemoryTest, ValuesOfTheTextCountAsMemory)
{
    QByteArray nodes;
    for (int i = 0; i < 2000; ++i)
        nodes += ",{}";
    EXPECT_EQ(errorOfDocument(R"("nodes":[{})" + nodes + "]", oneMegabyte()),
              QStringLiteral("LimitExceeded square.gltf: it would take more memory than the 1 MB that it may "
                             "(read.memory)"));
}

TEST_F(GltfAccessorsMemoryTest, ManyAccessorsAreAsLinearAsFew)
{
    const auto secondsOf = [this](int count) {
        const QString path =
            write(QStringLiteral("t.gltf"),
                  documentOf(count, R"({"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"})"));
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(errorOf(path), QStringLiteral("none"));
        return double(timer.nsecsElapsed()) / 1e9;
    };
    secondsOf(100);
    const double few = secondsOf(1500);
    const double many = secondsOf(6000);
    EXPECT_LT(many, 12 * few) << few << " s and " << many << " s";
}

} // namespace
