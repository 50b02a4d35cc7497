// usage: node optimize.mjs gltf-transform|gltfpack|gltfpack-small|meshopt|draco IN.glb OUT.glb
// Rewrites a file as its users do: glTF-Transform with the steps of its "optimize" that change nodes, meshes and
// materials, gltfpack with names, materials and extras kept, as small as it makes them or without loss; or
// glTF-Transform with nothing but a compression.
import { execFileSync } from 'node:child_process';
import { dirname, join as pathOf } from 'node:path';
import { fileURLToPath } from 'node:url';

const [tool, from, to] = process.argv.slice(2);
if (tool.startsWith('gltfpack')) {
    const program = pathOf(dirname(fileURLToPath(import.meta.url)), 'node_modules/.bin/gltfpack');
    execFileSync('node', [program, '-i', from, '-o', to, '-kn', '-km', '-ke', tool === 'gltfpack' ? '-noq' : '-cc']);
} else if (tool === 'meshopt' || tool === 'draco') {
    const { NodeIO } = await import('@gltf-transform/core');
    const { ALL_EXTENSIONS } = await import('@gltf-transform/extensions');
    const { draco, meshopt } = await import('@gltf-transform/functions');
    const { MeshoptDecoder, MeshoptEncoder } = await import('meshoptimizer');
    const { default: library } = await import('draco3dgltf');
    await MeshoptEncoder.ready;
    const io = new NodeIO().registerExtensions(ALL_EXTENSIONS).registerDependencies({
        'draco3d.encoder': await library.createEncoderModule(), 'draco3d.decoder': await library.createDecoderModule(),
        'meshopt.encoder': MeshoptEncoder, 'meshopt.decoder': MeshoptDecoder });
    const document = await io.read(from);
    await document.transform(tool === 'draco' ? draco() : meshopt({ encoder: MeshoptEncoder, level: 'medium' }));
    await io.write(to, document);
} else {
    const { NodeIO } = await import('@gltf-transform/core');
    const { ALL_EXTENSIONS } = await import('@gltf-transform/extensions');
    const { dedup, flatten, instance, join, palette, prune, resample, sparse, weld } =
        await import('@gltf-transform/functions');
    const io = new NodeIO().registerExtensions(ALL_EXTENSIONS);
    const document = await io.read(from);
    await document.transform(dedup(), instance({ min: 5 }), palette({ min: 5 }), flatten(), join(), weld(), resample(),
                             prune({ keepAttributes: false, keepLeaves: false }), sparse());
    await io.write(to, document);
}
