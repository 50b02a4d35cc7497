// usage: node web.mjs FILE.glb
// Prints what glTF-Transform has of a file with its instances, and of the tables that tell gathered parts apart, as one
// line of JSON: the box, triangles as drawn, draw calls, those of what is seen through or
// shown by variants, the names that nodes and tables have, and the bytes of the file without its extras.
import { readFileSync } from 'node:fs';
import { NodeIO } from '@gltf-transform/core';
import { ALL_EXTENSIONS } from '@gltf-transform/extensions';
import { MeshoptDecoder } from 'three/addons/libs/meshopt_decoder.module.js';

await MeshoptDecoder.ready;
const file = process.argv[2];
const draco = await import('draco3dgltf').then(({ default: each }) => each.createDecoderModule(), () => undefined);
const io = new NodeIO().registerExtensions(ALL_EXTENSIONS)
    .registerDependencies({ 'meshopt.decoder': MeshoptDecoder, 'draco3d.decoder': draco });
const root = (await io.read(file)).getRoot();

const times = (a, b) => a.map((_, i) => [0, 1, 2, 3].reduce((sum, k) => sum + a[4 * k + i % 4] * b[4 * (i >> 2) + k], 0));
const placed = ([x, y, z], [a, b, c, d], [sx, sy, sz]) => [
    sx * (1 - 2 * (b * b + c * c)), sx * 2 * (a * b + c * d), sx * 2 * (a * c - b * d), 0,
    sy * 2 * (a * b - c * d), sy * (1 - 2 * (a * a + c * c)), sy * 2 * (b * c + a * d), 0,
    sz * 2 * (a * c + b * d), sz * 2 * (b * c - a * d), sz * (1 - 2 * (a * a + b * b)), 0, x, y, z, 1];
const identity = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];

function instancesOf(node) {
    const extension = node.getExtension('EXT_mesh_gpu_instancing');
    if (!extension) return [identity];
    const list = (name) => extension.getAttribute(name);
    const element = (name, i, otherwise) => list(name) ? list(name).getElement(i, []) : otherwise;
    return Array.from({ length: list('TRANSLATION').getCount() }, (_, i) =>
        placed(element('TRANSLATION', i, [0, 0, 0]), element('ROTATION', i, [0, 0, 0, 1]),
               element('SCALE', i, [1, 1, 1])));
}

function isSwitched(node) {
    for (; node; node = node.getParentNode())
        if (node.getExtras().variants || node.getExtras().annotations) return true;
    return false;
}

const seen = { triangles: 0, draws: 0, apart: 0 };
const box = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
const names = new Set();
for (const node of root.listNodes()) {
    if (node.getName()) names.add(node.getName());
    for (const part of [...(node.getExtras().parts ?? []), ...(node.getExtras().instances ?? [])])
        for (const name of [part.name, ...(part.path ?? [])])
            if (name) names.add(name);
    if (!node.getMesh()) continue;
    const places = instancesOf(node);
    for (const primitive of node.getMesh().listPrimitives()) {
        ++seen.draws;
        if (primitive.getMaterial()?.getAlphaMode() === 'BLEND' || isSwitched(node)) ++seen.apart;
        const positions = primitive.getAttribute('POSITION');
        if (primitive.getMode() === 4)
            seen.triangles += places.length * (primitive.getIndices() ?? positions).getCount() / 3;
        const parts = primitive.getExtras().parts;
        const corners = { 4: 3, 1: 2 }[primitive.getMode()] ?? 1;
        if (parts && parts.reduce((sum, [, count]) => sum + count, 0) * corners !== primitive.getIndices().getCount())
            throw new Error('the parts of a primitive are not its elements');
        for (const place of places) {
            const all = times(node.getWorldMatrix(), place);
            for (let i = 0; i < positions.getCount(); ++i) {
                const [x, y, z] = positions.getElement(i, []);
                for (let axis = 0; axis < 3; ++axis) {
                    const value = all[axis] * x + all[4 + axis] * y + all[8 + axis] * z + all[12 + axis];
                    box[axis] = Math.min(box[axis], value);
                    box[3 + axis] = Math.max(box[3 + axis], value);
                }
            }
        }
    }
}
const bytes = readFileSync(file);
const size = bytes.readUInt32LE(12);
const text = bytes.subarray(20, 20 + size).toString();
const bare = JSON.stringify(JSON.parse(text, (key, value) => key === 'extras' ? undefined : value));
console.log(JSON.stringify({ ...seen, box, names: [...names].sort(),
                             bytes: bytes.length, bare: bytes.length - size + Buffer.byteLength(bare) }));
