#include "files/gltf/GltfReader.h"

#include "tests/files/gltf/GltfSquare.h"

namespace
{

struct Damage {
    const char* name;
    const char* members;
    const char* error;
};

class GltfDamageTest : public GltfReaderTest, public testing::WithParamInterface<Damage>
{
};

TEST_P(GltfDamageTest, FailsWithFileCauseAndPlace)
{
    EXPECT_EQ(errorOfDocument(GetParam().members), QString::fromUtf8(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Documents, GltfDamageTest,
    testing::Values(
        Damage{"NoNodes", "", "Empty square.gltf: there is no mesh in the scene of this file"},
        Damage{"Cycle", R"("scenes": [{"nodes": [0]}], "nodes": [{"children": [1]}, {"children": [0]}])",
               "Damaged square.gltf: this node hangs below itself or below two others (/nodes/0)"},
        Damage{"TwoParents", R"("nodes": [{"children": [2]}, {"children": [2]}, {}])",
               "Damaged square.gltf: this node hangs below itself or below two others (/nodes/2)"},
        Damage{"NoSuchNode", R"("scenes": [{"nodes": [7]}], "nodes": [{}])",
               "Damaged square.gltf: this node does not exist (/nodes/7)"},
        Damage{"NegativeNode", R"("scenes": [{"nodes": [-1]}], "nodes": [{}])",
               "Damaged square.gltf: this node does not exist (/nodes/-1)"},
        Damage{"NoSuchScene", R"("scene": 3, "scenes": [{"nodes": []}])",
               "Damaged square.gltf: the scene 3 does not exist (/scene)"},
        Damage{"NoSuchMesh", R"("nodes": [{"mesh": 4}])", "Damaged square.gltf: the mesh 4 does not exist (/nodes/0)"},
        Damage{
            "NoSuchMaterial",
            R"("nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "material": 1}]}])",
            "Damaged square.gltf: the material 1 does not exist (/meshes/0/primitives/0)"},
        Damage{"NoSuchAccessor",
               R"("nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 99}}]}])",
               "Damaged square.gltf: this accessor does not exist (/accessors/99)"},
        Damage{"WrongType", R"("nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 2}}]}])",
               "Damaged square.gltf: this accessor has the wrong type for its use (/accessors/2)"},
        Damage{"WrongIndexType",
               R"("nodes": [{"mesh": 0}],
                  "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 3}]}])",
               "Damaged square.gltf: this accessor has the wrong type for its use (/accessors/3)"},
        Damage{"DifferentLengths",
               R"("nodes": [{"mesh": 0}],
                  "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 7}}]}])",
               "Damaged square.gltf: the attributes have different lengths "
               "(/meshes/0/primitives/0/attributes/NORMAL)"},
        Damage{"NoSuchMode",
               R"("nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "mode": 7}]}])",
               "Damaged square.gltf: the mode 7 does not exist (/meshes/0/primitives/0)"},
        Damage{"Draco",
               R"("nodes": [{"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 0},
                  "extensions": {"KHR_draco_mesh_compression": {"bufferView": 0, "attributes": {}}}}]}])",
               "Unsupported square.gltf: the packed bytes are no mesh of the Draco bitstream 2.2 "
               "(/meshes/0/primitives/0)"},
        Damage{"RequiredExtension", R"("extensionsRequired": ["KHR_mesh_quantization", "EXT_unheard_of"])",
               "Unsupported square.gltf: the file requires the extension EXT_unheard_of, which this program "
               "does not have (/extensionsRequired)"},
        Damage{"HugeTranslation", R"("nodes": [{"translation": [1e300, 0, 0]}])",
               "Damaged square.gltf: the transform of this node has no finite numbers (/nodes/0)"}),
    [](const auto& test) { return test.param.name; });

} // namespace
