// usage: node surfaces.mjs FILE
// Prints what glTF-Transform knows of the materials of a glTF file, as one JSON object by their names: every value that
// it has, and of each texture the hash of the bytes of its picture, its sampler and its place.
import { createHash } from 'node:crypto';
import { NodeIO } from '@gltf-transform/core';
import { ALL_EXTENSIONS } from '@gltf-transform/extensions';

const rounded = (value) => typeof value === 'number' ? Number(value.toFixed(4))
    : Array.isArray(value) ? value.map(rounded) : value;

/// The names of what `object` tells without being asked for more.
function gettersOf(object) {
    const names = new Set();
    for (let type = Object.getPrototypeOf(object); type && type !== Object.prototype; type = Object.getPrototypeOf(type))
        for (const name of Object.getOwnPropertyNames(type))
            if (name.startsWith('get') && name !== 'get' && object[name].length === 0) names.add(name);
    return [...names].filter((name) => !['getName', 'getExtras', 'getGraph'].includes(name)).sort();
}

const isPlain = (value) => ['number', 'boolean', 'string'].includes(typeof value) || Array.isArray(value);

function toldOf(object) {
    const told = {};
    for (const name of gettersOf(object)) {
        const value = object[name]();
        if (isPlain(value) && !name.endsWith('Hex')) told[name.slice(3)] = rounded(value);
        else if (value?.propertyType === 'Texture') told[name.slice(3)] = textureOf(value, object[name + 'Info']());
    }
    for (const extension of object.listExtensions?.() ?? []) told[extension.extensionName] = toldOf(extension);
    return told;
}

const textureOf = (texture, info) => ({
    image: createHash('sha1').update(texture.getImage()).digest('hex'),
    mimeType: texture.getMimeType(),
    info: toldOf(info),
});

const document = await new NodeIO().registerExtensions(ALL_EXTENSIONS).read(process.argv[2]);
console.log(JSON.stringify(Object.fromEntries(
    document.getRoot().listMaterials().map((material) => [material.getName(), toldOf(material)]))));
