#!/usr/bin/env python3
"""Makes the models of this folder: python3 make_models.py [FOLDER]

bracket.obj, bracket.mtl  an angle bracket with four bolts and a seal; millimetres, Z up; objects, groups, polygons,
                          lines and several materials
bearing.gltf              a ball bearing; metres, Y up; rings of revolution and twelve balls that share one mesh
"""
import base64
import json
import math
import pathlib
import struct
import sys


def add(a, b):
    return tuple(x + y for x, y in zip(a, b))


def circle(radius, count, z=0.0, turn=0.0):
    steps = (2 * math.pi * (i + turn) / count for i in range(count))
    return [(radius * math.cos(t), radius * math.sin(t), z) for t in steps]


class Obj:
    """Collects polygons; corners that are equal are written once."""

    def __init__(self):
        self.lines = []
        self.known = {}

    def begin(self, object_name, group, material):
        self.lines += [f"o {object_name}", f"g {group}", f"usemtl {material}"]

    def corner(self, point):
        key = tuple(f"{c:.4f}".rstrip("0").rstrip(".") for c in point)
        key = tuple("0" if c == "-0" else c for c in key)
        if key not in self.known:
            self.known[key] = len(self.known) + 1
            self.lines.append("v " + " ".join(key))
        return self.known[key]

    def face(self, points, keyword="f"):
        numbers = " ".join(str(self.corner(p)) for p in points)
        self.lines.append(f"{keyword} {numbers}")

    def prism(self, outline, height):
        """Walls and both ends of an outline that is raised along z; seen from above it runs to the left."""
        top = [add(p, (0, 0, height)) for p in outline]
        self.face(top)
        self.face(list(reversed(outline)))
        self.walls(outline, top)

    def walls(self, low, high):
        for i in range(len(low)):
            j = (i + 1) % len(low)
            self.face([low[i], low[j], high[j], high[i]])


def to_square(point, half_x, half_y):
    """The point of a rectangle's outline in the direction of `point`."""
    scale = min(half_x / abs(point[0]) if point[0] else math.inf, half_y / abs(point[1]) if point[1] else math.inf)
    return (point[0] * scale, point[1] * scale, point[2])


def plate_cell(obj, place, half_x, half_y, radius, height):
    """A rectangular plate with a round hole in the middle; `place` moves points to where they belong."""
    hole = circle(radius, 32, turn=0.5)
    # Corners of the rectangle lie between the rays, so each gets a triangle of its own.
    rim = [to_square(p, half_x, half_y) for p in hole]
    for i in range(len(hole)):
        j = (i + 1) % len(hole)
        cell = [hole[i], rim[i], rim[j], hole[j]]
        if abs(abs(rim[i][0]) - half_x) < 1e-9 and abs(abs(rim[j][0]) - half_x) > 1e-9 or \
           abs(abs(rim[i][1]) - half_y) < 1e-9 and abs(abs(rim[j][1]) - half_y) > 1e-9:
            cell.insert(2, (math.copysign(half_x, rim[i][0]), math.copysign(half_y, rim[i][1]), 0))
        obj.face([place(add(p, (0, 0, height))) for p in cell])
        obj.face([place(p) for p in reversed(cell)])
        obj.face([place(hole[j]), place(hole[i]), place(add(hole[i], (0, 0, height))), place(add(hole[j], (0, 0, height)))])


def bolt(obj, name, place):
    """A hexagon bolt that stands on the plane z = 0, with its washer."""
    obj.begin(name, "washer", "zinc")
    rings = [[place(p) for p in circle(r, 32, z)] for r, z in ((4.4, 0), (8, 0), (8, 1.6), (4.4, 1.6))]
    for i in range(4):
        obj.walls(rings[i], rings[(i + 1) % 4])
    obj.begin(name, "head", "black oxide")
    low, high = circle(6.5, 6, 1.6), circle(6.5, 6, 6.2)
    top = circle(5.2, 6, 7.0)
    obj.walls([place(p) for p in low], [place(p) for p in high])
    obj.walls([place(p) for p in high], [place(p) for p in top])
    obj.face([place(p) for p in top])
    obj.begin(name, "shank", "black oxide")
    end = [place(p) for p in circle(4, 32, -14)]
    obj.walls(end, [place(p) for p in circle(4, 32, 1.6)])
    obj.face(list(reversed(end)))


def bracket():
    obj = Obj()
    obj.begin("Bracket", "foot", "steel blue")
    for x in (-25, 25):
        plate_cell(obj, lambda p, x=x: add(p, (x, 27, 0)), 25, 27, 4.2, 8)
    obj.begin("Bracket", "wall", "steel blue")
    for x in (-25, 25):
        # Upright: its own x stays, its own y becomes z, its own z becomes -y.
        plate_cell(obj, lambda p, x=x: (p[0] + x, -p[2], p[1] + 35), 25, 35, 4.2, 8)
    for name, x in (("left rib", -50), ("right rib", 44)):
        obj.begin("Bracket", name, "steel blue")
        side = [(x, 0, 8), (x, 40, 8), (x, 34, 14), (x, 6, 56), (x, 0, 60)]
        other = [add(p, (6, 0, 0)) for p in side]
        obj.walls(side, other)
        obj.face(other)
        obj.face(list(reversed(side)))
    for number, x in enumerate((-25, 25), 1):
        bolt(obj, f"Foot bolt {number}", lambda p, x=x: add(p, (x, 27, 8)))
        bolt(obj, f"Wall bolt {number}", lambda p, x=x: (p[0] + x, p[2], 35 - p[1]))
    obj.begin("Seal", "ring", "orange rubber")
    centre = (0, -11, 35)
    tube = 3
    rings = []
    for i in range(48):
        turn = 2 * math.pi * i / 48
        rings.append([add(centre, ((14 + tube * math.cos(t)) * math.cos(turn), tube * math.sin(t),
                                   (14 + tube * math.cos(t)) * math.sin(turn)))
                      for t in (2 * math.pi * k / 16 for k in range(16))])
    for i in range(48):
        obj.walls(rings[i], rings[(i + 1) % 48])
    obj.begin("Outline", "edges", "edge")
    obj.face([(-50, 54, 0), (50, 54, 0), (50, 54, 8), (-50, 54, 8), (-50, 54, 0)], "l")
    obj.face([(-50, -8, 70), (50, -8, 70), (50, 0, 70), (-50, 0, 70), (-50, -8, 70)], "l")
    head = ["# An angle bracket with four bolts. Millimetres, Z up. Made by make_models.py.", "mtllib bracket.mtl"]
    return "\n".join(head + obj.lines) + "\n"


MATERIALS = """# Materials of bracket.obj. Made by make_models.py.
newmtl steel blue
Ka 0.05 0.06 0.08
Kd 0.27 0.42 0.58
Ks 0.5 0.5 0.5
Ns 60
newmtl zinc
Kd 0.74 0.75 0.7
Ks 0.6 0.6 0.6
Ns 90
newmtl black oxide
Kd 0.13 0.13 0.15
Ks 0.4 0.4 0.4
Ns 40
newmtl orange rubber
Kd 0.93 0.42 0.1
Ns 8
d 0.85
newmtl edge
Kd 0.05 0.05 0.05
"""


class Gltf:
    """A document with one embedded buffer."""

    def __init__(self):
        self.data = bytearray()
        self.document = {"asset": {"version": "2.0", "generator": "make_models.py"}, "scene": 0,
                         "scenes": [{"name": "Ball bearing", "nodes": [0]}], "nodes": [], "meshes": [],
                         "materials": [], "accessors": [], "bufferViews": []}

    def put(self, kind, entry):
        self.document[kind].append(entry)
        return len(self.document[kind]) - 1

    def array(self, code, rows, element_type, component_type, target, bounds=False):
        flat = [value for row in rows for value in row]
        content = struct.pack(f"<{len(flat)}{code}", *flat)
        view = self.put("bufferViews", {"buffer": 0, "byteOffset": len(self.data), "byteLength": len(content),
                                        "target": target})
        self.data += content + bytes(-len(content) % 4)
        accessor = {"bufferView": view, "componentType": component_type, "count": len(rows), "type": element_type}
        if bounds:
            exact = struct.unpack(f"<{len(flat)}f", content)
            accessor["min"] = [min(exact[i::3]) for i in range(3)]
            accessor["max"] = [max(exact[i::3]) for i in range(3)]
        return self.put("accessors", accessor)

    def mesh(self, name, positions, normals, triangles, material):
        primitive = {"attributes": {"POSITION": self.array("f", positions, "VEC3", 5126, 34962, True),
                                    "NORMAL": self.array("f", normals, "VEC3", 5126, 34962)},
                     "indices": self.array("H", [(i,) for i in triangles], "SCALAR", 5123, 34963),
                     "material": material}
        return self.put("meshes", {"name": name, "primitives": [primitive]})

    def material(self, name, color, metallic, roughness):
        return self.put("materials", {"name": name, "pbrMetallicRoughness": {
            "baseColorFactor": color, "metallicFactor": metallic, "roughnessFactor": roughness}})

    def text(self):
        uri = "data:application/octet-stream;base64," + base64.b64encode(bytes(self.data)).decode()
        self.document["buffers"] = [{"byteLength": len(self.data), "uri": uri}]
        return json.dumps(self.document, indent=1) + "\n"


def revolve(profile, count):
    """A closed profile of (radius, height) turned about the y axis; each of its edges gets vertices of its own."""
    positions, normals, triangles = [], [], []
    for (r0, h0), (r1, h1) in zip(profile, profile[1:] + profile[:1]):
        length = math.hypot(r1 - r0, h1 - h0)
        out, up = (h1 - h0) / length, (r0 - r1) / length
        start = len(positions)
        for i in range(count + 1):
            c, s = math.cos(2 * math.pi * i / count), math.sin(2 * math.pi * i / count)
            positions += [(r0 * c, h0, -r0 * s), (r1 * c, h1, -r1 * s)]
            normals += [(out * c, up, -out * s)] * 2
        for i in range(count):
            a = start + 2 * i
            triangles += [a, a + 2, a + 3, a, a + 3, a + 1]
    return positions, normals, triangles


def ball(radius, slices, stacks):
    positions, normals, triangles = [], [], []
    for i in range(stacks + 1):
        height, ring = math.cos(math.pi * i / stacks), math.sin(math.pi * i / stacks)
        for k in range(slices + 1):
            t = 2 * math.pi * k / slices
            normal = (ring * math.cos(t), height, -ring * math.sin(t))
            normals.append(normal)
            positions.append(tuple(radius * c for c in normal))
    for i in range(stacks):
        for k in range(slices):
            a, b = i * (slices + 1) + k, (i + 1) * (slices + 1) + k
            triangles += [a, b, b + 1] if i == stacks - 1 else [a, b, b + 1, a, b + 1, a + 1] if i else [a, b, b + 1]
    return positions, normals, triangles


def ring_profile(inner, outer, width, groove, groove_radius, groove_on_outside):
    """A ring with a round groove for the balls, run through so that its outside is on the right."""
    h = width / 2
    arc = [(groove - groove_radius * math.cos(t), groove_radius * math.sin(t))
           for t in (math.radians(a) for a in range(-60, 61, 15))]
    if groove_on_outside:
        return [(inner, h), (inner, -h), (outer, -h)] + arc + [(outer, h)]
    arc = [(2 * groove - r, -y) for r, y in arc]
    return [(inner, h)] + arc + [(inner, -h), (outer, -h), (outer, h)]


def bearing():
    gltf = Gltf()
    steel = gltf.material("polished steel", [0.62, 0.63, 0.65, 1], 0.9, 0.3)
    chrome = gltf.material("chrome", [0.8, 0.82, 0.85, 1], 1, 0.15)
    brass = gltf.material("brass", [0.8, 0.55, 0.15, 1], 0.9, 0.35)
    inner = gltf.mesh("inner race", *revolve(ring_profile(0.0125, 0.0175, 0.015, 0.0195, 0.004, True), 64), steel)
    outer = gltf.mesh("outer race", *revolve(ring_profile(0.0215, 0.026, 0.015, 0.0195, 0.004, False), 64), steel)
    rail = [(0.0186, 0.0006), (0.0186, -0.0006), (0.0204, -0.0006), (0.0204, 0.0006)]
    cage = gltf.mesh("cage rail", *revolve(rail, 64), brass)
    sphere = gltf.mesh("ball", *ball(0.0039, 24, 16), chrome)
    nodes = [{"name": "Bearing 6205", "children": []}]
    tilt = math.radians(35) / 2
    nodes[0]["rotation"] = [math.sin(tilt), 0, 0, math.cos(tilt)]

    def child(entry):
        nodes.append(entry)
        nodes[0]["children"].append(len(nodes) - 1)

    child({"name": "Inner ring", "mesh": inner})
    child({"name": "Outer ring", "mesh": outer})
    child({"name": "Cage, upper rail", "mesh": cage, "translation": [0, 0.0044, 0]})
    child({"name": "Cage, lower rail", "mesh": cage, "translation": [0, -0.0044, 0]})
    for i in range(12):
        t = 2 * math.pi * i / 12
        child({"name": f"Ball {i + 1}", "mesh": sphere,
               "translation": [round(0.0195 * math.cos(t), 9), 0, round(0.0195 * math.sin(t), 9)]})
    gltf.document["nodes"] = nodes
    return gltf.text()


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    (folder / "bracket.obj").write_text(bracket(), encoding="utf-8")
    (folder / "bracket.mtl").write_text(MATERIALS, encoding="utf-8")
    (folder / "bearing.gltf").write_text(bearing(), encoding="utf-8")


main()
