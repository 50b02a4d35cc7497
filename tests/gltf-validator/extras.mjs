// usage: node extras.mjs IN.glb OUT.glb
// Prints the extras that glTF-Transform finds in IN, as one JSON object with "root", "nodes" and "materials", each of
// the latter with "name" and "extras", and writes the document to OUT.
// Exit code: 0 done, 2 wrong use or unreadable file, 3 glTF-Transform not installed.

const EXIT = { done: 0, misuse: 2, notInstalled: 3 };

async function main(files) {
    if (files.length !== 2) {
        console.error('usage: node extras.mjs IN.glb OUT.glb');
        return EXIT.misuse;
    }
    const library = await import('@gltf-transform/core').catch(() => null);
    if (library === null) {
        console.error('glTF-Transform is not installed: run scripts/setup');
        return EXIT.notInstalled;
    }
    const io = new library.NodeIO();
    const document = await io.read(files[0]);
    const root = document.getRoot();
    const told = (property) => ({ name: property.getName(), extras: property.getExtras() });
    const extras = {
        root: root.getExtras(),
        nodes: root.listNodes().map(told),
        materials: root.listMaterials().map(told),
    };
    console.log(JSON.stringify(extras));
    await io.write(files[1], document);
    return EXIT.done;
}

main(process.argv.slice(2)).then(
    (exitCode) => (process.exitCode = exitCode),
    (error) => {
        console.error(error.message);
        process.exitCode = EXIT.misuse;
    },
);
