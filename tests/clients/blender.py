# usage: blender --background --factory-startup --python blender.py -- FILE.glb
# Prints what Blender has of the file, as one line of JSON that begins with "seen ".
import builtins
import json
import sys

import bpy
import numpy

# Blender 3.4 asks for names that the NumPy of the same Debian no longer has.
for name in ("bool", "object", "int", "float"):
    setattr(numpy, name, getattr(builtins, name))

bpy.ops.wm.read_factory_settings(use_empty=True)
bpy.ops.import_scene.gltf(filepath=sys.argv[sys.argv.index("--") + 1])
objects = [each for each in bpy.context.scene.objects if each.type == "MESH"]
least, most = numpy.full(3, numpy.inf), numpy.full(3, -numpy.inf)
for each in objects:
    places = numpy.empty(3 * len(each.data.vertices))
    each.data.vertices.foreach_get("co", places)
    matrix = numpy.array(each.matrix_world)
    places = places.reshape(-1, 3) @ matrix[:3, :3].T + matrix[:3, 3]
    least, most = numpy.minimum(least, places.min(0)), numpy.maximum(most, places.max(0))
triangles = {}
for mesh in {each.data for each in objects}:
    mesh.calc_loop_triangles()
    triangles[mesh.name] = len(mesh.loop_triangles)
print("seen " + json.dumps({
    "objects": len(bpy.context.scene.objects),
    "meshObjects": len(objects),
    "meshes": len(triangles),
    "triangles": sum(triangles[each.data.name] for each in objects),
    "materials": len({slot.material.name for each in objects for slot in each.material_slots if slot.material}),
    # "bolt.001" is what Blender makes of the second "bolt"
    "numbered": sum(each.name[-4:-3] == "." and each.name[-3:].isdigit() for each in bpy.context.scene.objects),
    "looseEdges": sum(edge.is_loose for mesh in {each.data for each in objects} for edge in mesh.edges),
    "customNormals": sum(mesh.has_custom_normals for mesh in {each.data for each in objects}),
    # in the axes of a glTF file
    "box": [round(value, 6) for value in (least[0], least[2], -most[1], most[0], most[2], -least[1])],
}))
