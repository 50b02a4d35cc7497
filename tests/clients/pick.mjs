// usage: node pick.mjs FILE.glb
// Shoots a ray from above through the middle of each part that three.js has of a file, and prints the names of the parts
// that the rays hit as one line of JSON: by the tables of parts that are drawn together, or by the names of objects.
import { readFileSync } from 'node:fs';
import { Box3, InstancedMesh, Matrix4, Raycaster, Vector3 } from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';
import { MeshoptDecoder } from 'three/addons/libs/meshopt_decoder.module.js';
import { partAt } from '../../examples/variants/parts.js';

globalThis.self ??= globalThis;
const bytes = readFileSync(process.argv[2]);
const loader = new GLTFLoader().setMeshoptDecoder(MeshoptDecoder);
const { scene } = await loader.parseAsync(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.byteLength), '');
scene.updateMatrixWorld(true);
const all = new Box3().setFromObject(scene, true);
const middles = [];
const point = new Vector3();
scene.traverse((object) => {
    if (!object.isMesh) return;
    const { index, attributes: { position } } = object.geometry;
    const places = object instanceof InstancedMesh
        ? Array.from({ length: object.count }, (_, i) => (object.getMatrixAt(i, point.m ??= new Matrix4()), point.m.clone()))
        : [new Matrix4()];
    const parts = object.geometry.userData.parts ?? [[0, (index ?? position).count / 3]];
    for (const place of places) {
        let first = 0;
        for (const [, count] of parts) {
            const box = new Box3();
            for (let i = first * 3; i < (first + count) * 3; ++i)
                box.expandByPoint(point.fromBufferAttribute(position, index ? index.getX(i) : i)
                    .applyMatrix4(place).applyMatrix4(object.matrixWorld));
            middles.push(box.getCenter(new Vector3()));
            first += count;
        }
    }
});
const names = middles.map((middle) => {
    const down = new Raycaster(new Vector3(middle.x, all.max.y + 1, middle.z), new Vector3(0, -1, 0));
    const [hit] = down.intersectObject(scene, true);
    return hit ? partAt(hit)?.name ?? (hit.object.name || hit.object.parent.name) : null;
});
console.log(JSON.stringify(names));
