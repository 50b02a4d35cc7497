// usage: node see.mjs three|gltf-transform|gltfpack FILE.glb
// Prints what the package has of the file, as one line of JSON. Of gltfpack it is what three has of its output.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const rounded = (numbers) => numbers.map((number) => Number(number.toFixed(6)));

async function seenByThree(file) {
    const { Box3 } = await import('three');
    const { GLTFLoader } = await import('three/addons/loaders/GLTFLoader.js');
    globalThis.self ??= globalThis;
    const bytes = readFileSync(file);
    const buffer = bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength);
    const gltf = await new GLTFLoader().parseAsync(buffer, '');
    const seen = { objects: 0, meshObjects: 0, meshes: new Set(), triangles: 0, materials: new Set() };
    gltf.scene.updateMatrixWorld(true);
    gltf.scene.traverse((object) => {
        ++seen.objects;
        if (!object.isMesh) return;
        ++seen.meshObjects;
        seen.meshes.add(object.geometry);
        seen.materials.add(object.material);
        seen.triangles += (object.geometry.index ?? object.geometry.attributes.position).count / 3;
    });
    const box = new Box3().setFromObject(gltf.scene, true);
    return { ...seen, meshes: seen.meshes.size, materials: seen.materials.size,
             box: rounded([...box.min.toArray(), ...box.max.toArray()]) };
}

async function seenByTransform(file) {
    const { getBounds, NodeIO } = await import('@gltf-transform/core');
    const { ALL_EXTENSIONS } = await import('@gltf-transform/extensions');
    const root = (await new NodeIO().registerExtensions(ALL_EXTENSIONS).read(file)).getRoot();
    const count = (mesh) => mesh.listPrimitives().filter((each) => each.getMode() === 4)
        .reduce((sum, each) => sum + (each.getIndices() ?? each.getAttribute('POSITION')).getCount() / 3, 0);
    const nodes = [];
    root.getDefaultScene().traverse((node) => nodes.push(node));
    const drawn = nodes.filter((node) => node.getMesh());
    const { min, max } = getBounds(root.getDefaultScene());
    return { objects: nodes.length, meshObjects: drawn.length, meshes: root.listMeshes().length,
             triangles: drawn.reduce((sum, node) => sum + count(node.getMesh()), 0),
             materials: root.listMaterials().length, box: rounded([...min, ...max]) };
}

async function seenByPack(file) {
    const folder = mkdtempSync(join(tmpdir(), 'zn-pack-'));
    try {
        const packed = join(folder, 'packed.glb');
        const program = join(dirname(fileURLToPath(import.meta.url)), 'node_modules/.bin/gltfpack');
        execFileSync('node', [program, '-i', file, '-o', packed, '-kn', '-km', '-ke', '-noq']);
        return await seenByThree(packed);
    } finally {
        rmSync(folder, { recursive: true, force: true });
    }
}

const clients = { three: seenByThree, 'gltf-transform': seenByTransform, gltfpack: seenByPack };
const [client, file] = process.argv.slice(2);
console.log(JSON.stringify(await clients[client](file)));
