#!/usr/bin/env python3
"""Makes plate.stp: python3 make_plate.py [FILE]

A plate with a hole as triangles (STEP AP242), with drawn annotations and two saved views, each of which shows its own.
"""
import math
import pathlib
import sys

LENGTH, WIDTH, HEIGHT, RADIUS = 100, 60, 12, 15
STROKES = {  # of letters, on a grid of 4 x 6
    "0": [[(0, 0), (4, 0), (4, 6), (0, 6), (0, 0)]],
    "1": [[(1, 5), (2, 6), (2, 0)]],
    "2": [[(0, 6), (4, 6), (4, 3), (0, 3), (0, 0), (4, 0)]],
    "3": [[(0, 6), (4, 6), (4, 0), (0, 0)], [(1, 3), (4, 3)]],
    "6": [[(4, 6), (0, 6), (0, 0), (4, 0), (4, 3), (0, 3)]],
    "A": [[(0, 0), (2, 6), (4, 0)], [(0.7, 2), (3.3, 2)]],
    "±": [[(2, 2), (2, 6)], [(0, 4), (4, 4)], [(0, 1), (4, 1)]],
    ".": [[(1.7, 0), (2.3, 0), (2.3, 0.6), (1.7, 0.6), (1.7, 0)]],
    "Ø": [[(2 + 2 * math.cos(t * math.pi / 12), 3 + 2 * math.sin(t * math.pi / 12)) for t in range(25)],
          [(0.2, 0.2), (3.8, 5.8)]],
    " ": [],
}


def number(value):
    text = f"{value + 0.0:.4f}".rstrip("0")
    return "0." if text in ("-0.", "0.") else text


def triple(values):
    return "(" + ",".join(number(v) for v in values) + ")"


def rows(lists):
    return "(" + ",".join("(" + ",".join(str(i) for i in row) + ")" for row in lists) + ")"


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def unit(v):
    length = math.hypot(*v)
    return tuple(c / length for c in v)


class Step:
    def __init__(self):
        self.entities = []

    def add(self, name, *parameters):
        self.entities.append(f"{name}({','.join(str(p) for p in parameters)})")
        return f"#{len(self.entities)}"

    def join(self, items):
        return "(" + ",".join(items) + ")"

    def axes(self, origin, z, x):
        return self.add("AXIS2_PLACEMENT_3D", "''", self.add("CARTESIAN_POINT", "''", triple(origin)),
                        self.add("DIRECTION", "''", triple(z)), self.add("DIRECTION", "''", triple(x)))

    def points(self, points):
        return self.add("COORDINATES_LIST", "''", len(points), self.join(triple(p) for p in points))

    def strip(self, pairs, normals):
        """A band of triangles along pairs of points, with one normal or one for each pair."""
        points = [p for pair in pairs for p in pair]
        written = [n for n in normals for _ in range(2)] if len(normals) > 1 else normals
        return self.add("COMPLEX_TRIANGULATED_FACE", "''", self.points(points), len(points),
                        self.join(triple(n) for n in written), "$", "()", rows([range(1, len(points) + 1)]), "()")

    def text(self):
        body = "\n".join(f"#{i}={entity};" for i, entity in enumerate(self.entities, 1))
        return ("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a plate with annotations and views'),'2;1');\n"
                "FILE_NAME('plate.stp','',(''),(''),'','','');\n"
                "FILE_SCHEMA(('AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF { 1 0 10303 442 3 1 4 }'));\n"
                f"ENDSEC;\nDATA;\n{body}\nENDSEC;\nEND-ISO-10303-21;\n")


class Sheet:
    """A plane that a callout is drawn on: polylines and filled triangles in millimetres."""

    def __init__(self, origin, x, y):
        self.origin, self.x, self.y = origin, x, y
        self.lines, self.arrows = [], []

    def placed(self, p):
        return tuple(o + p[0] * a + p[1] * b for o, a, b in zip(self.origin, self.x, self.y))

    def line(self, *points):
        self.lines.append(points)

    def arrow(self, tip, towards, size=4):
        x, y = unit((towards[0], towards[1]))
        back = (tip[0] - x * size, tip[1] - y * size)
        self.arrows.append((tip, (back[0] - y * size / 5, back[1] + x * size / 5),
                            (back[0] + y * size / 5, back[1] - x * size / 5)))

    def write(self, words, at, size=5):
        for i, letter in enumerate(words):
            for stroke in STROKES[letter]:
                self.lines.append([(at[0] + (i * 6 + u) * size / 6, at[1] + v * size / 6) for u, v in stroke])

    def dimension(self, a, b, words):
        """Between two points of one line across the sheet, with the words in a gap of it."""
        middle = ((a[0] + b[0]) / 2, (a[1] + b[1]) / 2)
        along = unit((b[0] - a[0], b[1] - a[1]))
        gap = len(words) * 2.5 + 2 if along[0] else 5
        self.arrow(a, (-along[0], -along[1]))
        self.arrow(b, along)
        self.line(a, (middle[0] - along[0] * gap, middle[1] - along[1] * gap))
        self.line(b, (middle[0] + along[0] * gap, middle[1] + along[1] * gap))
        self.write(words, (middle[0] - len(words) * 2.5 + 0.5, middle[1] - 2.5))

    def callout(self, step, name, kind, style):
        ends, strips = [], []
        for line in self.lines:
            strips.append(range(len(ends) + 1, len(ends) + len(line) + 1))
            ends += [self.placed(p) for p in line]
        items = [step.add("TESSELLATED_CURVE_SET", "''", step.points(ends), rows(strips))]
        corners = [self.placed(p) for arrow in self.arrows for p in arrow]
        if corners:
            items.append(step.add("COMPLEX_TRIANGULATED_SURFACE_SET", "''", step.points(corners), len(corners), "()",
                                  "()", rows(range(i, i + 3) for i in range(1, len(corners), 3)), "()"))
        drawn = step.add("TESSELLATED_GEOMETRIC_SET", f"'{kind}'", step.join(items))
        occurrence = step.add("TESSELLATED_ANNOTATION_OCCURRENCE", f"'{name}'", f"({style})", drawn)
        return step.add("DRAUGHTING_CALLOUT", f"'{name}'", f"({occurrence})")


def add_product(step, name):
    application = step.add("APPLICATION_CONTEXT", "'managed model based 3d engineering'")
    step.add("APPLICATION_PROTOCOL_DEFINITION", "'international standard'",
             "'ap242_managed_model_based_3d_engineering'", 2020, application)
    length = step.add("", "LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.)")
    angle = step.add("", "NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.)")
    solid = step.add("", "NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT()")
    context = step.add("", "GEOMETRIC_REPRESENTATION_CONTEXT(3)"
                           f"GLOBAL_UNIT_ASSIGNED_CONTEXT(({length},{angle},{solid}))REPRESENTATION_CONTEXT('','')")
    product = step.add("PRODUCT", f"'{name}'", f"'{name}'", "''",
                       f"({step.add('PRODUCT_CONTEXT', repr(''), application, repr('mechanical'))})")
    formation = step.add("PRODUCT_DEFINITION_FORMATION", "''", "''", product)
    stage = step.add("PRODUCT_DEFINITION_CONTEXT", "'part definition'", application, "'design'")
    definition = step.add("PRODUCT_DEFINITION", "'design'", "''", formation, stage)
    return step.add("PRODUCT_DEFINITION_SHAPE", "''", "''", definition), context


def add_plate(step, context):
    corner = math.atan2(WIDTH, LENGTH)
    turns = [i * math.pi / 24 for i in range(48)] + [corner, math.pi - corner, math.pi + corner, -corner % math.tau]
    turns = sorted(turns)
    turns.append(turns[0] + math.tau)
    circle = [(math.cos(t), math.sin(t)) for t in turns]
    outline = [tuple(c * min(LENGTH / 2 / max(abs(x), 1e-9), WIDTH / 2 / max(abs(y), 1e-9)) for c in (x, y))
               for x, y in circle]
    hole = [(RADIUS * x, RADIUS * y) for x, y in circle]
    faces = [step.strip([((*p, HEIGHT), (*q, HEIGHT)) for p, q in zip(hole, outline)], [(0, 0, 1)]),
             step.strip([((*q, 0), (*p, 0)) for p, q in zip(hole, outline)], [(0, 0, -1)]),
             step.strip([((*p, 0), (*p, HEIGHT)) for p in hole], [(-x, -y, 0) for x, y in circle])]
    ends = [(LENGTH / 2, -WIDTH / 2), (LENGTH / 2, WIDTH / 2), (-LENGTH / 2, WIDTH / 2), (-LENGTH / 2, -WIDTH / 2)]
    for i, normal in enumerate([(1, 0, 0), (0, 1, 0), (-1, 0, 0), (0, -1, 0)]):
        a, b = ends[i], ends[(i + 1) % 4]
        faces.append(step.strip([((*a, HEIGHT), (*a, 0)), ((*b, HEIGHT), (*b, 0))], [normal]))
    solid = step.add("TESSELLATED_SOLID", "'plate'", step.join(faces), "$")
    color = step.add("FILL_AREA_STYLE_COLOUR", "''", step.add("COLOUR_RGB", "''", "0.45", "0.6", "0.72"))
    area = step.add("SURFACE_STYLE_FILL_AREA", step.add("FILL_AREA_STYLE", "''", f"({color})"))
    side = step.add("SURFACE_STYLE_USAGE", ".BOTH.", step.add("SURFACE_SIDE_STYLE", "''", f"({area})"))
    step.add("STYLED_ITEM", "''", f"({step.add('PRESENTATION_STYLE_ASSIGNMENT', f'({side})')})", solid)
    return step.add("TESSELLATED_SHAPE_REPRESENTATION", "''", f"({solid})", context)


def add_callouts(step):
    """Those on the top of the plate, and those at its front."""
    colour = step.add("COLOUR_RGB", "''", "0.62", "0.1", "0.12")
    curve = step.add("CURVE_STYLE", "''", "$", "$", colour)
    area = step.add("FILL_AREA_STYLE", "''", f"({step.add('FILL_AREA_STYLE_COLOUR', repr(''), colour)})")
    style = step.add("PRESENTATION_STYLE_ASSIGNMENT", f"({curve},{area})")
    x, y = LENGTH / 2, WIDTH / 2

    def top():
        return Sheet((0, 0, HEIGHT), (1, 0, 0), (0, 1, 0))

    def front():
        return Sheet((0, -y, 0), (1, 0, 0), (0, 0, 1))

    length, width, hole, height, datum = top(), top(), top(), front(), front()
    length.dimension((-x, -y - 14), (x, -y - 14), "100±0.2")
    length.line((-x, -y - 1), (-x, -y - 17))
    length.line((x, -y - 1), (x, -y - 17))
    width.dimension((x + 16, -y), (x + 16, y), "60")
    width.line((x + 1, -y), (x + 19, -y))
    width.line((x + 1, y), (x + 19, y))
    edge = (RADIUS * math.cos(2.2), RADIUS * math.sin(2.2))
    hole.line(edge, (-24, y + 12), (-30, y + 12))
    hole.arrow(edge, (edge[0] + 24, edge[1] - y - 12))
    hole.write("Ø30±0.1", (-67, y + 9.5))
    height.line((-x - 1, 0), (-x - 15, 0))
    height.line((-x - 1, HEIGHT), (-x - 15, HEIGHT))
    height.line((-x - 12, HEIGHT), (-x - 12, HEIGHT + 12), (-x - 16, HEIGHT + 12))
    height.line((-x - 12, 0), (-x - 12, -8))
    height.arrow((-x - 12, HEIGHT), (0, -1))
    height.arrow((-x - 12, 0), (0, 1))
    height.write("12", (-x - 29, HEIGHT + 9.5))
    datum.arrow((-20, 0), (0, 1), 5)
    datum.line((-20, 0), (-20, -12))
    datum.line((-25, -22), (-15, -22), (-15, -12), (-25, -12), (-25, -22))
    datum.write("A", (-22, -20), 6)
    tops = [length.callout(step, "Length", "linear dimension", style),
            width.callout(step, "Width", "linear dimension", style),
            hole.callout(step, "Hole", "diameter", style)]
    return tops, [height.callout(step, "Thickness", "linear dimension", style),
                  datum.callout(step, "Datum A", "datum", style)]


def add_view(step, name, towards, at, size, callouts, shape, context):
    z = unit(towards)
    x = unit(cross((0, 0, 1), z))
    eye = tuple(a - 300 * c for a, c in zip(at, z))
    zero = step.add("CARTESIAN_POINT", "''", "(0.,0.,0.)")
    window = step.add("PLANAR_BOX", "''", number(size[0]), number(size[1]),
                      step.axes((-size[0] / 2, -size[1] / 2, 300), (0, 0, 1), (1, 0, 0)))
    volume = step.add("VIEW_VOLUME", ".PARALLEL.", zero, "300.", "0.", ".F.", "0.", ".F.", ".F.", window)
    camera = step.add("CAMERA_MODEL_D3", f"'{name}'", step.axes(eye, z, x), volume)
    step.add("DRAUGHTING_MODEL", f"'{name}'", step.join([camera, shape, *callouts]), context)
    return camera


def main():
    step = Step()
    product, context = add_product(step, "plate")
    origin = step.axes((0, 0, 0), (0, 0, 1), (1, 0, 0))
    shape = step.add("SHAPE_REPRESENTATION", "''", f"({origin})", context)
    step.add("SHAPE_DEFINITION_REPRESENTATION", product, shape)
    step.add("SHAPE_REPRESENTATION_RELATIONSHIP", "''", "''", add_plate(step, context), shape)
    tops, fronts = add_callouts(step)
    mapped = step.add("MAPPED_ITEM", "''", step.add("REPRESENTATION_MAP", origin, shape), origin)
    add_view(step, "Dimensions", (-0.3, 0.62, -0.9), (0, 3, HEIGHT), (192, 120), tops, mapped, context)
    add_view(step, "Thickness and datum", (-0.45, 0.9, -0.35), (-8, -20, 4), (176, 110), fronts, mapped, context)
    target = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("plate.stp"))
    target.write_text(step.text(), encoding="ascii")


if __name__ == "__main__":
    main()
