// Tells the parts of a GLB file apart that are drawn together (docs/glb.md).

/// The entry of the part that a raycaster's `hit` is on, with its name, its path and its attributes; undefined for what
/// is drawn alone, which has all that in its own name and userData.
export function partAt({ object, faceIndex, instanceId }) {
    const node = object.userData.instances || object.userData.parts ? object : object.parent;
    if (instanceId !== undefined) return node.userData.instances?.[instanceId];
    for (const [part, count] of object.geometry.userData.parts ?? []) {
        if (faceIndex < count) return node.userData.parts?.[part];
        faceIndex -= count;
    }
    return undefined;
}
