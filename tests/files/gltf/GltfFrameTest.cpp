#include "files/gltf/GltfFrame.h"

#include "tests/files/gltf/GltfSquare.h"

namespace
{

constexpr const char* oneMesh = R"("meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}])";

/// Documents that are damaged in their buffers, views and accessors.
class GltfFrameTest : public GltfReaderTest
{
protected:
    QString errorOfText(const QByteArray& json) { return errorOf(write(QStringLiteral("f.gltf"), json)); }
    QString errorOfBinary(const QByteArray& file) { return errorOf(write(QStringLiteral("f.glb"), file)); }

    static QByteArray withAccessor(const QByteArray& accessor, const QByteArray& view = R"({"buffer": 0,
        "byteLength": 192})",
                                   const QByteArray& buffer = squareBytes().embedded())
    {
        return R"({"asset": {"version": "2.0"}, "buffers": [)" + buffer + R"(], "bufferViews": [)" + view +
               R"(], "accessors": [)" + accessor + R"(], "nodes": [{"mesh": 0}], )" + oneMesh + "}";
    }
};

TEST_F(GltfFrameTest, DamagedTextIsRefused)
{
    EXPECT_EQ(errorOfText(R"({"asset": {"version")"),
              QStringLiteral("Damaged f.gltf: parse error at line 1, column 21: syntax error while parsing object "
                             "separator - unexpected end of input; expected ':' (byte 21)"));
    EXPECT_EQ(errorOfText("[]"),
              QStringLiteral("Damaged f.gltf: this is no glTF: it does not tell its version (/asset/version)"));
    EXPECT_EQ(errorOfText(R"({"asset": {"version": "1.0"}})"),
              QStringLiteral("Unsupported f.gltf: this is glTF 1.0; only glTF 2 is read"));
    EXPECT_EQ(errorOfText(QByteArray(100'000, '[')),
              QStringLiteral("Damaged f.gltf: the JSON text is nested too deeply"));
    EXPECT_EQ(errorOfText(R"({"asset": {"version": "2.0"}, "extensions": {"a": )" + QByteArray(100'000, '[') + "}}"),
              QStringLiteral("Damaged f.gltf: the JSON text is nested too deeply"));
}

TEST_F(GltfFrameTest, DamagedBuffersAreRefused)
{
    const QByteArray accessor = R"({"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"})";
    const QByteArray view = R"({"buffer": 0, "byteLength": 48})";
    const auto errorOfBuffer = [&](const QByteArray& buffer) {
        return errorOfText(withAccessor(accessor, view, buffer));
    };
    EXPECT_EQ(errorOfBuffer(R"({"uri": "x.bin"})"),
              QStringLiteral("Damaged f.gltf: a buffer does not tell its length (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": -1, "uri": "x.bin"})"),
              QStringLiteral("Damaged f.gltf: a buffer does not tell its length (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 5})"),
              QStringLiteral("Damaged f.gltf: a buffer of 5 bytes has only 0 (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 5, "uri": "data:application/octet-stream;base64,AAAA"})"),
              QStringLiteral("Damaged f.gltf: a buffer of 5 bytes has only 3 (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 3, "uri": "data:application/octet-stream;base64,A?!A"})"),
              QStringLiteral("Damaged f.gltf: the data of a buffer are not in base 64 (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 3, "uri": "data:,abc"})"),
              QStringLiteral("Damaged f.gltf: the data of a buffer are not in base 64 (/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 3, "uri": "https://example.org/a.bin"})"),
              QStringLiteral("Unsupported f.gltf: a buffer is not on this computer: https://example.org/a.bin "
                             "(/buffers/0)"));
    EXPECT_EQ(errorOfBuffer(R"({"byteLength": 3, "uri": "missing.bin"})"),
              QStringLiteral("NotFound missing.bin: the file does not exist"));
}

TEST_F(GltfFrameTest, AccessorsNeverReachOutsideTheirBuffers)
{
    const auto errorOfAccessor = [&](const QByteArray& accessor, const QByteArray& view) {
        return errorOfText(withAccessor(accessor, view));
    };
    const QByteArray square = R"({"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"})";
    EXPECT_EQ(errorOfAccessor(square, R"({"buffer": 0, "byteLength": 47})"),
              QStringLiteral("Damaged f.gltf: 4 elements do not fit into the buffer view 0 (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(square, R"({"buffer": 0, "byteLength": 192, "byteStride": 64})"),
              QStringLiteral("Damaged f.gltf: 4 elements do not fit into the buffer view 0 (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(square, R"({"buffer": 0, "byteOffset": 150, "byteLength": 48})"),
              QStringLiteral("Damaged f.gltf: the buffer view 0 reaches outside its buffer (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(square, R"({"buffer": 0, "byteOffset": 18446744073709551600, "byteLength": 48})"),
              QStringLiteral("Damaged f.gltf: the buffer view 0 reaches outside its buffer (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(square, R"({"buffer": 2, "byteLength": 48})"),
              QStringLiteral("Damaged f.gltf: the buffer 2 does not exist (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(R"({"bufferView": 0, "componentType": 5126, "count": 4000000000, "type": "VEC3"})",
                              R"({"buffer": 0, "byteLength": 48})"),
              QStringLiteral("LimitExceeded f.gltf: more than 268435456 vertices (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(R"({"componentType": 5126, "count": 4000000000, "type": "VEC3"})",
                              R"({"buffer": 0, "byteLength": 48})"),
              QStringLiteral("LimitExceeded f.gltf: more than 268435456 vertices (/accessors/0)"));
    EXPECT_EQ(errorOfAccessor(R"({"bufferView": 0, "componentType": 5130, "count": 4, "type": "VEC3"})",
                              R"({"buffer": 0, "byteLength": 192})"),
              QStringLiteral("Damaged f.gltf: the numbers have the wrong type (/accessors/0)"));
}

TEST_F(GltfFrameTest, IndicesNeverReachBeyondTheVertices)
{
    GltfBytes bytes;
    bytes.floats({0, 0, 1, 1, 0, 1, 0, 1, 1}).bytes({0, 1, 3, 0});
    const QByteArray json = R"({"asset": {"version": "2.0"}, "buffers": [)" + bytes.embedded() + R"(],
        "bufferViews": [{"buffer": 0, "byteLength": 36}, {"buffer": 0, "byteOffset": 36, "byteLength": 4}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"},
                      {"bufferView": 1, "componentType": 5121, "count": 3, "type": "SCALAR"}],
        "nodes": [{"mesh": 0}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]}]})";
    EXPECT_EQ(errorOfText(json), QStringLiteral("Damaged f.gltf: an index reaches beyond the 3 vertices "
                                                "(/meshes/0/primitives/0/indices)"));
}

TEST_F(GltfFrameTest, SparseIndicesStayWithinTheAccessor)
{
    const QByteArray accessor = R"({"bufferView": 0, "componentType": 5126, "count": 2, "type": "VEC3", "sparse":
        {"count": 1, "indices": {"bufferView": 0, "byteOffset": 164, "componentType": 5121},
         "values": {"bufferView": 0}}})";
    EXPECT_EQ(errorOfText(withAccessor(accessor)),
              QStringLiteral("Damaged f.gltf: the index 2 is outside the accessor (/accessors/0/sparse)"));
}

TEST_F(GltfFrameTest, EveryTruncationOfABinaryFileIsRefused)
{
    const QByteArray json = withAccessor(R"({"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"})",
                                         R"({"buffer": 0, "byteLength": 48})", R"({"byteLength": 48})");
    const QByteArray whole = glbOf(json, squareBytes().all().left(48));
    EXPECT_EQ(errorOfBinary(whole), QStringLiteral("none"));
    for (int length = 0; length < whole.size(); ++length)
        EXPECT_NE(errorOfBinary(whole.left(length)), QStringLiteral("none")) << length;
    EXPECT_EQ(errorOfBinary(whole.left(100)),
              QStringLiteral("Damaged f.glb: the file ends after 100 of %1 bytes (byte 0)").arg(whole.size()));
}

TEST_F(GltfFrameTest, EveryChangedByteOfABinaryFileIsReadOrRefused)
{
    const QByteArray json = withAccessor(R"({"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"})",
                                         R"({"buffer": 0, "byteLength": 48})", R"({"byteLength": 48})");
    const QByteArray whole = glbOf(json, squareBytes().all().left(48));
    for (int place = 0; place < whole.size(); ++place) {
        QByteArray changed = whole;
        changed[place] = static_cast<char>(changed[place] ^ 0x15);
        const files::ReadResult result = read(write(QStringLiteral("f.glb"), changed));
        EXPECT_TRUE(!result || result.value());
    }
}

TEST_F(GltfFrameTest, DamagedFramesAreRefused)
{
    QByteArray file = glbOf("{}", "abcd");
    file[4] = 1;
    EXPECT_EQ(errorOfBinary(file), QStringLiteral("Unsupported f.glb: this is glTF 1; only glTF 2 is read"));
    file = glbOf("{}", "abcd");
    file[16] = 'j';
    EXPECT_EQ(errorOfBinary(file), QStringLiteral("Damaged f.glb: the first chunk is not JSON text (byte 12)"));
    file = glbOf("{}", "abcd");
    file[15] = '\x7f';
    EXPECT_EQ(errorOfBinary(file), QStringLiteral("Damaged f.glb: a chunk is longer than the file (byte 12)"));
    EXPECT_EQ(errorOfBinary("glTF"), QStringLiteral("Damaged f.glb: the file is too short for its header (byte 0)"));
}

} // namespace
