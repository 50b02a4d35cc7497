#!/usr/bin/env python3
"""Makes the part files of this folder: python3 make_parts.py [FOLDER]

parts/frame.stp   the deck of the hand cart with its handle, five solids, two colours
parts/rod.stp     the rod of an axle
parts/wheel.wrl   a wheel about the y axis, with spokes that are one shape in six places
source/crate.obj  a crate, from which  znimport source/crate.obj -o "parts/oak crate.osb"  makes the last part

All are in millimetres, Z up.
"""
import math
import pathlib
import sys


def number(value):
    """A real number in the way of STEP: with a point, and without a minus before zero."""
    text = f"{value:.6f}".rstrip("0")
    return "0." if text in ("-0.", "0.") else text


def minus(a, b):
    return tuple(x - y for x, y in zip(a, b))


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(a):
    length = math.sqrt(sum(x * x for x in a))
    return tuple(x / length for x in a)


class Step:
    """One product of solids with flat faces."""

    def __init__(self, name):
        self.entities = []
        self.solids = []
        self.styles = []
        application = self.add("APPLICATION_CONTEXT('core data for automotive mechanical design processes')")
        self.add(f"APPLICATION_PROTOCOL_DEFINITION('international standard','automotive_design',2000,#{application})")
        length = self.add("(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.))")
        angle = self.add("(NAMED_UNIT(*) PLANE_ANGLE_UNIT() SI_UNIT($,.RADIAN.))")
        solid_angle = self.add("(NAMED_UNIT(*) SI_UNIT($,.STERADIAN.) SOLID_ANGLE_UNIT())")
        accuracy = self.add(f"UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-06),#{length},'accuracy','')")
        self.context = self.add(
            "(GEOMETRIC_REPRESENTATION_CONTEXT(3) "
            f"GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((#{accuracy})) "
            f"GLOBAL_UNIT_ASSIGNED_CONTEXT((#{length},#{angle},#{solid_angle})) REPRESENTATION_CONTEXT('',''))")
        product_context = self.add(f"PRODUCT_CONTEXT('',#{application},'mechanical')")
        product = self.add(f"PRODUCT('{name}','{name}','',(#{product_context}))")
        formation = self.add(f"PRODUCT_DEFINITION_FORMATION('','',#{product})")
        design = self.add(f"PRODUCT_DEFINITION_CONTEXT('part definition',#{application},'design')")
        definition = self.add(f"PRODUCT_DEFINITION('design','',#{formation},#{design})")
        self.shape = self.add(f"PRODUCT_DEFINITION_SHAPE('','',#{definition})")

    def add(self, entity):
        self.entities.append(entity)
        return len(self.entities)

    def refs(self, numbers):
        return "(" + ",".join(f"#{n}" for n in numbers) + ")"

    def triple(self, kind, values):
        return self.add(f"{kind}('',({','.join(number(v) for v in values)}))")

    def prism(self, outline, along, color):
        """The solid between an outline and the same outline moved by `along`, which points to its left-hand side."""
        corners = outline + [tuple(x + y for x, y in zip(p, along)) for p in outline]
        n = len(outline)
        loops = [list(range(n, 2 * n)), list(reversed(range(n)))]
        loops += [[i, (i + 1) % n, (i + 1) % n + n, i + n] for i in range(n)]
        vertices = [self.add(f"VERTEX_POINT('',#{self.triple('CARTESIAN_POINT', c)})") for c in corners]
        edges = {}
        faces = [self.face(loop, corners, vertices, edges) for loop in loops]
        shell = self.add(f"CLOSED_SHELL('',{self.refs(faces)})")
        solid = self.add(f"MANIFOLD_SOLID_BREP('',#{shell})")
        self.solids.append(solid)
        rgb = self.add(f"COLOUR_RGB('',{','.join(number(c) for c in color)})")
        fill = self.add(f"FILL_AREA_STYLE_COLOUR('',#{rgb})")
        area_style = self.add(f"FILL_AREA_STYLE('',(#{fill}))")
        area = self.add(f"SURFACE_STYLE_FILL_AREA(#{area_style})")
        side = self.add(f"SURFACE_SIDE_STYLE('',(#{area}))")
        usage = self.add(f"SURFACE_STYLE_USAGE(.BOTH.,#{side})")
        style = self.add(f"PRESENTATION_STYLE_ASSIGNMENT((#{usage}))")
        self.styles.append(self.add(f"STYLED_ITEM('',(#{style}),#{solid})"))

    def face(self, loop, corners, vertices, edges):
        oriented = []
        for a, b in zip(loop, loop[1:] + loop[:1]):
            forward = (b, a) not in edges
            if forward:
                edges[a, b] = self.edge(corners[a], corners[b], vertices[a], vertices[b])
            curve = edges[a, b] if forward else edges[b, a]
            oriented.append(self.add(f"ORIENTED_EDGE('',*,*,#{curve},.{'T' if forward else 'F'}.)"))
        edge_loop = self.add(f"EDGE_LOOP('',{self.refs(oriented)})")
        bound = self.add(f"FACE_BOUND('',#{edge_loop},.T.)")
        first = unit(minus(corners[loop[1]], corners[loop[0]]))
        normal = unit(cross(first, minus(corners[loop[2]], corners[loop[1]])))
        plane = self.add(f"PLANE('',#{self.placement(corners[loop[0]], normal, first)})")
        return self.add(f"ADVANCED_FACE('',(#{bound}),#{plane},.T.)")

    def edge(self, start, end, start_vertex, end_vertex):
        direction = self.triple("DIRECTION", unit(minus(end, start)))
        vector = self.add(f"VECTOR('',#{direction},1.)")
        line = self.add(f"LINE('',#{self.triple('CARTESIAN_POINT', start)},#{vector})")
        return self.add(f"EDGE_CURVE('',#{start_vertex},#{end_vertex},#{line},.T.)")

    def placement(self, origin, axis, reference):
        return self.add(f"AXIS2_PLACEMENT_3D('',#{self.triple('CARTESIAN_POINT', origin)},"
                        f"#{self.triple('DIRECTION', axis)},#{self.triple('DIRECTION', reference)})")

    def text(self):
        origin = self.placement((0, 0, 0), (0, 0, 1), (1, 0, 0))
        shape = self.add(f"ADVANCED_BREP_SHAPE_REPRESENTATION('',{self.refs([origin] + self.solids)},#{self.context})")
        self.add(f"SHAPE_DEFINITION_REPRESENTATION(#{self.shape},#{shape})")
        self.add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',"
                 f"{self.refs(self.styles)},#{self.context})")
        head = ("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('A part of the hand cart'),'2;1');\n"
                "FILE_NAME('','2024-01-01T00:00:00',(''),(''),'make_parts.py','','');\n"
                "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n")
        lines = "".join(f"#{i}={entity};\n" for i, entity in enumerate(self.entities, 1))
        return head + lines + "ENDSEC;\nEND-ISO-10303-21;\n"


def box_outline(low, high, z):
    return [(low[0], low[1], z), (high[0], low[1], z), (high[0], high[1], z), (low[0], high[1], z)]


def frame():
    step = Step("frame")
    beech, steel = (0.72, 0.52, 0.3), (0.25, 0.38, 0.5)
    cut = 60
    deck = [(-600 + cut, -300), (600 - cut, -300), (600, -300 + cut), (600, 300 - cut), (600 - cut, 300),
            (-600 + cut, 300), (-600, 300 - cut), (-600, -300 + cut)]
    step.prism([(x, y, 50.0) for x, y in deck], (0, 0, 30.0), beech)
    for x in (-400, 400):
        step.prism(box_outline((x - 40, -280), (x + 40, 280), 15.0), (0, 0, 35.0), steel)
    for y in (-235, 205):
        step.prism(box_outline((560, y), (590, y + 30), 80.0), (0, 0, 720.0), steel)
    step.prism(box_outline((560, -260), (590, 260), 800.0), (0, 0, 30.0), beech)
    return step.text()


def rod():
    step = Step("rod")
    turns = [2 * math.pi * i / 16 for i in range(16)]
    # Run through so that +y is on its left-hand side.
    outline = [(18 * math.sin(t), -370.0, 18 * math.cos(t)) for t in turns]
    step.prism(outline, (0, 740.0, 0), (0.6, 0.62, 0.65))
    return step.text()


WHEEL = """#VRML V2.0 utf8
# A wheel about the y axis, 400 mm across. Made by make_parts.py.
DEF Tyre Shape {{
  appearance Appearance {{ material Material {{ diffuseColor 0.1 0.1 0.11 }} }}
  geometry Extrusion {{
    creaseAngle 1
    crossSection [ {section} ]
    spine [ {spine} ]
  }}
}}
DEF Hub Shape {{
  appearance Appearance {{ material Material {{ diffuseColor 0.8 0.55 0.15 specularColor 0.3 0.3 0.3 }} }}
  geometry Cylinder {{ radius 40 height 80 }}
}}
{spokes}
"""


def wheel():
    section = ", ".join(f"{30 * math.cos(t):.2f} {30 * math.sin(t):.2f}" for t in
                        (-2 * math.pi * i / 12 for i in range(13)))
    spine = ", ".join(f"{170 * math.cos(t):.2f} 0 {170 * math.sin(t):.2f}" for t in
                      (2 * math.pi * i / 32 for i in range(33)))
    first = """DEF Spoke Transform {
  translation 95 0 0
  children Shape {
    appearance Appearance { material Material { diffuseColor 0.75 0.16 0.12 } }
    geometry Box { size 120 16 24 }
  }
}"""
    others = [f"Transform {{ rotation 0 1 0 {math.pi * i / 3:.5f} children USE Spoke }}" for i in range(1, 6)]
    return WHEEL.format(section=section, spine=spine, spokes="\n".join([first] + others))


class Obj:
    def __init__(self):
        self.lines = ["# A crate of slats, 400 x 300 x 250 mm. Made by make_parts.py.", "mtllib crate.mtl", "o Crate"]
        self.count = 0

    def box(self, material, low, high):
        self.lines.append(f"usemtl {material}")
        for z in (low[2], high[2]):
            for x, y in ((low[0], low[1]), (high[0], low[1]), (high[0], high[1]), (low[0], high[1])):
                self.lines.append(f"v {x} {y} {z}")
        for face in ((4, 3, 2, 1), (5, 6, 7, 8), (1, 2, 6, 5), (2, 3, 7, 6), (3, 4, 8, 7), (4, 1, 5, 8)):
            self.lines.append("f " + " ".join(str(self.count + i) for i in face))
        self.count += 8


def crate():
    obj = Obj()
    obj.box("oak", (-200, -150, 0), (200, 150, 12))
    for i in range(3):
        z = 14 + 79 * i
        for y in (-150, 138):
            obj.box("oak", (-200, y, z), (200, y + 12, z + 70))
        for x in (-200, 188):
            obj.box("oak", (x, -138, z), (x + 12, 138, z + 70))
    for x in (-188, 164):
        for y in (-138, 114):
            obj.box("iron", (x, y, 12), (x + 24, y + 24, 250))
    obj.box("oak", (-188, -138, 238), (188, 138, 250))
    return "\n".join(obj.lines) + "\n"


MATERIALS = """# Materials of crate.obj. Made by make_parts.py.
newmtl oak
Kd 0.62 0.43 0.22
newmtl iron
Kd 0.2 0.2 0.22
Ks 0.4 0.4 0.4
Ns 40
"""


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent
    for name in ("parts", "source"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    for name, text in (("parts/frame.stp", frame()), ("parts/rod.stp", rod()), ("parts/wheel.wrl", wheel()),
                       ("source/crate.obj", crate()), ("source/crate.mtl", MATERIALS)):
        (folder / name).write_text(text, encoding="utf-8")


main()
