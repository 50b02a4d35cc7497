// Switches the variant sets of a GLB file in a web page that shows it by three.js.
import { Matrix4 } from 'three';

/** The sets of a file that GLTFLoader has read: an array of { name, group, viewpoint }. */
export function variantSets(gltf) {
    return gltf.asset.extras?.variantSets ?? [];
}

/** Shows what the set of this name shows. */
export async function showSet(gltf, name) {
    const number = variantSets(gltf).findIndex((set) => set.name === name);
    const waiting = [];
    gltf.scene.traverse((object) => {
        const wanted = object.userData.variants?.[name];
        if (wanted !== undefined) {
            object.visible = wanted;
            if (wanted) takeTrueSize(object);
        }
        if (object.isMesh) waiting.push(exchangeMaterial(gltf, object, number));
    });
    await Promise.all(waiting);
}

/** What is hidden at first is too small to be seen, for viewers that know nothing of that. */
function takeTrueSize(object) {
    const { matrix, translation, rotation, scale } = object.userData.shown ?? { matrix: object.matrix.elements };
    if (matrix) {
        new Matrix4().fromArray(matrix).decompose(object.position, object.quaternion, object.scale);
        return;
    }
    object.position.fromArray(translation ?? [0, 0, 0]);
    object.quaternion.fromArray(rotation ?? [0, 0, 0, 1]);
    object.scale.fromArray(scale ?? [1, 1, 1]);
}

async function exchangeMaterial(gltf, mesh, number) {
    const { meshes, primitives } = gltf.parser.associations.get(mesh) ?? {};
    const primitive = gltf.parser.json.meshes[meshes]?.primitives[primitives ?? 0];
    const mappings = primitive?.extensions?.KHR_materials_variants?.mappings;
    if (!mappings) return;
    mesh.userData.standard ??= mesh.material;
    const mapping = mappings.find(({ variants }) => variants.includes(number));
    mesh.material = mapping ? await gltf.parser.getDependency('material', mapping.material) : mesh.userData.standard;
    gltf.parser.assignFinalMaterial(mesh);
}
