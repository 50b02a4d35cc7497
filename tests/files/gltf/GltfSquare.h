#pragma once

#include "tests/files/ReaderTest.h"
#include "tests/files/gltf/GltfFixture.h"

#include <array>

/// A square and what else the tests ask for, at the places that the buffer views below name.
inline const GltfBytes& squareBytes()
{
    static const GltfBytes bytes = [] {
        GltfBytes b;
        b.floats({0, 0, 0.5f, 1, 0, 0.5f, 1, 1, 0.5f, 0, 1, 0.5f});                   // view 0: positions
        b.floats({0, 0, 1, 0, 0.6f, 0.8f, 1, 0, 0, 0, -1, 0});                        // view 1: normals
        b.floats({0, 0, 1, 0.25f, 1, 1, 0.5f, 0.75f});                                // view 2: texture coordinates
        b.bytes({55, 128, 255, 51, 0, 0, 0, 255, 255, 255, 255, 255, 10, 55, 55, 0}); // view 3: colours
        b.shorts({0, 1, 2, 0, 2, 3, 0, 0});                                           // view 4: indices
        b.bytes({0, 1, 3, 2});                                                        // view 5: indices
        b.bytes({2, 0, 0, 0});                                                        // view 6: sparse indices
        b.floats({9, 8, 7});                                                          // view 7: sparse values
        b.words({3, 2, 1});                                                           // view 8: indices
        return b;
    }();
    return bytes;
}

inline constexpr const char* squareViews = R"(
    "bufferViews": [
        {"buffer": 0, "byteOffset": 0, "byteLength": 48}, {"buffer": 0, "byteOffset": 48, "byteLength": 48},
        {"buffer": 0, "byteOffset": 96, "byteLength": 32}, {"buffer": 0, "byteOffset": 128, "byteLength": 16},
        {"buffer": 0, "byteOffset": 144, "byteLength": 16}, {"buffer": 0, "byteOffset": 160, "byteLength": 4},
        {"buffer": 0, "byteOffset": 164, "byteLength": 4}, {"buffer": 0, "byteOffset": 168, "byteLength": 12},
        {"buffer": 0, "byteOffset": 180, "byteLength": 12}],
    "accessors": [
        {"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3"},
        {"bufferView": 1, "componentType": 5126, "count": 4, "type": "VEC3"},
        {"bufferView": 2, "componentType": 5126, "count": 4, "type": "VEC2"},
        {"bufferView": 3, "componentType": 5121, "count": 4, "type": "VEC4", "normalized": true},
        {"bufferView": 4, "componentType": 5123, "count": 6, "type": "SCALAR"},
        {"bufferView": 5, "componentType": 5121, "count": 4, "type": "SCALAR"},
        {"bufferView": 0, "componentType": 5126, "count": 4, "type": "VEC3", "sparse": {"count": 1,
            "indices": {"bufferView": 6, "componentType": 5121}, "values": {"bufferView": 7}}},
        {"bufferView": 8, "componentType": 5125, "count": 3, "type": "SCALAR"},
        {"componentType": 5126, "count": 4, "type": "VEC3", "sparse": {"count": 1,
            "indices": {"bufferView": 6, "componentType": 5121}, "values": {"bufferView": 7}}}])";

class GltfReaderTest : public ReaderTest
{
protected:
    /// A document with the square's buffer, views and accessors, and `members`.
    static QByteArray document(const QByteArray& members, const QByteArray& buffer = squareBytes().embedded())
    {
        return R"({"asset": {"version": "2.0"}, "buffers": [)" + buffer + "]," + squareViews +
               (members.isEmpty() ? "" : ",") + members + "}";
    }

    files::ReadResult readDocument(const QByteArray& members, const files::ReadOptions& options = {})
    {
        return read(write(QStringLiteral("square.gltf"), document(members)), options);
    }

    QString errorOfDocument(const QByteArray& members, const files::ReadOptions& options = {})
    {
        return errorOf(write(QStringLiteral("square.gltf"), document(members)), options);
    }

    /// The node of the metres, which bears the name of the scene.
    osg::NodePtr scene() const { return root()->getChild(0); }

    static std::array<float, 16> matrixOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Transform>(node->getCore())->getMatrix().values;
    }
};
